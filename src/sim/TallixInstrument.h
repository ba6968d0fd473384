// The old Tallix family: a sound level meter and two dosimeters that answer in text. The dosimeters keep doses for
// their rows, the meter also levels. These are the only instruments whose clock can be set.
#pragma once

#include "sim/Holdings.h"
#include "sim/TextFrames.h"

#include <ostream>

namespace kestrane {

class TallixInstrument : public TextInstrument {
public:
    // Clock commands are written to clock, one on each line: "clock hhmmssddmmyy".
    TallixInstrument(Holdings holdings, std::ostream& clock) : holdings_(std::move(holdings)), clock_(clock) {}

protected:
    std::string answerTo(std::string_view payload) override;

private:
    Holdings holdings_;
    std::ostream& clock_;
};

} // namespace kestrane

// The old Tallix family: a sound level meter and two dosimeters that answer in characters. The dosimeters keep doses
// for their rows, the meter levels, too. The only instruments whose clock can be set.
#pragma once

#include "sim/Holdings.h"
#include "sim/TextFrames.h"

#include <ostream>

namespace kestrane {

class TallixInstrument : public TextInstrument {
public:
    // Clock commands are told on clock, one a line: "clock hhmmssddmmyy".
    TallixInstrument(Holdings holdings, std::ostream& clock) : holdings_(std::move(holdings)), clock_(clock) {}

protected:
    std::string answerTo(std::string_view payload) override;

private:
    Holdings holdings_;
    std::ostream& clock_;
};

} // namespace kestrane

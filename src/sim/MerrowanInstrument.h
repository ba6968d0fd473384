// The Merrowan family: meters that answer in text, with two kinds of location and, on some models, octave logs.
#pragma once

#include "sim/Holdings.h"
#include "sim/TextFrames.h"

namespace kestrane {

class MerrowanInstrument : public TextInstrument {
public:
    explicit MerrowanInstrument(Holdings holdings) : holdings_(std::move(holdings)) {}

protected:
    std::string answerTo(std::string_view payload) override;

private:
    Holdings holdings_;
};

} // namespace kestrane

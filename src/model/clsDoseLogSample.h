// One row of the exposure calculator. Owned by a log, in grid order.
#pragma once

#include "model/clsDate.h"
#include "model/clsTime.h"
#include "model/clsValue.h"

#include <cstdint>
#include <string>

namespace kestrane {

class clsDoseLogSample {
public:
    std::int16_t Criterion = 0; // dB
    std::int16_t Exchange = 0;  // dB
    clsDate SampleDate;
    clsTime SampleTime;
    std::string Note;
    clsValue Leq; // dB
    clsValue Dose;
    clsTime Duration;
    bool IsIncluded = false; // takes part in the totals

    // Every member; the copy's Dose takes the source's Leq.
    void Copy(const clsDoseLogSample& objPrevSample);
};

} // namespace kestrane

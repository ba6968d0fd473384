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
    clsValue Leq;  // dB
    clsValue Dose; // %
    clsTime Duration;
    bool IsIncluded = false; // whether it takes part in the totals

    // The row's exposure level in dB: Leq + 10 log10(T/8); 0 when Leq or the duration T (hours) is 0.
    clsValue getLex() const;

    // The row's dose in %: 12.5 T 10^((Leq - Criterion) log10(2) / Exchange); 0 when a factor is 0 or the result
    // overflows.
    clsValue getDose() const;

    // Copies every member, but the Dose of the copy is the Leq of the source; that is meant.
    void Copy(const clsDoseLogSample& objPrevSample);
};

} // namespace kestrane

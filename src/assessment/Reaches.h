// How a figure is compared with a limit, everywhere.
#pragma once

#include "platform/Numbers.h"

namespace kestrane {

// Figures and limits are told apart by 0.01 (dB or percent).
inline double toHundredths(double figure) {
    return roundHalfAway(figure * 100) / 100;
}

inline bool reaches(double figure, double limit) {
    return toHundredths(figure) >= limit;
}

} // namespace kestrane

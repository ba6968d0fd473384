// How a figure is compared with a limit, everywhere in the program.
#pragma once

#include "platform/Numbers.h"

namespace kestrane {

// A difference of less than 0.01 (dB or percent) between a figure and a limit does not count.
inline double toHundredths(double figure) {
    return roundHalfAway(figure * 100) / 100;
}

inline bool reaches(double figure, double limit) {
    return toHundredths(figure) >= limit;
}

} // namespace kestrane

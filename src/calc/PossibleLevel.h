// Which levels can be: the one bound for what is typed or stands in a file that a user may have edited. A forgotten
// decimal point goes beyond it.
#pragma once

namespace kestrane {

constexpr double kHighestLevel = 200; // dB; no sound in air is louder

// Whether a level in dB, be it a mean or a peak, is possible: above 0, which stands for none, and at most
// kHighestLevel.
constexpr bool isLevel(double level) {
    return level > 0 && level <= kHighestLevel;
}

} // namespace kestrane

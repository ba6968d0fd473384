// How well one colour can be told from another, after the Web Content Accessibility Guidelines (WCAG) 2.1: relative
// luminance and contrast ratio. Colours are 0xRRGGBB; what stands above these 24 bits does not count.
#pragma once

#include <cstdint>

namespace kestrane {

using Rgb = std::uint32_t;

inline constexpr double kTextContrast = 4.5; // the least for text (success criterion 1.4.3)
inline constexpr double kLineContrast = 3;   // the least for lines and parts of controls (1.4.11)

double luminance(Rgb colour);        // 0 for black to 1 for white
double contrast(Rgb one, Rgb other); // 1 to 21, whichever is the lighter

// Whether a ground is dark: white is then easier to read on it than black.
bool isDark(Rgb ground);

// A colour, darkened or lightened as little as needed to have a contrast to a ground. Black or white when nothing else
// does.
Rgb readable(Rgb colour, Rgb ground, double leastContrast = kTextContrast);

// A mix of two colours: share 0 is the one, 1 the other.
Rgb mixed(Rgb one, Rgb other, double share);

} // namespace kestrane

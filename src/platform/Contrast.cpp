#include "platform/Contrast.h"

#include <algorithm>
#include <cmath>

namespace kestrane {

namespace {

constexpr Rgb kBlack = 0x000000;
constexpr Rgb kWhite = 0xffffff;

int partOf(Rgb colour, int shift) {
    return static_cast<int>(colour >> shift & 0xffU);
}

} // namespace

// https://www.w3.org/TR/WCAG21/#dfn-relative-luminance
double luminance(Rgb colour) {
    const auto linear = [&](int shift) {
        const double part = partOf(colour, shift) / 255.0;
        return part <= 0.03928 ? part / 12.92 : std::pow((part + 0.055) / 1.055, 2.4);
    };
    return 0.2126 * linear(16) + 0.7152 * linear(8) + 0.0722 * linear(0);
}

// https://www.w3.org/TR/WCAG21/#dfn-contrast-ratio
double contrast(Rgb one, Rgb other) {
    constexpr double kFlare = 0.05;
    const auto [darker, lighter] = std::minmax({luminance(one), luminance(other)});
    return (lighter + kFlare) / (darker + kFlare);
}

bool isDark(Rgb ground) {
    return contrast(kWhite, ground) > contrast(kBlack, ground);
}

Rgb readable(Rgb colour, Rgb ground, double leastContrast) {
    constexpr int kSteps = 50;
    const Rgb end = isDark(ground) ? kWhite : kBlack;
    Rgb shade = mixed(colour, end, 0);
    for (int step = 1; step <= kSteps && contrast(shade, ground) < leastContrast; ++step)
        shade = mixed(colour, end, static_cast<double>(step) / kSteps);
    return shade;
}

Rgb mixed(Rgb one, Rgb other, double share) {
    Rgb result = 0;
    for (const int shift : {16, 8, 0}) {
        const int from = partOf(one, shift);
        result |= static_cast<Rgb>(std::lround(from + (partOf(other, shift) - from) * share)) << shift;
    }
    return result;
}

} // namespace kestrane

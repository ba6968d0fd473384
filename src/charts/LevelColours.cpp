#include "charts/LevelColours.h"

#include <algorithm>
#include <array>
#include <cmath>

namespace kestrane {

namespace {

// Ten evenly spaced colours of "viridis", by S. van der Walt and N. Smith, which is in the public domain (CC0).
constexpr std::array<QRgb, 10> kStops = {0xFF440154, 0xFF482878, 0xFF3E4A89, 0xFF31688E, 0xFF26828E,
                                         0xFF1F9E89, 0xFF35B779, 0xFF6DCD59, 0xFFB4DE2C, 0xFFFDE725};

} // namespace

QRgb levelColour(double part) {
    const double place = std::clamp(part, 0.0, 1.0) * static_cast<double>(kStops.size() - 1);
    const auto below = std::min(static_cast<std::size_t>(place), kStops.size() - 2);
    const double share = place - static_cast<double>(below);
    const auto mixed = [&](int (*component)(QRgb)) {
        const int from = component(kStops[below]);
        return static_cast<int>(std::lround(from + share * (component(kStops[below + 1]) - from)));
    };
    return qRgb(mixed(qRed), mixed(qGreen), mixed(qBlue));
}

} // namespace kestrane

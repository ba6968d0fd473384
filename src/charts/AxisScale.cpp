#include "charts/AxisScale.h"

#include "platform/Numbers.h"

#include <algorithm>
#include <cmath>

namespace kestrane {

namespace {

constexpr double kSteps = 12;      // at most so many steps in a range
constexpr double kAir = 0.03;      // as a part of the span, beyond the values at each end
constexpr double kNearZero = 0.2;  // an axis includes 0 when the lowest value is below this part of the highest
constexpr double kLevelStep = 5;   // dB; the least step of levels, so that small changes are not exaggerated
constexpr double kLeastLevel = 20; // values that are all above this may be levels

} // namespace

ChartRange roundRange(const Extent& values, bool isFromZero) {
    if (values.isEmpty()) return {0, 1};
    double lowest = values.Lowest;
    double highest = values.Highest;
    if (isFromZero || (lowest >= 0 && lowest < kNearZero * highest)) {
        lowest = std::min(lowest, 0.0);
        highest = std::max(highest, 0.0);
    }
    const double span = highest > lowest ? highest - lowest : std::max(std::abs(highest), 1.0);
    double step = roundStep(span / kSteps);
    if (lowest > kLeastLevel) step = std::max(step, kLevelStep);
    const double bottom = lowest != 0 ? lowest - kAir * span : 0;
    const double top = highest != 0 ? highest + kAir * span : 0;
    const ChartRange range = {std::floor(bottom / step) * step, std::ceil(top / step) * step};
    return range.Maximum > range.Minimum ? range : ChartRange{0, span};
}

} // namespace kestrane

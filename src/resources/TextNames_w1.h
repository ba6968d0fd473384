#pragma once

#include "resources/TextNames.h"

namespace kestrane::Text {

inline constexpr Id WithColon = Id(9300);
// What the print preview of a dialog offers
inline constexpr Id PrintedChart = Id(9301);
inline constexpr Id PrintedTable = Id(9302);
// Short captions of tabs
inline constexpr Id ShortIntervalsTable = Id(9310);
inline constexpr Id ShortIntervalsGraph = Id(9311);
inline constexpr Id ShortCumulativeGraph = Id(9312);
inline constexpr Id ShortNoiseRating = Id(9313);
inline constexpr Id ShortCompareHPD = Id(9314);
inline constexpr Id ShortCumulativeData = Id(9315);

} // namespace kestrane::Text

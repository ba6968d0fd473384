#pragma once

#include "resources/TextNames.h"

namespace kestrane::Text {
// Why a log does not have a tab
inline constexpr Id LacksIntervals = Id(9462);
inline constexpr Id LacksBands = Id(9463);
inline constexpr Id LacksLevelsForProtectors = Id(9464);
inline constexpr Id ReportsDoseOnly = Id(9465);
// What a screen reader says of an interval
inline constexpr Id IntervalLeftOut = Id(9466);
inline constexpr Id IntervalOverloaded = Id(9467);
// And of a chart that was zoomed
inline constexpr Id PartInView = Id(9468);
} // namespace kestrane::Text

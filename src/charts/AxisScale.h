// Round numbers for value axes.
#pragma once

#include "charts/BlockExtents.h"
#include "views/ChartData.h"

namespace kestrane {

// A range with round ends that contains the values with a little space around them. With isFromZero it also contains 0,
// for bars and for quantities whose height matters; without it levels of 40 to 90 dB begin at 40. An empty extent gives
// 0 to 1.
ChartRange roundRange(const Extent& values, bool isFromZero);

} // namespace kestrane

// Round numbers for value axes.
#pragma once

#include "charts/BlockExtents.h"
#include "explorer/ChartData.h"

namespace kestrane {

// The smallest of 1, 2 and 5 times a power of ten that is not below atLeast (above 0).
double roundStep(double atLeast);

// A range with round ends that holds the values with a little air around them. isFromZero: 0 is always in it, for bars
// and for quantities whose height counts; without it levels of 40 to 90 dB begin at 40. An empty extent gives 0 to 1.
ChartRange roundRange(const Extent& values, bool isFromZero);

} // namespace kestrane

// An offset added to all levels of a log, as a correction of its calibration.
#pragma once

#include "model/clsLog.h"

namespace kestrane {

// Adds decibels to every level of the log and of its rows, on both channels, and changes doses and sound exposures as
// such levels do: Value and CalcValue, so that a figure as reported remains one, and what is made of either has the
// offset. A dose changes by the exchange rate that it was made with. An absent figure (0) stays absent, and a level
// that would become 0 becomes the least level beside it. Nothing is computed anew from rows, so that every level
// changes by the same amount. A row of the exposure calculator that has the level of the log goes on having it.
void addToLevels(clsLog& log, double decibels);

} // namespace kestrane

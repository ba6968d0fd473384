// The chart of the "Intervals (Graph)" and "Cumultv (Graph)" tabs: the figures of one interval or of the whole log, as
// bars. Without a chosen parameter there is one row, with a series for each plotted parameter (at the chosen band);
// with a chosen parameter, the rows are the bands.
#pragma once

#include "model/clsLog.h"
#include "views/ChartData.h"
#include "views/DisplayBy.h"

#include <optional>

namespace kestrane {

constexpr std::int64_t kWholeLog = 0;

// row is an interval, counted from 1, or kWholeLog for the cumulative figures. axisMode kByDecibels shows the levels,
// kByPercent dose and Pa2Hr; a chosen parameter is shown as a level in both. Returns nothing when there is nothing to
// show (text 4548). Raises 9 for a row that does not exist.
std::optional<ChartData> bandChart(const clsLog& log, std::int64_t row, const DisplayChoice& choice,
                                   DisplayMode axisMode);

} // namespace kestrane

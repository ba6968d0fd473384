// The chart of the "Full Log" tab and of reports: the intervals of a log over time, as lines.
#pragma once

#include "model/clsLog.h"
#include "views/ChartData.h"
#include "views/DisplayBy.h"

namespace kestrane {

// All plotted parameters (at the chosen band), channel A first, or the bands of a chosen parameter. When log is null,
// the chart is empty and without title and note. The footnote is the log's note.
ChartData fullLogChart(const clsLog* log, const DisplayChoice& choice);

// Whether drawing on the screen in 3D takes so long that the user is asked first (text 4542): for more than 150
// intervals.
bool isAskedBefore3D(const clsLog& log, std::int16_t style);

} // namespace kestrane

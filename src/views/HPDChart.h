// The chart of a log's comparison with a hearing protector: pairs of bars for octave bands, or one bar for each level
// of the other methods, with titles in the colour of the grade.
#pragma once

#include "views/ChartData.h"
#include "views/HPDComparison.h"

namespace kestrane {

ChartData hpdChart(const clsLog& log, const HPDComparison& comparison);

} // namespace kestrane

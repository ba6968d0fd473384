// The chart of a log's comparison with a hearing protector: pairs of bars for octave bands, or one bar for each level
// of the other methods, with titles in the colour of the grade.
#pragma once

#include "protection/RankTable.h"
#include "views/ChartData.h"
#include "views/HPDComparison.h"

namespace kestrane {

// The best protectors of a ranking by what they leave, at most so many that their names can be read.
ChartData rankChart(const clsLog& log, const RankTable& ranks);

ChartData hpdChart(const clsLog& log, const HPDComparison& comparison);

} // namespace kestrane

// The chart of the "Noise Rating" tab: the family of noise rating curves with the log's own octave levels on top.
#pragma once

#include "model/clsLog.h"
#include "views/ChartData.h"

#include <optional>

namespace kestrane {

// Nothing for a broadband log. The last series is the log's own line.
std::optional<ChartData> noiseRatingChart(const clsLog& log);

} // namespace kestrane

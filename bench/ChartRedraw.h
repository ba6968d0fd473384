// Redrawing a chart in its window, without a screen.
#pragma once

#include "views/ChartData.h"

#include <cstddef>
#include <cstdint>

namespace kestrane::bench {

// Seconds of one redraw after the first, the best of a number of them, of lines that walk about in a window of 1000 by
// 650 pixels. style: eChartAs2D or eChartAs3D. Makes the toolkit's application object: once in a process.
double redrawSeconds(std::size_t rows, std::size_t series, std::int16_t style);
double redrawSeconds(const ChartData& chart);

} // namespace kestrane::bench

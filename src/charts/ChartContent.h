// The content that is drawn: a chart's data, and what is computed from it once. The screen and pages share it
// unchanged.
#pragma once

#include "charts/BlockExtents.h"
#include "views/ChartData.h"

#include <vector>

namespace kestrane {

class ChartContent {
public:
    explicit ChartContent(ChartData chart);

    ChartContent(const ChartContent&) = delete;
    ChartContent& operator=(const ChartContent&) = delete;

    const ChartData data;
    const std::vector<const ChartSeries*> series; // the series that are drawn: those with a label
    const std::vector<BlockExtents> extents;      // one for each of these series

    // Whether it is a chart of bars with one row that has no name: its series then stand side by side like rows, each
    // with its own label.
    bool hasSeriesAsRows() const;

    bool isReference(std::size_t drawn) const { return drawn < data.ReferenceSeries; }

    // The ends of a value axis: those that the data give, or round ones around the values.
    ChartRange valueRange(ChartAxis axis) const;
};

} // namespace kestrane

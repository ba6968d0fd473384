// What is drawn: a chart's data, with what is worked out from it once. Shared, unchanged, by the screen and by pages.
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
    const std::vector<const ChartSeries*> series; // those that are drawn: the ones with a label
    const std::vector<BlockExtents> extents;      // one for each of these

    // A chart of bars with one nameless row: its series stand side by side like rows, under their own labels.
    bool hasSeriesAsRows() const;

    bool isReference(std::size_t drawn) const { return drawn < data.ReferenceSeries; }

    // The ends of a value axis: those of the data, or round ones around the values.
    ChartRange valueRange(ChartAxis axis) const;
};

} // namespace kestrane

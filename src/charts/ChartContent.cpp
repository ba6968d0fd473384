#include "charts/ChartContent.h"

#include "charts/AxisScale.h"

#include <utility>

namespace kestrane {

namespace {

std::vector<const ChartSeries*> labelled(const ChartData& chart) {
    std::vector<const ChartSeries*> series;
    for (const ChartSeries& one : chart.Series) {
        if (!one.Label.empty()) series.push_back(&one);
    }
    return series;
}

std::vector<BlockExtents> extentsOf(const std::vector<const ChartSeries*>& series) {
    std::vector<BlockExtents> extents;
    extents.reserve(series.size());
    for (const ChartSeries* one : series)
        extents.emplace_back(one->Values);
    return extents;
}

} // namespace

ChartContent::ChartContent(ChartData chart) :
    data(std::move(chart)), series(labelled(data)), extents(extentsOf(series)) {}

bool ChartContent::hasSeriesAsRows() const {
    return data.Shape == ChartShape::Bar && data.RowCount == 1 && data.RowLabel(0).empty();
}

ChartRange ChartContent::valueRange(ChartAxis axis) const {
    const auto& fixed = axis == ChartAxis::Primary ? data.PrimaryRange : data.SecondaryRange;
    if (fixed) return *fixed;
    Extent values;
    for (std::size_t i = 0; i < series.size(); ++i) {
        if (series[i]->Axis == axis) values.include(extents[i].ofAll());
    }
    for (const ChartLine& line : data.Lines)
        if (axis == ChartAxis::Primary) values.include(static_cast<float>(line.Value));
    const bool isFromZero = data.Shape == ChartShape::Bar || axis == ChartAxis::Secondary;
    return roundRange(values, isFromZero);
}

} // namespace kestrane

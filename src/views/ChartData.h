// A chart as data: rows (categories), series, labels and axes, as the core decided them. The chart widget, the printer
// and the command line draw it. It holds copies, so it stays valid when the log changes; it must not know widgets.
#pragma once

#include "model/Colour.h"
#include "model/clsFont.h"
#include "model/clsLogOptions.h"
#include "platform/Locale.h"

#include <cmath>
#include <cstdint>
#include <functional>
#include <limits>
#include <optional>
#include <string>
#include <vector>

namespace kestrane {

enum class ChartShape { Line, Bar };

enum class ChartAxis { Primary, Secondary };

// A missing value: a gap, never a drop to 0.
constexpr float kNullValue = std::numeric_limits<float>::quiet_NaN();

inline bool isNullValue(float value) {
    return std::isnan(value);
}

struct ChartSeries {
    std::string Label; // empty: a series that only keeps its place; it is neither in the legend nor copied
    ChartAxis Axis = ChartAxis::Primary;
    std::vector<float> Values; // one for each row; kNullValue where there is none
};

struct ChartRange {
    double Minimum = 0;
    double Maximum = 0;
};

struct ChartData {
    ChartShape Shape = ChartShape::Line;
    std::int16_t Style = eChartAs2D; // eChartAs2D or eChartAs3D
    std::string Title;
    bool IsTitleWarning = false;       // the title stands in red
    std::optional<Colour> GradeColour; // of the title and the axis titles, as far as it can be read
    std::string Footnote;
    bool HasLegend = true;

    // Rows are counted from 0. RowLabel is the text at the axis, RowName the one of a read-out (with the date).
    std::size_t RowCount = 0;
    std::function<std::string(std::size_t row)> RowLabel;
    std::function<std::string(std::size_t row)> RowName;
    std::vector<std::uint8_t> ExcludedRows; // a flag a row that is left out of calculations; empty: none is
    std::size_t DivisionsPerLabel = 1;      // every so many rows a label
    std::size_t DivisionsPerTick = 1;       // and a grid line

    std::string CategoryTitle, PrimaryTitle, SecondaryTitle;
    bool HasSecondaryAxis = false;
    std::optional<ChartRange> PrimaryRange, SecondaryRange; // nothing: from the values

    std::int16_t LineWidth = 20; // twentieths of a point
    clsFont TitleFont, LegendFont, AxisFont, NoteFont;

    std::vector<ChartSeries> Series;
    std::size_t ReferenceSeries = 0; // so many at the front are curves to compare with, drawn quietly, with their label
};

// A figure as a chart shows it beside a mark: to 0.1, and finer below 10, where doses and Pa2Hr lie.
std::string chartFigureText(float value, const Locale& locale);

// The chart's values as text: a line of the series' labels behind an empty cell, then a line a row, of its label and
// its values as "#0.0##" (a missing one is an empty cell); tabs between cells, CR LF behind lines. Series without a
// label are left out.
std::string chartValuesText(const ChartData& chart, const Locale& locale);

} // namespace kestrane

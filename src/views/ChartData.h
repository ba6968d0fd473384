// A chart as data: rows (categories), series, labels and axes, as decided by the core. The chart widget, the printer
// and the command line draw it. It holds copies, so it stays valid when the log changes. It must not know widgets.
#pragma once

#include "model/Colour.h"
#include "model/clsFont.h"
#include "model/clsLogOptions.h"
#include "platform/Locale.h"

#include <cmath>
#include <cstdint>
#include <functional>
#include <limits>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace kestrane {

class LevelMap;

enum class ChartShape { Line, Bar };

enum class ChartAxis { Primary, Secondary };

// A missing value: the line has a gap there and does not drop to 0.
constexpr float kNullValue = std::numeric_limits<float>::quiet_NaN();

inline bool isNullValue(float value) {
    return std::isnan(value);
}

struct ChartSeries {
    std::string Label; // empty for a series that only keeps its place; it is neither in the legend nor copied
    ChartAxis Axis = ChartAxis::Primary;
    std::vector<float> Values; // one for each row; kNullValue when there is none
};

// A line across the chart at a value of the primary axis, with its label.
struct ChartLine {
    double Value;
    std::string Label;
};

struct ChartRange {
    double Minimum = 0;
    double Maximum = 0;
};

struct ChartData {
    ChartShape Shape = ChartShape::Line;
    std::int16_t Style = eChartAs2D; // eChartAs2D or eChartAs3D
    std::string Title;
    bool IsTitleWarning = false;       // the title is red
    std::optional<Colour> GradeColour; // of the title and the axis titles, changed as far as needed to be readable
    std::string Footnote;
    bool HasLegend = true;
    bool HasMarks = false; // series differ by shapes and patterns, too, not by colour alone

    // Rows are counted from 0. RowLabel is the text at the axis, RowName that of a read-out (with the date).
    std::size_t RowCount = 0;
    std::function<std::string(std::size_t row)> RowLabel;
    std::function<std::string(std::size_t row)> RowName;
    // When each row begins, in seconds as in model/RowClock.h: the axis then has marks at round times. Empty when that
    // is not known; the axis then has the labels of the rows.
    std::vector<std::int64_t> RowBegins;
    std::vector<std::uint8_t> ExcludedRows; // a flag for each row that is left out of calculations; empty when none is
    std::size_t DivisionsPerLabel = 1;      // the number of rows from one label to the next
    std::size_t DivisionsPerTick = 1;       // the number of rows from one grid line to the next

    std::string CategoryTitle, PrimaryTitle, SecondaryTitle;
    bool HasSecondaryAxis = false;
    std::optional<ChartRange> PrimaryRange, SecondaryRange; // nothing when the range follows from the values

    std::int16_t LineWidth = 20; // twentieths of a point
    clsFont TitleFont, LegendFont, AxisFont, NoteFont;

    std::vector<ChartSeries> Series;
    std::vector<ChartLine> Lines;
    // Levels as colours, drawn in place of series, with the bands on the primary axis: band b from b - 0.5 to b + 0.5.
    // SecondaryRange and SecondaryTitle are those of the scale of colours. Null for none.
    std::shared_ptr<const LevelMap> Map;
    // The number of series at the front that are curves to compare with, drawn faintly and labelled.
    std::size_t ReferenceSeries = 0;
};

// A figure as a chart shows it beside a mark: with one decimal, and with up to three below 10, where doses and Pa2Hr
// often are.
std::string chartFigureText(float value, const Locale& locale);

// The chart's values as a table. The first column has the labels of the rows and no caption. Each further column has
// the values of a series as "#0.0##" (an empty cell for a missing value) under the label of the series. Series without
// a label are left out. The chart must outlive the table.
class ChartTable {
public:
    ChartTable(const ChartData& chart, Locale locale);

    std::size_t ColumnCount() const { return series_.size() + 1; }

    std::string Caption(std::size_t column) const;
    std::string Cell(std::size_t row, std::size_t column) const; // both counted from 0

private:
    const ChartData& chart_;
    Locale locale_;
    std::vector<const ChartSeries*> series_;
};

// The table as text: a line of captions, then a line for each row. Cells are separated by tabs, lines end with CR LF.
std::string chartValuesText(const ChartData& chart, const Locale& locale);

} // namespace kestrane

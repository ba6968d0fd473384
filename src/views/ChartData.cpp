#include "views/ChartData.h"

#include "platform/Format.h"

#include <utility>

namespace kestrane {

std::string chartFigureText(float value, const Locale& locale) {
    return formatNumber(static_cast<double>(value), std::abs(value) < 10 ? "#0.0##" : "##0.0", locale);
}

ChartTable::ChartTable(const ChartData& chart, Locale locale) : chart_(chart), locale_(std::move(locale)) {
    for (const ChartSeries& series : chart.Series)
        if (!series.Label.empty()) series_.push_back(&series);
}

std::string ChartTable::Caption(std::size_t column) const {
    return column == 0 ? std::string() : series_[column - 1]->Label;
}

std::string ChartTable::Cell(std::size_t row, std::size_t column) const {
    if (column == 0) return chart_.RowLabel(row);
    const float value = series_[column - 1]->Values[row];
    return isNullValue(value) ? std::string() : formatNumber(value, "#0.0##", locale_);
}

std::string chartValuesText(const ChartData& chart, const Locale& locale) {
    const ChartTable table(chart, locale);
    std::string text;
    const auto addLine = [&](auto cell) {
        for (std::size_t column = 0; column < table.ColumnCount(); ++column)
            text += (column == 0 ? "" : "\t") + cell(column);
        text += "\r\n";
    };
    addLine([&](std::size_t column) { return table.Caption(column); });
    for (std::size_t row = 0; row < chart.RowCount; ++row)
        addLine([&](std::size_t column) { return table.Cell(row, column); });
    return text;
}

} // namespace kestrane

#include "views/ChartData.h"

#include "platform/Format.h"

#include <algorithm>
#include <array>
#include <cctype>
#include <string_view>

namespace kestrane {

bool isPictureName(const std::string& path) {
    constexpr std::array<std::string_view, 3> kEndings = {".png", ".svg", ".pdf"};
    std::string ending = path.substr(std::min(path.rfind('.'), path.size()));
    std::ranges::transform(ending, ending.begin(), [](unsigned char c) { return static_cast<char>(std::tolower(c)); });
    return std::ranges::find(kEndings, ending) != kEndings.end();
}

std::string chartFigureText(float value, const Locale& locale) {
    return formatNumber(static_cast<double>(value), std::abs(value) < 10 ? "#0.0##" : "##0.0", locale);
}

std::string chartValuesText(const ChartData& chart, const Locale& locale) {
    std::string text;
    for (const ChartSeries& series : chart.Series) {
        if (!series.Label.empty()) text += '\t' + series.Label;
    }
    text += "\r\n";
    for (std::size_t row = 0; row < chart.RowCount; ++row) {
        text += chart.RowLabel(row);
        for (const ChartSeries& series : chart.Series) {
            if (series.Label.empty()) continue;
            text += '\t';
            if (!isNullValue(series.Values[row])) text += formatNumber(series.Values[row], "#0.0##", locale);
        }
        text += "\r\n";
    }
    return text;
}

} // namespace kestrane

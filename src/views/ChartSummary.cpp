#include "views/ChartSummary.h"

#include "views/LevelMap.h"

#include <algorithm>

namespace kestrane {

namespace {

bool counts(const ChartData& chart, std::size_t row) {
    return row >= chart.ExcludedRows.size() || chart.ExcludedRows[row] == 0;
}

std::string spanSentence(const Session& session, const ChartData& chart) {
    const std::string first = chart.RowName(0);
    if (chart.RowCount == 1 || first.empty()) return first.empty() ? first : first + ".";
    std::string text = ReplaceText(session.LoadText(Text::ChartSpan), "#", std::to_string(chart.RowCount));
    text = ReplaceText(std::move(text), "*", chart.RowName(chart.RowCount - 1));
    return ReplaceText(std::move(text), "^", first);
}

std::string axesSentence(const Session& session, const ChartData& chart) {
    std::string titles;
    for (const std::string& title :
         {chart.CategoryTitle, chart.PrimaryTitle, chart.HasSecondaryAxis ? chart.SecondaryTitle : std::string()})
        if (!title.empty()) titles += (titles.empty() ? "" : ", ") + title;
    return titles.empty() ? titles : ReplaceText(session.LoadText(Text::ChartAxes), "^", titles);
}

std::string seriesSentence(const Session& session, const ChartData& chart, const ChartSeries& series) {
    float least = 0;
    float greatest = 0;
    double sum = 0;
    std::size_t count = 0;
    for (std::size_t row = 0; row < chart.RowCount; ++row) {
        const float value = series.Values[row];
        if (isNullValue(value) || !counts(chart, row)) continue;
        least = count == 0 ? value : std::min(least, value);
        greatest = count == 0 ? value : std::max(greatest, value);
        sum += static_cast<double>(value);
        ++count;
    }
    const auto figure = [&](float value) { return chartFigureText(value, session.locale); };
    const Text::Id words = count == 0   ? Text::ChartSeriesEmpty
                           : count == 1 ? Text::ChartSeriesValue
                                        : Text::ChartSeriesFigures;
    std::string text = session.LoadText(words);
    if (count > 0) {
        text = ReplaceText(std::move(text), "*", figure(least));
        text = ReplaceText(std::move(text), "@", figure(static_cast<float>(sum / static_cast<double>(count))));
        text = ReplaceText(std::move(text), "#", figure(greatest));
    }
    return ReplaceText(std::move(text), "^", series.Label);
}

std::string mapSentence(const Session& session, const ChartData& chart) {
    const ChartRange levels = chart.Map->Extent();
    const auto figure = [&](double level) { return chartFigureText(static_cast<float>(level), session.locale); };
    return ReplaceText(ReplaceText(session.LoadText(Text::LevelsOfMap), "^", figure(levels.Minimum)), "*",
                       figure(levels.Maximum));
}

std::string excludedSentence(const Session& session, const ChartData& chart) {
    std::size_t excluded = 0;
    for (std::size_t row = 0; row < chart.RowCount; ++row)
        if (!counts(chart, row)) ++excluded;
    if (excluded == 0) return {};
    return ReplaceText(session.LoadText(Text::ChartRowsExcluded), "^", std::to_string(excluded));
}

} // namespace

std::string chartSummary(const Session& session, const ChartData& chart) {
    std::string summary;
    const auto add = [&summary](const std::string& sentence) {
        if (!sentence.empty()) summary += (summary.empty() ? "" : "\n") + sentence;
    };
    add(chart.Title);
    if (chart.RowCount > 0) {
        add(spanSentence(session, chart));
        add(axesSentence(session, chart));
        for (std::size_t i = 0; i < chart.Series.size(); ++i)
            if (i >= chart.ReferenceSeries && !chart.Series[i].Label.empty())
                add(seriesSentence(session, chart, chart.Series[i]));
        if (chart.Map) add(mapSentence(session, chart));
        add(excludedSentence(session, chart));
    }
    add(chart.Footnote);
    return summary;
}

std::string partInView(const Session& session, const ChartData& chart, std::size_t first, std::size_t last) {
    const bool isWhole = first == 0 && last + 1 >= chart.RowCount;
    if (isWhole || last >= chart.RowCount || chart.RowName(first).empty()) return {};
    return ReplaceText(ReplaceText(session.LoadText(Text::PartInView), "*", chart.RowName(last)), "^",
                       chart.RowName(first));
}

} // namespace kestrane

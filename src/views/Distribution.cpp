#include "views/Distribution.h"

#include "model/LogParameters.h"
#include "model/Session.h"
#include "platform/Format.h"
#include "platform/Numbers.h"
#include "views/ChartParts.h"
#include "views/CopyData.h"
#include "views/RangeTable.h"

#include <cmath>
#include <memory>

namespace kestrane {

namespace {

constexpr std::size_t kMostLabels = 15;
constexpr double kPercent = 100;

std::string edgeText(const Session& session, double level) {
    return formatNumber(level, "##0.0", session.locale);
}

// The part of all the time in percent; nothing when no row has a length.
std::optional<double> percentOf(double seconds, const std::vector<LevelClass>& classes) {
    const double all = classes.front().Above;
    return all > 0 ? std::optional(kPercent * seconds / all) : std::nullopt;
}

// With the weighting of the levels, when the log says it.
std::string classCaption(const clsLog& log) {
    const std::string caption = log.session().LoadText(Text::LevelClass);
    return log.FreqWeightA().empty() ? caption : caption + " " + log.FreqWeightA();
}

} // namespace

TypedNumbers typedNumbers(std::string_view text, double most, const Locale& locale) {
    TypedNumbers typed;
    constexpr std::string_view kBetween = " \t;";
    for (std::size_t at = text.find_first_not_of(kBetween); at != std::string_view::npos;
         at = text.find_first_not_of(kBetween, at)) {
        const std::string_view word = text.substr(at, text.find_first_of(kBetween, at) - at);
        const auto number = typedNumber(word, locale);
        if (number && *number >= 0 && *number <= most) {
            typed.Numbers.push_back(*number);
        } else {
            typed.Others.append(typed.Others.empty() ? "" : " ").append(word);
        }
        at += word.size();
    }
    return typed;
}

std::string percentileText(const Session& session, std::span<const AnalysedRow> rows,
                           std::span<const double> percents) {
    std::string text;
    for (const double percent : percents)
        text += (text.empty() ? "" : ", ") + percentileName(session, percent) + " " +
                shownLevel(session, levelExceeded(rows, percent));
    return text;
}

ChartData distributionChart(const clsLog& log, std::span<const AnalysedRow> rows, double width) {
    const Session& session = log.session();
    const std::vector<LevelClass> classes = distributionOf(rows, width).value();
    ChartData chart = emptyChart(log, displayOptions(log));
    chart.Title = ReplaceText(session.LoadText(Text::DistributionTitle), "^", log.Name);
    chart.Style = eChartAs2D;
    chart.Shape = ChartShape::Bar;
    chart.RowCount = classes.size();
    chart.DivisionsPerLabel = chart.DivisionsPerTick = classes.size() / kMostLabels + 1;
    chart.CategoryTitle = classCaption(log) + " (" + PlainCaption(session.LoadText(Text::ClassWidth)) + " " +
                          edgeText(session, width) + ")";
    chart.PrimaryTitle = session.LoadText(Text::ShareInClass);
    chart.SecondaryTitle = session.LoadText(Text::ShareAtOrAbove);
    chart.HasSecondaryAxis = true;
    chart.SecondaryRange = ChartRange{0, kPercent};
    chart.Series = {{chart.PrimaryTitle, ChartAxis::Primary, {}}, {chart.SecondaryTitle, ChartAxis::Secondary, {}}};
    std::vector<std::string> labels;
    for (const LevelClass& item : classes) {
        labels.push_back(edgeText(session, item.Level));
        const auto value = [&](double seconds) {
            const auto percent = percentOf(seconds, classes);
            return percent ? static_cast<float>(std::round(*percent * 10) / 10) : kNullValue; // as in the table
        };
        chart.Series[0].Values.push_back(value(item.Seconds));
        chart.Series[1].Values.push_back(value(item.Above));
    }
    chart.RowLabel = chart.RowName = [labels = std::move(labels)](std::size_t row) { return labels[row]; };
    return chart;
}

CellTable distributionTable(const clsLog& log, std::span<const AnalysedRow> rows, double width) {
    const Session& session = log.session();
    const auto classes = std::make_shared<const std::vector<LevelClass>>(distributionOf(rows, width).value());
    const auto cell = [&session, classes](std::size_t row, std::size_t column) -> std::string {
        const LevelClass& item = (*classes)[row];
        if (column == 0) return edgeText(session, item.Level);
        const double seconds = column <= 2 ? item.Seconds : item.Above;
        const auto percent = percentOf(seconds, *classes);
        if (!percent) return {};
        return column % 2 == 1 ? durationText(seconds) : formatNumber(*percent, "##0.0", session.locale);
    };
    return {{classCaption(log), session.LoadText(Text::TimeInClass), session.LoadText(Text::ShareInClass),
             session.LoadText(Text::TimeAtOrAbove), session.LoadText(Text::ShareAtOrAbove)},
            classes->size(),
            cell};
}

ClipboardForms copiedDistribution(const clsLog& log, const std::string& percentiles, const CellTable& table) {
    return withLine(withLine(copiedCells(table), percentiles), log.Name);
}

} // namespace kestrane

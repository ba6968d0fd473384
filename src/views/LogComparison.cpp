#include "views/LogComparison.h"

#include "model/Acoustics.h"
#include "model/LogParameters.h"
#include "model/Session.h"
#include "platform/Format.h"
#include "views/ChartParts.h"
#include "views/DisplayBy.h"
#include "views/RangeTable.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace kestrane {

namespace {

constexpr double kMostSlots = 100'000;
constexpr std::size_t kMostLabels = 15;
constexpr std::int64_t kDay = 24 * 3600;

// The seconds at which a row stands on the axis.
std::int64_t placeOf(const ComparedLog& log, const AnalysedRow& row, CompareBy by) {
    const std::int64_t first = log.Rows.front().Begin;
    return row.Begin - (by == CompareBy::Start ? first : first / kDay * kDay);
}

bool haveOneWeighting(std::span<const ComparedLog> logs) {
    return std::ranges::all_of(
        logs, [&](const ComparedLog& log) { return log.Log->FreqWeightA() == logs.front().Log->FreqWeightA(); });
}

// The unit of a log's levels, with their weighting when the log says it.
std::string unitOf(const Session& session, const clsLog& log) {
    const std::string unit = session.LoadText(Text::Decibel);
    return log.FreqWeightA().empty() ? unit : unit + " " + log.FreqWeightA();
}

// What a log is called among those that it is compared with: when their weightings differ, each says its own.
std::string nameOf(const Session& session, const ComparedLog& log, std::span<const ComparedLog> among) {
    return haveOneWeighting(among) ? log.Name : log.Name + " (" + unitOf(session, *log.Log) + ")";
}

struct TimeSlots {
    double begin = 0, width = 1;
    std::size_t count = 0;
};

TimeSlots slotsFor(std::span<const ComparedLog> logs, CompareBy by) {
    double first = 0;
    double last = 0;
    double shortest = 0;
    for (const ComparedLog& log : logs) {
        for (const AnalysedRow& row : log.Rows) {
            if (row.Seconds <= 0) continue;
            const auto place = static_cast<double>(placeOf(log, row, by));
            first = shortest == 0 ? place : std::min(first, place);
            last = shortest == 0 ? place + row.Seconds : std::max(last, place + row.Seconds);
            shortest = shortest == 0 ? row.Seconds : std::min(shortest, row.Seconds);
        }
    }
    if (shortest == 0) return {};
    const double width = std::max(shortest, std::ceil((last - first) / kMostSlots));
    return {first, width, static_cast<std::size_t>(std::ceil((last - first) / width))};
}

std::vector<float> slotLevels(const ComparedLog& log, CompareBy by, const TimeSlots& slots) {
    std::vector<double> energy(slots.count);
    std::vector<double> seconds(slots.count);
    for (const AnalysedRow& row : log.Rows) {
        const double from = static_cast<double>(placeOf(log, row, by)) - slots.begin;
        const double to = from + row.Seconds;
        for (auto slot = static_cast<std::size_t>(from / slots.width);
             slot < slots.count && static_cast<double>(slot) * slots.width < to; ++slot) {
            const double edge = static_cast<double>(slot) * slots.width;
            const double part = std::min(to, edge + slots.width) - std::max(from, edge);
            energy[slot] += part * energyOf(row.Level);
            seconds[slot] += part;
        }
    }
    std::vector<float> levels(slots.count, kNullValue);
    for (std::size_t slot = 0; slot < slots.count; ++slot)
        if (seconds[slot] > 0) levels[slot] = static_cast<float>(levelOf(energy[slot] / seconds[slot]));
    return levels;
}

void addTimes(ChartData& chart, const Session& session, std::span<const ComparedLog> logs, CompareBy by) {
    const TimeSlots slots = slotsFor(logs, by);
    chart.RowCount = slots.count;
    chart.DivisionsPerLabel = chart.DivisionsPerTick = slots.count / kMostLabels + 1;
    chart.CategoryTitle = session.LoadText(Text::TimeColumn);
    const auto timeAt = [slots](std::size_t row) { return slots.begin + static_cast<double>(row) * slots.width; };
    const bool isWithinADay = slots.count > 1 && timeAt(slots.count) <= kDay;
    for (std::size_t row = 0; isWithinADay && row < slots.count; ++row)
        chart.RowBegins.push_back(std::llround(timeAt(row)));
    const bool isClock = by == CompareBy::TimeOfDay;
    chart.RowLabel = chart.RowName = [timeAt, isClock](std::size_t row) {
        return durationText(isClock ? std::fmod(timeAt(row), kDay) : timeAt(row));
    };
    for (const ComparedLog& log : logs)
        chart.Series.push_back({nameOf(session, log, logs), ChartAxis::Primary, slotLevels(log, by, slots)});
}

void addBands(ChartData& chart, const Session& session, std::span<const ComparedLog> logs) {
    const auto first = std::ranges::find_if(logs, [](const ComparedLog& log) { return log.Log->IsOctaveLog(); });
    if (first == logs.end()) return;
    chart.Shape = ChartShape::Bar;
    std::vector<std::string> labels;
    for (int band = 0; band <= lastBand(first->Log->Mode()); ++band)
        labels.push_back(bandLabel(*first->Log, band));
    std::string others;
    for (const ComparedLog& log : logs) {
        if (log.Log->Mode() != first->Log->Mode()) {
            others += (others.empty() ? "" : ", ") + log.Name;
            continue;
        }
        ChartSeries series = {nameOf(session, log, logs), ChartAxis::Primary, {}};
        for (int band = 0; band <= lastBand(log.Log->Mode()); ++band)
            series.Values.push_back(chartValue(cumulativeValue(*log.Log, kChannelA, eLeq, band).CalcValue()));
        chart.Series.push_back(std::move(series));
    }
    if (!others.empty()) addFootnote(chart, ReplaceText(session.LoadText(Text::NotComparedByBand), "^", others));
    chart.RowCount = labels.size();
    chart.RowLabel = chart.RowName = [labels = std::move(labels)](std::size_t row) { return labels[row]; };
}

std::string signedText(const Session& session, double difference) {
    const std::string text = formatNumber(difference, "##0.0", session.locale);
    return difference > 0 && text != formatNumber(0, "##0.0", session.locale) ? "+" + text : text;
}

} // namespace

ChartData comparisonChart(const Session& session, std::span<const ComparedLog> logs, CompareBy by) {
    if (logs.empty()) return {};
    ChartData chart = emptyChart(*logs.front().Log, displayOptions(*logs.front().Log));
    chart.Style = eChartAs2D;
    chart.Title = session.LoadText(Text::CompareTitle);
    chart.PrimaryTitle = haveOneWeighting(logs) ? unitOf(session, *logs.front().Log) : session.LoadText(Text::Decibel);
    by == CompareBy::Band ? addBands(chart, session, logs) : addTimes(chart, session, logs, by);
    return chart;
}

CellTable comparedTable(const Session& session, std::span<const ComparedLog> logs) {
    using Cells = std::vector<std::string>;
    std::vector<Cells> lines;
    std::vector<AnalysedRow> all;
    std::optional<double> first;
    for (const ComparedLog& log : logs) {
        const StretchFigures figures = stretchFigures(log.Rows, 0, 0);
        if (lines.empty()) first = figures.LAeq;
        const bool isComparable = first && figures.LAeq && log.Log->FreqWeightA() == logs.front().Log->FreqWeightA();
        lines.push_back({nameOf(session, log, logs), durationText(figures.Seconds), shownLevel(session, figures.LAeq),
                         isComparable ? signedText(session, *figures.LAeq - *first) : std::string()});
        all.insert(all.end(), log.Rows.begin(), log.Rows.end());
    }
    const StretchFigures mean = stretchFigures(all, 0, 0);
    const bool isOne = haveOneWeighting(logs);
    lines.push_back({session.LoadText(Text::CompareMean),
                     durationText(mean.Seconds),
                     isOne ? shownLevel(session, mean.LAeq) : std::string(),
                     {}});
    const std::size_t count = lines.size();
    const bool isSaid = isOne && !logs.empty() && !logs.front().Log->FreqWeightA().empty();
    const std::string level = isSaid ? levelCaption(*logs.front().Log, kChannelA, eLeq)
                                     : VariableCaption(session, eLeq, kNoChannel, kNoBand, nullptr);
    return {{session.LoadText(Text::FindLogs), session.LoadText(Text::RangeLength), level,
             session.LoadText(Text::CompareDifference)},
            count,
            [lines = std::move(lines)](std::size_t row, std::size_t column) { return lines[row][column]; }};
}

} // namespace kestrane

#include "views/ChartParts.h"

#include "model/RowClock.h"
#include "model/Session.h"
#include "views/ChartLines.h"
#include "views/RowTimes.h"

namespace kestrane {

namespace {

constexpr std::size_t kMostLabels = 15;

} // namespace

ChartData emptyChart(const clsLog& log, const clsLogOptions& options) {
    ChartData chart;
    chart.Title = log.Name;
    chart.Style = options.ChartStyle;
    chart.LineWidth = options.LineWidth;
    chart.HasMarks = readChartLines(log.session()).AreSeriesMarked;
    chart.TitleFont = options.TitleFont;
    chart.LegendFont = options.LegendFont;
    chart.AxisFont = options.AxisFont;
    chart.NoteFont = options.NoteFont;
    return chart;
}

void addTimeRows(ChartData& chart, const clsLog& log) {
    const IntervalColumns& rows = log.LogIntervals.Columns();
    chart.RowCount = rows.count();
    const RowTimes times(log);
    chart.RowLabel = [times](std::size_t row) { return times.label(row); };
    chart.RowName = [times](std::size_t row) { return times.dateAndTime(row); };
    for (std::size_t row = 0; row < rows.count(); ++row)
        chart.RowBegins.push_back(rowBegin(rows, row));
    const bool isTimeKnown = rows.count() > 0 && chart.RowBegins.front() != chart.RowBegins.back();
    if (!isTimeKnown) chart.RowBegins.clear();
    const auto excluded = rows.cells(rows.isExcluded);
    chart.ExcludedRows.assign(excluded.begin(), excluded.end());
    chart.DivisionsPerLabel = chart.DivisionsPerTick = rows.count() / kMostLabels + 1;
    chart.CategoryTitle = log.session().LoadText(Text::TimeColumn);
}

void addFootnote(ChartData& chart, const std::string& line) {
    if (line.empty()) return;
    chart.Footnote += (chart.Footnote.empty() ? "" : "\n") + line;
}

std::string exposureTitle(const Session& session, bool hasPercent, bool hasPa2Hours) {
    const std::string percent = hasPercent ? session.LoadText(Text::Percent) : std::string();
    const std::string pa2Hours = hasPa2Hours ? session.LoadText(Text::Pa2Hours) : std::string();
    return pa2Hours + (hasPercent && hasPa2Hours ? " / " : "") + percent;
}

} // namespace kestrane

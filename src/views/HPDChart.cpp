#include "views/HPDChart.h"

#include "model/LogParameters.h"
#include "model/Session.h"
#include "views/ChartParts.h"
#include "views/Zoom.h"

namespace kestrane {

namespace {

constexpr Colour kGrades[] = {{0, 255, 0}, {255, 165, 0}, {255, 0, 0}}; // indexed by ProtectionGrade

void addOctaves(const Session& session, const HPDComparison& comparison, ChartData& chart) {
    std::vector<std::string> labels;
    chart.Series = {{session.LoadText(Text::WithoutProtection), ChartAxis::Primary, {}},
                    {session.LoadText(Text::WithProtection), ChartAxis::Primary, {}}};
    for (const ComparisonBar& bar : comparison.Bars) {
        labels.push_back(bar.Label);
        chart.Series[0].Values.push_back(bar.Without);
        chart.Series[1].Values.push_back(bar.With);
    }
    chart.RowCount = labels.size();
    chart.RowLabel = chart.RowName = [labels](std::size_t row) { return labels[row]; };
    for (const std::string& line : comparison.Footnote)
        addFootnote(chart, line);
}

// One row of bars; the bar of a level that could not be computed stays empty.
void addLevels(const HPDComparison& comparison, ChartData& chart) {
    chart.HasLegend = false;
    chart.RowCount = 1;
    chart.RowLabel = chart.RowName = [](std::size_t) { return std::string(); };
    for (const ComparisonBar& bar : comparison.Bars)
        chart.Series.push_back({bar.Label, ChartAxis::Primary, {bar.Without < 0 ? kNullValue : bar.Without}});
}

// The beginning of a name, cut between two characters, so that the names leave room for the bars.
std::string shortName(const std::string& name) {
    constexpr std::size_t kMost = 18; // bytes
    if (name.size() <= kMost) return name;
    std::size_t end = kMost - 1;
    while ((static_cast<unsigned char>(name[end]) & 0xC0U) == 0x80U)
        --end;
    return name.substr(0, end) + "\u2026";
}

} // namespace

ChartData rankChart(const clsLog& log, const RankTable& ranks) {
    constexpr std::size_t kMost = 12;
    const Session& session = log.session();
    ChartData chart = emptyChart(log, displayOptions(log));
    chart.Shape = ChartShape::Bar;
    chart.Title = session.LoadText(Text::RankChartTitle);
    chart.PrimaryTitle = session.LoadText(Text::DecibelA);
    chart.HasLegend = false;
    ChartSeries levels{session.LoadText(Text::RankTold), ChartAxis::Primary, {}};
    std::vector<std::string> names;
    for (const RankTable::Row& row : ranks.Rows) {
        if (!row.Level || names.size() == kMost) continue;
        names.push_back(row.Protector->Name);
        levels.Values.push_back(static_cast<float>(*row.Level));
    }
    chart.RowCount = names.size();
    chart.RowLabel = [names](std::size_t row) { return shortName(names[row]); };
    chart.RowName = [names](std::size_t row) { return names[row]; };
    chart.Series.push_back(std::move(levels));
    return chart;
}

ChartData hpdChart(const clsLog& log, const HPDComparison& comparison) {
    const Session& session = log.session();
    ChartData chart = emptyChart(log, displayOptions(log));
    chart.Shape = ChartShape::Bar;
    chart.Title = comparison.ChartTitle;
    chart.GradeColour = kGrades[static_cast<int>(comparison.Grade)];
    chart.CategoryTitle = comparison.ResultLine;
    chart.PrimaryTitle = session.LoadText(Text::DecibelA);
    if (comparison.isByOctaves()) {
        chart.PrimaryTitle += " (" + session.LoadText(Text::BandsInDecibelZ) + ")";
        addOctaves(session, comparison, chart);
    } else {
        addLevels(comparison, chart);
    }
    addFootnote(chart, wholeFiguresLine(log));
    return chart;
}

} // namespace kestrane

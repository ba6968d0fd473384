#include "views/LogTabs.h"

#include "calc/FreqWeight.h"
#include "model/Session.h"
#include "protection/ProtectorDatabase.h"
#include "views/BandChart.h"
#include "views/HPDChart.h"
#include "views/NoiseRatingChart.h"
#include "views/TimeChart.h"

#include <algorithm>

namespace kestrane {

namespace {

bool isAnyLog(const clsLog&) {
    return true;
}

bool hasRows(const clsLog& log) {
    return log.LogIntervals.Count() > 0;
}

bool hasBands(const clsLog& log) {
    return log.IsOctaveLog();
}

bool hasExposures(const clsLog& log) {
    return !log.has(Trait::ReportsDoseOnly);
}

bool hasDataByFrequency(const clsLog& log) {
    for (int band = 1; band <= log.e("Last"); ++band)
        if (log.LeqCumA(band).CalcValue() != 0) return true;
    return false;
}

// For meters whose figures depend on the location, an environmental log is never compared with a protector.
bool canCompare(const clsLog& log) {
    const bool isEnvironmental = log.has(Trait::EnvironmentOnly) || log.LocationType() == EnvironmentLocation;
    if (log.has(Trait::OffersVariants) && isEnvironmental) return false;
    if (hasDataByFrequency(log)) return true;
    const ProtectorCollection* protectors = log.session().protectors;
    return IsHMLCalculateable(log) && protectors != nullptr &&
           std::any_of(protectors->Protectors.begin(), protectors->Protectors.end(),
                       [](const clsHP& protector) { return protector.HasHML(); });
}

std::optional<ChartData> chartOverTime(const clsLog& log, const ChartChoice& choice) {
    return fullLogChart(&log, choice.Choice);
}

std::optional<ChartData> chartOfRow(const clsLog& log, const ChartChoice& choice) {
    return bandChart(log, choice.Interval, choice.Choice, choice.Axis);
}

std::optional<ChartData> chartOfWhole(const clsLog& log, const ChartChoice& choice) {
    return bandChart(log, kWholeLog, choice.Choice, choice.Axis);
}

std::optional<ChartData> chartOfRating(const clsLog& log, const ChartChoice&) {
    return noiseRatingChart(log);
}

std::optional<ChartData> chartOfComparison(const clsLog& log, const ChartChoice& choice) {
    if (choice.Comparison == nullptr) return std::nullopt;
    return hpdChart(log, *choice.Comparison);
}

// Indexed by LogTab. It is meant that the noise rating has no values to copy, and that no picture of the comparison is
// saved.
constexpr TabRow kTabs[kAllLogTabs.size()] = {
    {.Caption = Text::TabFullLog,
     .Figures = TabFigures::OfRows,
     .IsOf = hasRows,
     .Lack = Text::LacksIntervals,
     .Panels = {.WholeFigures = true},
     .Chart = chartOverTime,
     .IsOverTime = true,
     .IsNarrowed = true,
     .HidesLegend = true,
     .CopiesValues = true,
     .SavesPicture = true},
    {.Caption = Text::TabIntervalsTable,
     .Figures = TabFigures::OfRows,
     .IsOf = hasRows,
     .Lack = Text::LacksIntervals,
     .Panels = {.DisplayBy = true, .ByParam = true, .Channel = true, .WholeFigures = true},
     .IsNarrowed = true},
    {.Caption = Text::TabIntervalsGraph,
     .Figures = TabFigures::OfRows,
     .IsOf = hasRows,
     .Lack = Text::LacksIntervals,
     .Panels = {.DisplayBy = true, .ByParam = true, .Axis = true, .IntervalList = true, .WholeFigures = true},
     .Chart = chartOfRow,
     .IsNarrowed = true,
     .HidesLegend = true,
     .CopiesValues = true,
     .SavesPicture = true},
    {.Caption = Text::TabCumulativeGraph,
     .Figures = TabFigures::Cumulative,
     .IsOf = isAnyLog,
     .Panels = {.DisplayBy = true, .ByParam = true, .Axis = true, .WholeFigures = true},
     .Chart = chartOfWhole,
     .IsNarrowed = true,
     .HidesLegend = true,
     .CopiesValues = true,
     .SavesPicture = true},
    {.Caption = Text::TabNoiseRating,
     .Figures = TabFigures::Cumulative,
     .IsOf = hasBands,
     .Lack = Text::LacksBands,
     .Panels = {.WholeFigures = true},
     .Chart = chartOfRating,
     .SavesPicture = true},
    {.Caption = Text::TabCompareHPD,
     .Figures = TabFigures::Cumulative,
     .IsOf = canCompare,
     .Lack = Text::LacksLevelsForProtectors,
     .Panels = {.Protector = true, .WholeFigures = true},
     .Chart = chartOfComparison,
     .CopiesValues = true},
    {.Caption = Text::TabCumulativeData,
     .Figures = TabFigures::Cumulative,
     .IsOf = isAnyLog,
     .Panels = {.DisplayBy = true, .FigurePanel = true, .ApplyChanges = true, .WholeFigures = true},
     .IsNarrowed = true},
    {.Caption = Text::TabExposureCalculator,
     .Figures = TabFigures::Exposures,
     .IsOf = hasExposures,
     .Lack = Text::ReportsDoseOnly,
     .Panels = {.ExposureRows = true}},
    {.Caption = Text::TabCriteria, .Figures = TabFigures::OfRows, .IsOf = isAnyLog, .Panels = {}, .IsNarrowed = true},
};

} // namespace

const TabRow& tabRow(LogTab tab) {
    return kTabs[tab];
}

TabFlags enabledTabs(const clsLog& log) {
    TabFlags tabs{};
    std::transform(std::begin(kTabs), std::end(kTabs), tabs.begin(), [&](const TabRow& row) { return row.IsOf(log); });
    return tabs;
}

LogPanels shownPanels(const clsLog& log, LogTab tab) {
    LogPanels panels = tabRow(tab).Panels;
    panels.DisplayBy = panels.DisplayBy && log.IsOctaveLog();
    panels.ByParam = panels.ByParam && log.IsOctaveLog();
    panels.Channel = panels.Channel && log.IsChannelBOn;
    panels.WholeFigures = panels.WholeFigures && log.HasWholeFigures;
    return panels;
}

bool showsWholeFigures(const clsLog& inView, LogTab tab) {
    return inView.HasWholeFigures && tabRow(tab).Figures == TabFigures::Cumulative;
}

bool IsZoomSelectable(const clsLog& opened, LogTab tab) {
    return opened.LogIntervals.Count() > 1 && tabRow(tab).IsNarrowed;
}

bool IsCutIntervalSelectable(const clsLog& inView, LogTab tab) {
    return IsZoomSelectable(inView, tab);
}

bool IsCopyable(LogTab tab, bool valuesOnly, bool hasContent) {
    return hasContent && (!valuesOnly || tabRow(tab).CopiesValues);
}

std::optional<ChartData> chartOfTab(const clsLog& log, LogTab tab, const ChartChoice& choice) {
    const TabRow& row = tabRow(tab);
    if (row.Chart == nullptr || (row.Figures == TabFigures::OfRows && !hasRows(log))) return std::nullopt;
    return row.Chart(log, choice);
}

} // namespace kestrane

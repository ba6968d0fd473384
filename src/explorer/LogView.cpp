#include "explorer/LogView.h"

#include "calc/FreqWeight.h"
#include "model/Session.h"
#include "protection/ProtectorDatabase.h"

#include <algorithm>
#include <utility>

namespace kestrane {

namespace {

bool isAnyOf(int tab, std::initializer_list<int> tabs) {
    return std::find(tabs.begin(), tabs.end(), tab) != tabs.end();
}

bool hasDataByFrequency(const clsLog& log) {
    for (int band = 1; band <= log.e("Last"); ++band)
        if (log.LeqCumA(band).CalcValue() != 0) return true;
    return false;
}

// Brevik's model E, and its environmental logs, are never compared with a protector.
bool canCompare(const clsLog& log) {
    if (log.IsBrevikMeter() && (log.IsBrevikEMeter() || log.LocationType() == EnvironmentLocation)) return false;
    if (hasDataByFrequency(log)) return true;
    const ProtectorCollection* protectors = log.session().protectors;
    return IsHMLCalculateable(log) && protectors != nullptr &&
           std::any_of(protectors->Protectors.begin(), protectors->Protectors.end(),
                       [](const clsHP& protector) { return protector.HasHML(); });
}

} // namespace

TabFlags enabledTabs(const clsLog& log) {
    TabFlags tabs{};
    const bool hasIntervals = log.LogIntervals.Count() > 0;
    for (const int tab : {eTabFullLog, eTabIntervalsTable, eTabIntervalsGraph})
        tabs[static_cast<std::size_t>(tab)] = hasIntervals;
    tabs[eTabCumulativeGraph] = true;
    tabs[eTabNoiseRating] = log.IsOctaveLog();
    tabs[eTabCompareHPD] = canCompare(log);
    tabs[eTabCumulativeData] = true;
    tabs[eTabExposureCalculator] = !log.IsOldDoseMeter();
    return tabs;
}

bool IsZoomSelectable(const clsLog& opened, int tab) {
    return opened.LogIntervals.Count() > 1 &&
           isAnyOf(tab, {eTabFullLog, eTabIntervalsTable, eTabIntervalsGraph, eTabCumulativeGraph, eTabCumulativeData});
}

bool showsWholeFigures(const clsLog& inView, int tab) {
    return inView.HasWholeFigures &&
           isAnyOf(tab, {eTabCumulativeGraph, eTabNoiseRating, eTabCompareHPD, eTabCumulativeData});
}

bool IsCutIntervalSelectable(const clsLog& inView, int tab) {
    return IsZoomSelectable(inView, tab);
}

LogPanels shownPanels(const clsLog& log, int tab) {
    LogPanels panels;
    panels.DisplayBy = log.IsOctaveLog() &&
                       isAnyOf(tab, {eTabIntervalsTable, eTabIntervalsGraph, eTabCumulativeGraph, eTabCumulativeData});
    panels.ByParam = panels.DisplayBy && tab != eTabCumulativeData;
    panels.Axis = isAnyOf(tab, {eTabIntervalsGraph, eTabCumulativeGraph});
    panels.Channel = tab == eTabIntervalsTable && log.IsChannelBOn;
    panels.PanelChoice = tab == eTabCumulativeData;
    panels.IntervalList = tab == eTabIntervalsGraph;
    panels.ApplyChanges = tab == eTabCumulativeData;
    panels.Protector = tab == eTabCompareHPD;
    panels.ExposureRows = tab == eTabExposureCalculator;
    panels.WholeFigures = log.HasWholeFigures && tab != eTabExposureCalculator; // whose rows are the opened log's
    return panels;
}

int cumulativePanelOf(const clsLog& log, int chosen) {
    return chosen == ePanelBothChannels && !log.IsChannelBOn ? static_cast<int>(ePanelMainChannelA) : chosen;
}

void LogView::open(const std::string& key, const clsLog& log, int panelSetting) {
    Key = key;
    panelSetting_ = panelSetting;
    if (panelSetting != ePanelHidden) Panel = panelSetting;
    IntervalRow = 1;
    choice_ = {};
    if (!log.session().Options.PersistSelectedHP) Protector.reset();
    IsComparisonDeclined = false;
    ResetTabs();
    const TabFlags tabs = enabledTabs(log);
    if (!tabs[static_cast<std::size_t>(Tab)]) Tab = tabs[eTabFullLog] ? eTabFullLog : eTabCumulativeData;
    chooseTab(Tab, log);
}

void LogView::close() {
    Key.clear();
    choice_ = {};
    ResetTabs();
}

void LogView::ResetTabs() {
    drawn_.fill(false);
    channel_ = kChannelA;
}

void LogView::chooseProtector(const clsHP& protector, int correctionFactor) {
    Protector = protector;
    CorrectionFactor = correctionFactor;
    drawn_[eTabCompareHPD] = false;
}

void LogView::dropUnfitEntry(const clsLog& log) {
    if (placeOf(choice_, displayByList(log, listMode_)) == 0) chooseEntry({});
}

void LogView::dropUnfitProtector(const clsLog& log) {
    if (!Protector || !log.IsOctaveLog()) return;
    const bool isFit = log.session().Options.IsUSHPDMode() ? Protector->HasOctavesUS() : Protector->HasOctaves();
    if (!isFit) Protector.reset();
}

bool LogView::takeDrawing() {
    bool& drawn = drawn_[static_cast<std::size_t>(Tab)];
    return !std::exchange(drawn, true);
}

bool LogView::chooseTab(int tab, const clsLog& log) {
    if (!enabledTabs(log)[static_cast<std::size_t>(tab)]) return false;
    Tab = tab;
    if (tab == eTabCumulativeData) chooseListMode(kByFreq);
    return true;
}

bool LogView::chooseListMode(int mode) {
    if (mode == listMode_) return false;
    listMode_ = mode;
    return chooseEntry({});
}

bool LogView::chooseEntry(const DisplayChoice& choice) {
    if (choice == choice_) return false;
    choice_ = choice;
    ResetTabs();
    return true;
}

bool LogView::chooseAxis(int axis) {
    Axis = axis;
    for (const int tab : {eTabIntervalsGraph, eTabCumulativeGraph})
        drawn_[static_cast<std::size_t>(tab)] = false;
    return true;
}

bool LogView::choosePanel(int panel) {
    Panel = panel;
    drawn_[eTabCumulativeData] = false;
    return true;
}

void LogView::followPanelSetting(int panelSetting) {
    if (std::exchange(panelSetting_, panelSetting) != panelSetting && panelSetting != ePanelHidden)
        choosePanel(panelSetting);
}

bool LogView::chooseInterval(std::int64_t row) {
    IntervalRow = row;
    drawn_[eTabIntervalsGraph] = false;
    return true;
}

bool LogView::chooseChannel(int channel) {
    channel_ = chooseEntry({}) ? static_cast<int>(kChannelA) : channel;
    drawn_[eTabIntervalsTable] = false;
    return true;
}

int LogView::PanelBand(const clsLog& log) const {
    if (listMode_ != kByFreq) return 0;
    return log.e(choice_.BandText);
}

} // namespace kestrane

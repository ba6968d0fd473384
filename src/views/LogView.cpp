#include "views/LogView.h"

#include "model/Session.h"

#include <utility>

namespace kestrane {

PanelForm cumulativePanelOf(const clsLog& log, PanelForm chosen) {
    return chosen == ePanelBothChannels && !log.IsChannelBOn ? ePanelMainChannelA : chosen;
}

void LogView::open(const std::string& key, const clsLog& log, PanelForm panelSetting) {
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

void LogView::drawAnew(bool LogPanels::*choice) {
    for (const LogTab tab : kAllLogTabs)
        if (tabRow(tab).Panels.*choice) drawn_[static_cast<std::size_t>(tab)] = false;
}

void LogView::chooseProtector(const clsHP& protector, CorrectionKind correctionFactor) {
    Protector = protector;
    CorrectionFactor = correctionFactor;
    drawAnew(&LogPanels::Protector);
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

bool LogView::chooseTab(LogTab tab, const clsLog& log) {
    if (!enabledTabs(log)[static_cast<std::size_t>(tab)]) return false;
    Tab = tab;
    const LogPanels& panels = tabRow(tab).Panels;
    if (panels.DisplayBy && !panels.ByParam) chooseListMode(kByFreq);
    return true;
}

bool LogView::chooseListMode(DisplayMode mode) {
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

bool LogView::chooseAxis(DisplayMode axis) {
    Axis = axis;
    drawAnew(&LogPanels::Axis);
    return true;
}

bool LogView::choosePanel(PanelForm panel) {
    Panel = panel;
    drawAnew(&LogPanels::FigurePanel);
    return true;
}

void LogView::followPanelSetting(PanelForm panelSetting) {
    if (std::exchange(panelSetting_, panelSetting) != panelSetting && panelSetting != ePanelHidden)
        choosePanel(panelSetting);
}

bool LogView::chooseInterval(std::int64_t row) {
    IntervalRow = row;
    drawAnew(&LogPanels::IntervalList);
    return true;
}

bool LogView::chooseChannel(LogChannel channel) {
    channel_ = chooseEntry({}) ? kChannelA : channel;
    drawAnew(&LogPanels::Channel);
    return true;
}

int LogView::PanelBand(const clsLog& log) const {
    if (listMode_ != kByFreq) return 0;
    return log.e(choice_.BandText);
}

} // namespace kestrane

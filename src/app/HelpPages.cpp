#include "app/HelpPages.h"

#include <algorithm>

namespace kestrane {

namespace {

constexpr HelpOfWindow kWindows[] = {
    {"StartPage", "start"},
    {"tvwTreeView", "tree"},
    {"fraDefaultData", "panel"},
    {"fraRange", "worst-window"},
    {"fraZoom", "zoom"},
    {"fraProtector", "compare-hpd"},
    {"fraHPD", "compare-hpd"},
    {"fraDose", "dose"},
    {"frmAssessment", "assessment"},
    {"frmAbout", "about"},
    {"frmAcquire", "download"},
    {"frmCalibration", "calibration"},
    {"frmChartTable", "chart-table"},
    {"frmCompare", "comparison"},
    {"frmCutIntervals", "intervals"},
    {"frmDisplayOptions", "display-options"},
    {"frmDistribution", "distribution"},
    {"frmEvents", "events"},
    {"frmExpTime", "exposure-time"},
    {"frmExport", "export"},
    {"frmFind", "find"},
    {"frmHistory", "history"},
    {"frmHPD", "protectors"},
    {"frmHPDProgress", "protectors"},
    {"frmKeys", "shortcuts"},
    {"frmOptions", "settings"},
    {"frmPicture", "picture"},
    {"frmPreview", "preview"},
    {"frmProgress", "download"},
    {"frmRank", "rank"},
    {"frmRecovery", "recovery"},
    {"frmSelectHPD", "compare-hpd"},
    {"frmSimpleEdit", "note"},
    {"frmSpectrogram", "spectrogram"},
    {"frmTour", "start"},
};

constexpr HelpOfTab kTabs[] = {
    {eTabFullLog, "chart"},
    {eTabIntervalsTable, "table"},
    {eTabIntervalsGraph, "interval-graph"},
    {eTabCumulativeGraph, "cumulative-graph"},
    {eTabNoiseRating, "noise-rating"},
    {eTabCompareHPD, "compare-hpd"},
    {eTabCumulativeData, "panel"},
    {eTabExposureCalculator, "dose"},
    {eTabCriteria, "criteria"},
};

constexpr std::string_view kOthers[] = {"merge", "chart3d", "glossary", "examples", "limits"};

} // namespace

std::span<const HelpOfWindow> helpOfWindows() {
    return kWindows;
}

std::span<const HelpOfTab> helpOfTabs() {
    return kTabs;
}

std::span<const std::string_view> otherHelpTopics() {
    return kOthers;
}

std::string_view helpTopic(std::string_view objectName) {
    const auto* const row = std::ranges::find(kWindows, objectName, &HelpOfWindow::Name);
    return row == std::end(kWindows) ? std::string_view() : row->Topic;
}

std::string_view helpTopic(LogTab tab, bool is3D) {
    const auto* const row = std::ranges::find(kTabs, tab, &HelpOfTab::Tab);
    if (row == std::end(kTabs)) return kFirstHelpTopic;
    return is3D && row->Topic == "chart" ? "chart3d" : row->Topic;
}

} // namespace kestrane

#include "reports/ReportParts.h"

#include "calc/ExposureCalculator.h"
#include "model/Session.h"
#include "reports/Report.h"
#include "reports/ViewPages.h"
#include "views/LogTabs.h"

#include <algorithm>

namespace kestrane {

namespace {

PrintedView viewOf(const ReportSubject& subject, LogTab tab, const PageMetrics& metrics) {
    return {subject.file, subject.log, tab, !subject.Modification.empty(), metrics, true};
}

template <LogTab tab>
bool hasTab(const ReportSubject& subject) {
    return tabRow(tab).IsOf(subject.log);
}

std::unique_ptr<PagedDocument> chartOfPart(const ReportSubject& subject, LogTab tab, const PageMetrics& metrics,
                                           const ChartChoice& choice, const std::string& below) {
    auto chart = chartOfTab(subject.log, tab, choice);
    if (!chart) return nullptr;
    return chartPages(viewOf(subject, tab, metrics),
                      {std::make_shared<ChartData>(*std::move(chart)), true, true, std::nullopt}, below);
}

std::unique_ptr<PagedDocument> spectrumOf(const ReportSubject& subject, const PageMetrics& metrics) {
    ChartChoice allBands;
    allBands.Choice.Parameter = eLeq;
    return chartOfPart(subject, eTabCumulativeGraph, metrics, allBands, {});
}

std::unique_ptr<PagedDocument> noiseRatingOf(const ReportSubject& subject, const PageMetrics& metrics) {
    return chartOfPart(subject, eTabNoiseRating, metrics, {}, {});
}

std::unique_ptr<PagedDocument> protectorOf(const ReportSubject& subject, const PageMetrics& metrics) {
    ChartChoice choice;
    choice.Comparison = &*subject.Comparison;
    return chartOfPart(subject, eTabCompareHPD, metrics, choice, figuresLine(*subject.Comparison));
}

// The exposure calculator is that of the opened log, of which a zoomed range is no day's work. A log without rows of
// the calculator has the one that its tab would make.
std::unique_ptr<PagedDocument> exposureOf(const ReportSubject& subject, const PageMetrics& metrics) {
    const clsLog& opened = subject.Opened != nullptr ? *subject.Opened : subject.log;
    clsLog log(opened.session());
    log.Copy(opened, 0, 0);
    log.DoseLogIntervals = opened.DoseLogIntervals; // a copy of the log swaps figures of theirs
    fillExposureRows(log);
    return exposurePages({subject.file, log, eTabExposureCalculator, !subject.Modification.empty(), metrics, true});
}

constexpr ReportPartRow kRows[] = {
    {ReportPart::Spectrum, "spectrum", Text::PartSpectrum,
     [](const ReportSubject& subject) { return subject.log.IsOctaveLog(); }, spectrumOf},
    {ReportPart::NoiseRating, "noise-rating", Text::TabNoiseRating, hasTab<eTabNoiseRating>, noiseRatingOf},
    {ReportPart::Protector, "protector", Text::PartProtector,
     [](const ReportSubject& subject) { return subject.Comparison && !subject.Comparison->Method.empty(); },
     protectorOf},
    {ReportPart::Exposure, "exposure", Text::TabExposureCalculator, hasTab<eTabExposureCalculator>, exposureOf},
    {ReportPart::Criteria, "criteria", Text::TabCriteria,
     [](const ReportSubject& subject) { return !criteriaReportTable(subject.log).Rows.empty(); }, nullptr},
    {ReportPart::History, "history", Text::PartHistory,
     [](const ReportSubject& subject) { return !subject.file.History.lines().empty(); },
     [](const ReportSubject& subject, const PageMetrics& metrics) {
         return historyPages(viewOf(subject, eTabFullLog, metrics));
     }},
};

} // namespace

std::span<const ReportPartRow> reportPartRows() {
    return kRows;
}

ReportParts partsOf(std::string_view words) {
    ReportParts parts;
    while (!words.empty()) {
        const std::string_view word = words.substr(0, words.find(','));
        words.remove_prefix(std::min(word.size() + 1, words.size()));
        for (const ReportPartRow& row : kRows)
            if (row.Word == word) parts.insert(row.Part);
    }
    return parts;
}

std::string wordsOf(const ReportParts& parts) {
    std::string words;
    for (const ReportPartRow& row : kRows)
        if (parts.contains(row.Part)) words += (words.empty() ? "" : ",") + std::string(row.Word);
    return words;
}

} // namespace kestrane

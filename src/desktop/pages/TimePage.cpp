#include "desktop/pages/TimePage.h"

#include "charts/chaTab.h"
#include "desktop/frmCompare.h"
#include "desktop/frmDistribution.h"
#include "desktop/frmPreview.h"
#include "desktop/frmSpectrogram.h"
#include "desktop/pages/RangeStrip.h"
#include "dialogs/Words.h"
#include "dialogs/frmEvents.h"
#include "explorer/NodeKeys.h"
#include "platform/Format.h"
#include "platform/desktop/QtClipboard.h"
#include "printing/Printer.h"
#include "reports/Report.h"

#include <QBoxLayout>

#include <utility>

namespace kestrane {

namespace {

constexpr double kSecondsOfMinute = 60;

void copyOut(const ClipboardForms& forms) {
    QtClipboard().Set(forms);
}

} // namespace

TimePage::TimePage(Session& session, ExplorerState& state) : GraphPage(session, state, eTabFullLog) {
    strip_ = new RangeStrip(session);
    strip_->hide();
    column_->addWidget(strip_);
    connect(strip_, &RangeStrip::PercentChosen, this, &TimePage::showFigures);
}

void TimePage::Draw(clsLog& inView) {
    const bool isFirst = chart_ == nullptr;
    const auto marked = isFirst ? std::nullopt : chart_->markedRows();
    const Rows rows = rowsOf(inView);
    const bool isSame = std::exchange(drawn_, rows) == rows;
    analysed_.reset();
    GraphPage::Draw(inView);
    if (isFirst) {
        chart_->allowMarking();
        connect(chart_, &chaTab::RangeMarked, this, &TimePage::takeRange);
    }
    if (marked && isSame && shownChart() != nullptr) {
        chart_->markRows(marked->first, marked->second);
    } else {
        showFigures();
    }
    FollowStrip();
}

TimePage::Rows TimePage::rowsOf(const clsLog& inView) const {
    return {state_.View.Key, state_.ZoomRange.firstRow(), inView.LogIntervals.Count()};
}

std::optional<RowRange> TimePage::Marked() const {
    const auto rows = shownChart() == nullptr ? std::nullopt : chart_->markedRows();
    if (!rows) return std::nullopt;
    return RowRange{static_cast<std::int64_t>(rows->first) + 1, static_cast<std::int64_t>(rows->second) + 1};
}

void TimePage::AddButtons(const std::vector<QAction*>& actions) {
    strip_->AddButtons(actions);
}

void TimePage::FollowStrip() {
    const bool isShown = state_.View.ShowsRange;
    strip_->setVisible(isShown);
    if (!isShown && Marked()) chart_->clearMarked();
}

void TimePage::takeRange() {
    const bool hadRange = !figures_.empty();
    if (Marked()) state_.View.ShowsRange = true;
    showFigures();
    FollowStrip();
    if (!figures_.empty()) chart_->tellFirst(shown(spokenRange(figures_)));
    if (figures_.empty() == hadRange) emit Changed();
}

void TimePage::showFigures() {
    const clsLog* const log = state_.LogInView(session_);
    const auto range = Marked();
    figures_.clear();
    if (log != nullptr && range && drawn_ == rowsOf(*log))
        figures_ = rangeTable(*log, *analysed(*log), *range, strip_->Percent());
    strip_->ShowFigures(figures_);
}

const AnalysedRows& TimePage::analysed(const clsLog& inView) {
    if (!analysed_) analysed_ = std::make_shared<const std::vector<AnalysedRow>>(analysedRows(inView));
    return analysed_;
}

ClipboardForms TimePage::CopyFigures() const {
    const clsLog* const log = state_.LogInView(session_);
    return log == nullptr || figures_.empty() ? ClipboardForms() : copiedRange(*log, figures_);
}

std::string TimePage::PlaceOfRange() const {
    return figures_.empty() ? std::string() : figures_[0].Value + " - " + figures_[1].Value;
}

void TimePage::markWindow(std::optional<Stretch> WorstStretches::*which) {
    const clsLog* const log = state_.LogInView(session_);
    if (log == nullptr || shownChart() == nullptr) return;
    state_.View.ShowsRange = true;
    FollowStrip();
    const double minutes = strip_->WindowMinutes();
    const std::vector<AnalysedRow>& rows = *analysed(*log);
    const auto found = minutes > 0 ? worstStretches(rows, minutes * kSecondsOfMinute).*which : std::nullopt;
    if (!found) {
        const std::string length = formatNumber(minutes, "#0.##", session_.locale);
        session_.ShowMessage(ReplaceText(session_.LoadText(Text::NoSuchWindow), "^", length), kIconInformation);
        return;
    }
    chart_->markRows(static_cast<std::size_t>(rows[found->First].Number - 1),
                     static_cast<std::size_t>(rows[found->Behind - 1].Number - 1));
}

void TimePage::ShowDistribution() {
    const clsLog* const log = state_.LogInView(session_);
    if (log == nullptr || shownChart() == nullptr) return;
    const auto range = Marked();
    const std::span<const AnalysedRow> all = *analysed(*log);
    const std::span<const AnalysedRow> rows = range ? rowsWithin(all, *range) : all;
    if (rows.empty()) {
        session_.ShowMessage(session_.LoadText(Text::NoAvailableData), kIconInformation);
        return;
    }
    frmDistribution(*log, {rows.begin(), rows.end()}, PlaceOfRange(), {copyOut, printing()}, window()).exec();
}

void TimePage::ShowComparison() {
    frmCompare(session_, state_.OpenedLog(session_), {copyOut, printing()}, window()).exec();
}

void TimePage::ShowSpectrogram() {
    const clsLog* const log = state_.LogInView(session_);
    if (log == nullptr || shownChart() == nullptr) return;
    frmSpectrogram(*log, {copyOut, printing()}, window()).exec();
}

PrintChart TimePage::printing() const {
    return [this](const PrintedChart& printed, QWidget* dialog) { print(printed, dialog); };
}

void TimePage::print(const PrintedChart& printed, QWidget* dialog) const {
    const Node opened = resolve(session_, state_.View.Key);
    const clsLog* const log = state_.LogInView(session_);
    if (log == nullptr || opened.log == nullptr) return;
    const auto view = [&](const PageMetrics& paper) {
        const bool isOfView = printed.Files.empty();
        return PrintedView{*opened.file, *log,  tab_,         isOfView && isModified(*opened.log, *log),
                           paper,        false, printed.Files};
    };
    std::vector<PreviewChoice> choices = {{Text::PrintedChart, [&](const PageMetrics& paper) {
                                               return chartPages(view(paper), printed.Chart, printed.Below,
                                                                 printed.Chart.Data->Title);
                                           }}};
    if (printed.Table.RowCount > 0)
        choices.push_back({Text::PrintedTable, [&](const PageMetrics& paper) {
                               return cellPages(view(paper), printed.Table, printed.Chart.Data->Title, printed.Below);
                           }});
    Printers printers;
    frmPreview(session_, std::move(choices), printers, dialog).exec();
}

void TimePage::ShowEvents() {
    const clsLog* const log = state_.LogInView(session_);
    if (log == nullptr || shownChart() == nullptr) return;
    const auto mark = [this](const RowRange& rows) {
        chart_->markRows(static_cast<std::size_t>(rows.From - 1), static_cast<std::size_t>(rows.To - 1));
    };
    frmEvents(*log, analysed(*log), {mark, copyOut}, window()).exec();
}

} // namespace kestrane

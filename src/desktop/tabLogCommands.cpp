// What the commands of a log do in its view, whichever tab is in front: converting, zooming, selecting intervals, the
// note and the legend.
#include "calc/Recalculation.h"
#include "desktop/fraZoom.h"
#include "desktop/pages/TimePage.h"
#include "desktop/tabLog.h"
#include "dialogs/AskDialogs.h"
#include "dialogs/frmCalibration.h"
#include "dialogs/frmCutIntervals.h"
#include "dialogs/frmSimpleEdit.h"
#include "explorer/CalculationEntries.h"
#include "explorer/ConvertWeighting.h"
#include "explorer/Edits.h"
#include "explorer/NodeKeys.h"
#include "model/Captions.h"
#include "views/Selection.h"

#include <utility>

namespace kestrane {

namespace {

// Recalculates a log whose selection has changed, and says whether it has.
bool recalculated(clsLog& log, bool isChanged) {
    if (isChanged) RecalcValues(log, kCalcFull);
    return isChanged;
}

} // namespace

void tabLog::ConvertWeighting() {
    clsLog* const displayed = state_.OpenedLog(session_);
    clsLog* const inView = state_.LogInView(session_);
    if (displayed != nullptr && inView != nullptr)
        ConvertFrequencyWeighting(*displayed, *inView, choiceDialog(session_, window()));
}

void tabLog::Calibrate() {
    const clsLog* const before = state_.OpenedLog(session_);
    if (before == nullptr) return;
    const std::optional<Calibration> typed = frmCalibration::Ask(*before, window());
    clsLog* const displayed = state_.OpenedLog(session_); // found again, because the pump ran in the meantime
    clsLog* const inView = state_.LogInView(session_);
    if (typed && displayed != nullptr && inView != nullptr) setCalibration(*displayed, *inView, *typed);
}

void tabLog::FullRecalculation() {
    clsLog* log = resolve(session_, state_.DisplayedKey).log;
    if (log == nullptr) return;
    clsLog* inView = state_.View.Key == state_.DisplayedKey ? state_.LogInView(session_) : nullptr;
    FullRecalc(*log, inView != nullptr ? *inView : *log);
}

void tabLog::ToggleNote() {
    state_.View.ShowsNote = !state_.View.ShowsNote;
    for (GraphPage* graph : graphs_)
        graph->FollowNote();
}

void tabLog::ToggleLegend() {
    state_.View.ShowsLegend = !state_.View.ShowsLegend;
    for (GraphPage* graph : graphs_)
        graph->FollowLegend();
}

void tabLog::EditNote() {
    if (const clsLog* const log = state_.LogInView(session_); log != nullptr) editNote(log->Note);
}

// A line of its own, which begins with the times of the range.
void tabLog::NoteAtRange() {
    const clsLog* const log = state_.LogInView(session_);
    if (log != nullptr)
        editNote(log->Note + (log->Note.empty() ? "" : "\r\n") + captioned(session_, timeGraph_->PlaceOfRange(), {}));
}

void tabLog::editNote(const std::string& proposal) {
    const std::optional<std::string> note = frmSimpleEdit::EditNote(session_, proposal, window());
    clsLog* const log = state_.OpenedLog(session_); // found again, because the pump ran in the meantime
    if (!note || log == nullptr) return;
    editLog(*log, Text::StepNote, [&] { return std::exchange(log->Note, *note) != *note; });
    log->RaiseLogValuesChanged(); // every window that shows the log has its note
}

bool tabLog::IsZoomShown() const {
    const clsLog* opened = state_.OpenedLog(session_);
    return opened != nullptr && IsZoomSelectable(*opened, state_.View.Tab) &&
           (state_.View.ShowsZoom || state_.ZoomRange.copy() != nullptr);
}

void tabLog::ToggleZoom() {
    state_.View.ShowsZoom = !state_.View.ShowsZoom || state_.ZoomRange.copy() != nullptr;
    ShowControls();
    emit TabChanged();
    if (!IsZoomShown()) return;
    offerRowsInView();
    fraZoom_->setFocus();
}

// The part of the time chart that the user has dragged over becomes the range of the zoom panel.
void tabLog::offerRowsInView() {
    const clsLog* opened = state_.OpenedLog(session_);
    if (opened == nullptr || !IsZoomShown() || &front() != timeGraph_ || !timeGraph_->RowsInView()) return;
    Zoom& zoom = state_.ZoomRange;
    zoom.Range = rowsInView();
    zoom.ByTime = zoom.Range.From > 1 || zoom.Range.To < opened->LogIntervals.Count();
    fraZoom_->ShowChoice();
}

RowRange tabLog::rowsInView() const {
    const std::int64_t before = state_.ZoomRange.firstRow() - 1;
    const RowRange rows = RowsOfLogInView();
    return {before + rows.From, before + rows.To};
}

RowRange tabLog::RowsOfLogInView() const {
    const auto rows = &front() == timeGraph_ ? timeGraph_->RowsInView() : std::nullopt;
    if (rows) return {static_cast<std::int64_t>(rows->first) + 1, static_cast<std::int64_t>(rows->second) + 1};
    return {1, state_.LogInView(session_)->LogIntervals.Count()};
}

void tabLog::applyZoom() {
    if (state_.ApplyZoom(session_)) ShowLog();
}

bool tabLog::HasRange() const {
    return &front() == timeGraph_ && timeGraph_->Marked().has_value();
}

RowRange tabLog::RowsToTake() const {
    if (!HasRange()) return rowsInView();
    const std::int64_t before = state_.ZoomRange.firstRow() - 1;
    const RowRange marked = *timeGraph_->Marked();
    return {before + marked.From, before + marked.To};
}

void tabLog::ToggleRange() {
    state_.View.ShowsRange = !state_.View.ShowsRange;
    timeGraph_->FollowStrip();
    emit TabChanged();
}

void tabLog::ZoomToRange() {
    state_.ZoomRange.Range = RowsToTake();
    state_.ZoomRange.ByTime = true;
    applyZoom();
}

void tabLog::ExcludeRange() {
    editMarked(excludeRows);
}

void tabLog::IncludeOnlyRange() {
    editMarked(includeOnly);
}

void tabLog::CutIntervals() {
    const clsLog* before = state_.LogInView(session_);
    if (before == nullptr) return;
    const std::optional<CutWizard> wizard = frmCutIntervals::getIntervals(session_, *before, window());
    clsLog* const log = state_.LogInView(session_); // found again, because the pump ran in the meantime
    if (!wizard || log == nullptr) return;
    editLog(*log, Text::StepIntervalSelection, [&] { return recalculated(*log, wizard->Store(*log)); });
}

// Changes which rows count by those that are marked: in the opened log, where it can be undone and is saved, and in the
// part of it that is zoomed to.
void tabLog::editMarked(bool (*change)(clsLog&, const RowRange&)) {
    clsLog* const opened = state_.OpenedLog(session_);
    clsLog* const inView = state_.LogInView(session_);
    if (opened == nullptr || inView == nullptr) return;
    const RowRange rows = RowsToTake();
    const RowRange marked = *timeGraph_->Marked();
    editLog(*opened, Text::StepIntervalSelection, [&] {
        if (inView != opened) recalculated(*inView, change(*inView, marked));
        return recalculated(*opened, change(*opened, rows));
    });
}

} // namespace kestrane

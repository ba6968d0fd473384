// What the commands of a log do on its view: choosing a protector, converting, zooming, selecting intervals, copying,
// saving and printing.
#include "app/Documents.h"
#include "calc/Recalculation.h"
#include "charts/chaTab.h"
#include "desktop/CumulativePanelView.h"
#include "desktop/fraZoom.h"
#include "desktop/grdDose.h"
#include "desktop/grdTable.h"
#include "desktop/tabLog.h"
#include "dialogs/AskDialogs.h"
#include "dialogs/Words.h"
#include "dialogs/frmCutIntervals.h"
#include "dialogs/frmHPD.h"
#include "dialogs/frmSimpleEdit.h"
#include "explorer/CalculationEntries.h"
#include "explorer/ConvertWeighting.h"
#include "explorer/CopyData.h"
#include "explorer/Edits.h"
#include "explorer/NodeKeys.h"
#include "platform/RuntimeError.h"
#include "reports/Report.h"
#include "reports/ViewPages.h"

#include <QApplication>
#include <QFileDialog>
#include <QLabel>
#include <QStackedWidget>

#include <utility>

namespace kestrane {

void tabLog::ChooseProtector() {
    const clsLog* log = state_.LogInView(session_);
    if (log == nullptr || state_.View.Tab != eTabCompareHPD || session_.protectors == nullptr) return;
    const std::string key = state_.View.Key;
    const auto download = [this](QWidget* parent) {
        bool isDone = false;
        emit DatabaseDownloadAsked(parent, &isDone);
        return isDone;
    };
    const std::string chosen = state_.View.Protector ? state_.View.Protector->Name : std::string();
    const std::optional<ProtectorChoice> choice =
        frmHPD::ShowHPDComparisonScreen(session_, *log, chosen, download, window());
    if (state_.View.Key != key) return;
    state_.View.IsComparisonDeclined = !choice && !state_.View.Protector;
    if (!choice) return;
    state_.View.chooseProtector(choice->Protector, choice->CorrectionFactor);
    tabClick();
}

void tabLog::ConvertWeighting() {
    clsLog* const displayed = state_.OpenedLog(session_);
    clsLog* const inView = state_.LogInView(session_);
    if (displayed != nullptr && inView != nullptr)
        ConvertFrequencyWeighting(*displayed, *inView, choiceDialog(session_, window()));
}

bool tabLog::IsOnExposureRow() const {
    return state_.View.Tab == eTabExposureCalculator && exposures_->IsOnRow();
}

void tabLog::InsertRows() {
    exposures_->InsertRows();
}

void tabLog::DeleteRows() {
    exposures_->DeleteRows();
}

void tabLog::applyChanges() {
    clsLog* log = state_.LogInView(session_);
    if (log == nullptr) return;
    const bool isChanged = kestrane::applyChanges(*state_.OpenedLog(session_), *log, panels_->Entries(),
                                                  [this](CalculationField field) { panels_->FocusField(field); });
    if (!isChanged) return;
    if (clsLog* after = state_.LogInView(session_); after != nullptr) drawPanels(*after);
}

void tabLog::FullRecalculation() {
    clsLog* log = resolve(session_, state_.DisplayedKey).log;
    if (log == nullptr) return;
    clsLog* inView = state_.View.Key == state_.DisplayedKey ? state_.LogInView(session_) : nullptr;
    FullRecalc(*log, inView != nullptr ? *inView : *log);
}

void tabLog::ToggleNote() {
    state_.View.ShowsNote = !state_.View.ShowsNote;
    if (charts_[eTabFullLog] != nullptr) charts_[eTabFullLog]->showFootnote(state_.View.ShowsNote);
}

void tabLog::ToggleLegend() {
    state_.View.ShowsLegend = !state_.View.ShowsLegend;
    for (const int tab : {eTabFullLog, eTabIntervalsGraph, eTabCumulativeGraph}) {
        chaTab* const cha = charts_[static_cast<std::size_t>(tab)];
        if (cha != nullptr) cha->showLegend(state_.View.ShowsLegend);
    }
}

void tabLog::EditNote() {
    clsLog* log = state_.LogInView(session_);
    if (log == nullptr) return;
    const std::optional<std::string> note = frmSimpleEdit::EditNote(session_, log->Note, window());
    log = state_.OpenedLog(session_); // the pump ran meanwhile
    if (!note || log == nullptr) return;
    editLog(*log, Text::StepNote, [&] { return std::exchange(log->Note, *note) != *note; });
    Redraw();
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

// The part of the time chart that the user has dragged to is the range that can be zoomed to.
void tabLog::offerRowsInView() {
    const clsLog* opened = state_.OpenedLog(session_);
    const chaTab* cha = charts_[eTabFullLog];
    if (opened == nullptr || cha == nullptr || !IsZoomShown() || state_.View.Tab != eTabFullLog) return;
    const auto rows = cha->rowsInView();
    if (!rows) return;
    Zoom& zoom = state_.ZoomRange;
    zoom.Range = {zoom.firstRow() + static_cast<std::int64_t>(rows->first),
                  zoom.firstRow() + static_cast<std::int64_t>(rows->second)};
    zoom.ByTime = zoom.Range.From > 1 || zoom.Range.To < opened->LogIntervals.Count();
    fraZoom_->ShowChoice();
}

void tabLog::applyZoom() {
    if (state_.ApplyZoom(session_)) ShowLog();
}

void tabLog::CutIntervals() {
    const clsLog* before = state_.LogInView(session_);
    if (before == nullptr) return;
    const std::optional<CutWizard> wizard = frmCutIntervals::getIntervals(session_, *before, window());
    clsLog* log = state_.LogInView(session_); // the pump ran meanwhile
    if (!wizard || log == nullptr) return;
    editLog(*log, Text::StepIntervalSelection, [&] {
        const bool isChanged = wizard->Store(*log);
        if (isChanged) RecalcValues(*log, kCalcFull);
        return isChanged;
    });
}

const chaTab* tabLog::shownChart() const {
    const auto tab = static_cast<std::size_t>(state_.View.Tab);
    const chaTab* cha = charts_[tab];
    return cha != nullptr && !cha->isHidden() && chartPages_[tab] == pages_->currentWidget() ? cha : nullptr;
}

bool tabLog::HasContent() const {
    if (state_.LogInView(session_) == nullptr) return false;
    switch (state_.View.Tab) {
    case eTabIntervalsTable:
        return table_->model()->rowCount() > 0;
    case eTabCumulativeData:
    case eTabExposureCalculator:
        return true;
    default:
        return shownChart() != nullptr && shownChart()->chart().RowCount > 0;
    }
}

ClipboardForms tabLog::copiedIntervals(const clsLog& log) const {
    const bool isPart = table_->HasSelection();
    const CopiedRows rows = isPart ? table_->SelectedRows() : table_->Table().copiedRows();
    session_.frame->SetPanel(Frame::Panel::Status, rows.LeftOut == 0
                                                       ? std::string()
                                                       : ReplaceText(session_.LoadText(Text::OverloadedRowsLeftOut),
                                                                     "^", std::to_string(rows.LeftOut)));
    return copiedTable(log, rows, !isPart);
}

// Of a grid the selected cells, when there are several, and of the panel a selected word; else the whole.
ClipboardForms tabLog::CopyData(bool valuesOnly) const {
    const clsLog* log = state_.LogInView(session_);
    if (log == nullptr) return {};
    const LogView& view = state_.View;
    const std::string wholeFigures = showsWholeFigures(*log, view.Tab) ? wholeFiguresLine(*log) : std::string();
    switch (view.Tab) {
    case eTabIntervalsTable:
        return copiedIntervals(*log);
    case eTabExposureCalculator:
        return exposures_->HasSelection() ? copiedLines(exposures_->SelectionText(), false)
                                          : copiedExposures(*state_.OpenedLog(session_));
    case eTabCumulativeData:
        if (const auto* label = qobject_cast<QLabel*>(QApplication::focusWidget());
            label != nullptr && label->hasSelectedText())
            return {label->selectedText().toStdString(), {}, {}, {}};
        return withLine(copiedPanel(*log, view.PanelBand(*log), cumulativePanelOf(*log, view.Panel)), wholeFigures);
    default:
        break;
    }
    const chaTab* cha = shownChart();
    if (cha == nullptr) return {};
    if (valuesOnly) return withLine(copiedValues(cha->chart(), session_.locale), wholeFigures);
    ClipboardForms forms = view.Tab == eTabCompareHPD ? copiedComparison(comparison_) : ClipboardForms();
    forms = withLine(std::move(forms), wholeFigures);
    forms.Png = cha->pictureBytes(".png", cha->size()).toStdString();
    forms.Svg = cha->pictureBytes(".svg", cha->size()).toStdString();
    return forms;
}

void tabLog::SavePicture() {
    const clsLog* log = state_.LogInView(session_);
    const chaTab* const cha = shownChart();
    if (log == nullptr || cha == nullptr) return;
    const QString start =
        shown(session_.Options.DefaultDataDirectory) + shown(log->Name).replace('/', '-').replace('\\', '-') + ".png";
    QString filter;
    QString name = QFileDialog::getSaveFileName(window(), loadText(session_, Text::SavePicture), start,
                                                fileFilter(session_.LoadText(Text::PictureFilter)), &filter);
    if (name.isEmpty()) return;
    if (QFileInfo(name).suffix().isEmpty()) name += filter.section("*", 1).section(')', 0, 0);
    try {
        cha->savePicture(name.toStdString(), cha->size());
    } catch (const RuntimeError& error) {
        session_.ShowMessage(saveErrorText(session_, error, name.toStdString()), kIconExclamation);
    }
}

// What stands beside the comparison, in one line.
std::string tabLog::protectorPanelText() const {
    std::string text;
    for (const auto& [label, value] : comparison_.Panel)
        text += (text.empty() ? "" : "    ") + label + " " + value;
    return text;
}

std::unique_ptr<PagedDocument> tabLog::CurrentView(const PageMetrics& paper) const {
    const Node opened = resolve(session_, state_.View.Key);
    const clsLog* log = state_.LogInView(session_);
    if (log == nullptr || opened.log == nullptr) return nullptr;
    const LogView& view = state_.View;
    const PrintedView printed = {*opened.file, *log, view.Tab, isModified(*opened.log, *log), paper};
    switch (view.Tab) {
    case eTabIntervalsTable:
        return tablePages(printed, view.Channel(), view.Choice());
    case eTabCumulativeData:
        return panelPages(printed, view.PanelBand(*log), cumulativePanelOf(*log, view.Panel));
    case eTabExposureCalculator:
        return exposurePages({*opened.file, *opened.log, view.Tab, false, paper});
    default:
        break;
    }
    const chaTab* cha = shownChart();
    if (cha == nullptr) return nullptr;
    return chartPages(printed, cha->onPage(), view.Tab == eTabCompareHPD ? protectorPanelText() : std::string());
}

} // namespace kestrane

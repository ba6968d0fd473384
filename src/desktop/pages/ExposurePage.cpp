#include "desktop/pages/ExposurePage.h"

#include "desktop/grdDose.h"
#include "dialogs/Words.h"
#include "explorer/Edits.h"
#include "platform/desktop/DragOut.h"
#include "views/CopyData.h"

#include <QBoxLayout>
#include <QCheckBox>
#include <QPushButton>
#include <QSignalBlocker>

#include <utility>

namespace kestrane {

ExposurePage::ExposurePage(Session& session, ExplorerState& state) : LogPage(session, state, eTabExposureCalculator) {
    exposures_ = new grdDose(session, [this] { return state_.OpenedLog(session_); });
    fillWith(*exposures_);
    const auto isSelected = onSelection(*exposures_);
    allowDragging(*exposures_->viewport(), [this, isSelected](const QMouseEvent& press) {
        return exposures_->HasSelection() && isSelected(press); // from a single cell the mouse selects
    });
    makeBar();
    connect(exposures_, &grdDose::CurrentRowChanged, this, [this] {
        cmdDeleteRows_->setEnabled(exposures_->IsOnRow());
        emit Changed();
    });
}

void ExposurePage::makeBar() {
    bar_ = new QWidget;
    bar_->setObjectName("fraDose");
    chkSave_ = checkBox(session_, Text::SaveWithTheLog, "chkSave", false);
    QPushButton* const cmdInsertRows = pushButton(session_, Text::CommandInsertRowS, "cmdInsertRows",
                                                  loadPlainText(session_, Text::CommandInsertRowS));
    cmdDeleteRows_ = pushButton(session_, Text::CommandDeleteRowS, "cmdDeleteRows",
                                loadPlainText(session_, Text::CommandDeleteRowS));
    auto* const row = new QHBoxLayout(bar_);
    row->setContentsMargins(0, 0, 0, 0);
    for (QWidget* control : std::initializer_list<QWidget*>{cmdInsertRows, cmdDeleteRows_, chkSave_})
        row->addWidget(control);
    connect(cmdInsertRows, &QPushButton::clicked, this, &ExposurePage::InsertRows);
    connect(cmdDeleteRows_, &QPushButton::clicked, this, &ExposurePage::DeleteRows);
    connect(chkSave_, &QCheckBox::toggled, this, [this](bool isSaved) {
        clsLog* log = state_.OpenedLog(session_);
        if (log == nullptr) return;
        editLog(*log, Text::StepExposureRows, [&] { return std::exchange(log->SaveDoseCalc, isSaved) != isSaved; });
        log->RaiseLogValuesChanged();
    });
}

void ExposurePage::Follow(const clsLog* inView) {
    exposures_->ForgetOtherLog();
    const QSignalBlocker blocker(chkSave_); // setting it to the log's state is no change by the user
    if (inView != nullptr) chkSave_->setChecked(inView->SaveDoseCalc);
}

void ExposurePage::Draw(clsLog&) {
    if (clsLog* log = state_.OpenedLog(session_); log != nullptr) fillExposureRows(*log);
    exposures_->ShowRows();
}

// Copies the selected cells when there are several, else everything.
ClipboardForms ExposurePage::Copy(const clsLog&, bool) const {
    return exposures_->HasSelection() ? copiedLines(exposures_->SelectionText(), false)
                                      : copiedExposures(*state_.OpenedLog(session_));
}

std::unique_ptr<PagedDocument> ExposurePage::Pages(const PrintedView& printed) const {
    return exposurePages({printed.file, *state_.OpenedLog(session_), tab_, false, printed.metrics});
}

bool ExposurePage::IsOnRow() const {
    return exposures_->IsOnRow();
}

void ExposurePage::InsertRows() {
    exposures_->InsertRows();
}

void ExposurePage::DeleteRows() {
    exposures_->DeleteRows();
}

} // namespace kestrane

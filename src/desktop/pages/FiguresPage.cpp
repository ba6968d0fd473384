#include "desktop/pages/FiguresPage.h"

#include "desktop/CumulativePanelView.h"
#include "explorer/CalculationEntries.h"
#include "views/CopyData.h"

#include <QApplication>
#include <QLabel>

namespace kestrane {

FiguresPage::FiguresPage(Session& session, ExplorerState& state) : LogPage(session, state, eTabCumulativeData) {
    panels_ = new CumulativePanelView(session);
    fillWith(*panels_);
    connect(panels_, &CumulativePanelView::ApplyChanges, this, &FiguresPage::applyChanges);
    connect(panels_, &CumulativePanelView::RevertChanges, this, &FiguresPage::drawAnew);
}

void FiguresPage::Follow(const clsLog* inView) {
    panels_->Follow(inView);
}

void FiguresPage::Draw(clsLog& inView) {
    const LogView& view = state_.View;
    panels_->ShowLog(inView, view.PanelBand(inView), cumulativePanelOf(inView, view.Panel));
}

void FiguresPage::drawAnew() {
    panels_->Follow(nullptr);
    if (clsLog* log = state_.LogInView(session_); log != nullptr) Draw(*log);
}

void FiguresPage::applyChanges() {
    clsLog* log = state_.LogInView(session_);
    if (log == nullptr) return;
    const bool isChanged = kestrane::applyChanges(*state_.OpenedLog(session_), *log, panels_->Entries(),
                                                  [this](CalculationField field) { panels_->FocusField(field); });
    if (isChanged) drawAnew();
}

// Copies the selected text of a label when there is one, else everything.
ClipboardForms FiguresPage::Copy(const clsLog& inView, bool) const {
    if (const auto* label = qobject_cast<QLabel*>(QApplication::focusWidget());
        label != nullptr && label->hasSelectedText())
        return {label->selectedText().toStdString(), {}, {}, {}};
    const LogView& view = state_.View;
    return withWholeFigures(copiedPanel(inView, view.PanelBand(inView), cumulativePanelOf(inView, view.Panel)), inView);
}

std::unique_ptr<PagedDocument> FiguresPage::Pages(const PrintedView& printed) const {
    const LogView& view = state_.View;
    return panelPages(printed, view.PanelBand(printed.log), cumulativePanelOf(printed.log, view.Panel));
}

} // namespace kestrane

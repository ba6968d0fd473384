#include "desktop/pages/LogPage.h"

#include "dialogs/DragOffers.h"
#include "views/CopyData.h"

#include <QBoxLayout>
#include <QLabel>

#include <utility>

namespace kestrane {

void LogPage::fillWith(QWidget& content) {
    auto* const column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    column->addWidget(&content);
}

void LogPage::allowDragging(QWidget& part, std::function<bool(const QMouseEvent& press)> isGrip) {
    new DragOut(part, std::move(isGrip), [this]() -> std::optional<DragOffer> {
        const clsLog* const log = state_.LogInView(session_);
        return log == nullptr ? std::nullopt : offerOf(Copy(*log, false), log->Name);
    }); // the part owns it
}

ClipboardForms LogPage::withWholeFigures(ClipboardForms forms, const clsLog& inView) const {
    return showsWholeFigures(inView, tab_) ? withLine(std::move(forms), wholeFiguresLine(inView)) : forms;
}

QLabel* placeholderLabel() {
    auto* const label = new QLabel;
    label->setAlignment(Qt::AlignCenter);
    label->setWordWrap(true);
    label->setForegroundRole(QPalette::PlaceholderText);
    return label;
}

} // namespace kestrane

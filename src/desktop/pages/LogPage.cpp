#include "desktop/pages/LogPage.h"

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

#include "dialogs/DialogFit.h"

#include <QAbstractSpinBox>
#include <QApplication>
#include <QBoxLayout>
#include <QComboBox>
#include <QDialog>
#include <QDialogButtonBox>
#include <QEvent>
#include <QPushButton>
#include <QScreen>
#include <QScrollArea>
#include <QScrollBar>
#include <QSlider>

#include <algorithm>
#include <string_view>

namespace kestrane {

namespace {

constexpr QSize kFrame(16, 48); // pixels: the border and the title that a desktop adds
constexpr int kRounded = 2;     // pixels that a window can lose where the scale is no whole number

// Dialogs of the toolkit lay themselves out.
bool isOurs(const QDialog& dialog) {
    const std::string_view name = dialog.metaObject()->className();
    return name == "QDialog" || name.starts_with("kestrane::");
}

// The row of buttons that ends the dialog; null when it ends with something else.
QWidget* buttonsOf(const QLayout& layout) {
    QWidget* const last = layout.itemAt(layout.count() - 1)->widget();
    if (last == nullptr) return nullptr;
    const bool hasButtons = qobject_cast<QDialogButtonBox*>(last) != nullptr ||
                            last->findChild<QPushButton*>("cmdCancel") != nullptr ||
                            last->findChild<QPushButton*>("cmdClose") != nullptr;
    return hasButtons ? last : nullptr;
}

// The button that Return presses; null when there is none.
QPushButton* defaultOf(const QWidget& buttons) {
    const auto all = buttons.findChildren<QPushButton*>();
    const auto found = std::ranges::find_if(all, &QPushButton::isDefault);
    return found == all.end() ? nullptr : *found;
}

// The first control that Tab reaches in the content; null when there is none.
QWidget* firstControl(const QWidget& content) {
    for (QWidget* at = content.nextInFocusChain(); content.isAncestorOf(at); at = at->nextInFocusChain())
        if ((at->focusPolicy() & Qt::TabFocus) != 0 && at->isEnabledTo(&content) && at->isVisibleTo(&content))
            return at;
    return nullptr;
}

// Puts everything but the buttons into an area that scrolls. The buttons are taken out of the dialog for that, so that
// Tab reaches them last, and Return presses the same one as before.
void scroll(QDialog& dialog) {
    QLayout* const layout = dialog.layout();
    QWidget* const buttons = buttonsOf(*layout);
    QPushButton* const main = buttons != nullptr ? defaultOf(*buttons) : nullptr;
    QWidget* const focused = dialog.focusWidget();
    if (buttons != nullptr) {
        layout->removeWidget(buttons);
        buttons->setParent(nullptr);
    }
    layout->setSizeConstraint(QLayout::SetDefaultConstraint);
    auto* const content = new QWidget;
    content->setLayout(layout); // takes it from the dialog
    auto* const area = new QScrollArea;
    area->setFrameShape(QFrame::NoFrame);
    area->setWidgetResizable(true);
    area->setWidget(content);
    dialog.setMinimumSize(0, 0); // that of the layout which it had
    auto* const outer = new QVBoxLayout(&dialog);
    outer->addWidget(area, 1);
    area->show();
    if (buttons != nullptr) {
        outer->addWidget(buttons);
        buttons->show();
    }
    if (main != nullptr) {
        main->setDefault(false);
        main->setDefault(true);
    }
    if (QWidget* const first = focused != nullptr ? focused : firstControl(*content); first != nullptr)
        first->setFocus();
}

// The size at which nothing has to be scrolled, as far as there is room.
QSize wantedSize(const QDialog& dialog, QSize room) {
    const auto* const area = dialog.findChild<QScrollArea*>({}, Qt::FindDirectChildrenOnly);
    const QSize inside = area->widget()->sizeHint().expandedTo(area->widget()->minimumSizeHint());
    const int bar = area->verticalScrollBar()->sizeHint().width();
    const int below = dialog.minimumSizeHint().height() - area->minimumSizeHint().height();
    const QMargins margins = dialog.layout()->contentsMargins();
    const int width = inside.width() + bar + margins.left() + margins.right() + kRounded;
    return QSize(width, inside.height() + below).boundedTo(room);
}

// Keeps the wheel from giving the focus, which comes before the wheel itself.
void leaveFocus(QObject& watched) {
    auto* const widget = qobject_cast<QWidget*>(&watched);
    if (widget != nullptr && widget->focusPolicy() == Qt::WheelFocus) widget->setFocusPolicy(Qt::StrongFocus);
}

// Whether the wheel would change a value over which it only comes by.
bool isChangedInPassing(const QObject& watched) {
    const auto* const widget = qobject_cast<const QWidget*>(&watched);
    const bool hasValue = widget != nullptr && (qobject_cast<const QComboBox*>(widget) != nullptr ||
                                                qobject_cast<const QSlider*>(widget) != nullptr ||
                                                qobject_cast<const QAbstractSpinBox*>(widget) != nullptr);
    return hasValue && !widget->hasFocus();
}

} // namespace

DialogFit::DialogFit(QSize room) : room_(room) {
    qApp->installEventFilter(this);
}

QSize DialogFit::roomFor(const QDialog& dialog) const {
    return room_.isEmpty() ? dialog.screen()->availableSize() - kFrame : room_;
}

// At this moment its parts have been shown, so their sizes are known, and the window is not on the screen yet.
bool DialogFit::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() == QEvent::Polish) leaveFocus(*watched);
    if (event->type() == QEvent::Wheel && isChangedInPassing(*watched)) {
        event->ignore(); // what is around it may scroll
        return true;
    }
    if (event->type() != QEvent::Show || event->spontaneous()) return false;
    auto* const dialog = qobject_cast<QDialog*>(watched);
    if (dialog == nullptr || !isOurs(*dialog) || dialog->layout() == nullptr || dialog->layout()->count() == 0)
        return false;
    const QSize room = roomFor(*dialog);
    const QSize least = dialog->minimumSizeHint();
    const bool isScrolled = least.width() > room.width() || least.height() > room.height();
    if (isScrolled) scroll(*dialog);
    dialog->resize(isScrolled ? wantedSize(*dialog, room) : dialog->size().expandedTo(least).boundedTo(room));

    // A dialog takes its place beside its parent, which may be near an edge.
    const QRect area = dialog->screen()->availableGeometry();
    const QSize size = dialog->frameGeometry().size();
    const QPoint corner(std::clamp(dialog->x(), area.left(), std::max(area.left(), area.right() + 1 - size.width())),
                        std::clamp(dialog->y(), area.top(), std::max(area.top(), area.bottom() + 1 - size.height())));
    if (corner != dialog->pos()) dialog->move(corner);
    return false;
}

} // namespace kestrane

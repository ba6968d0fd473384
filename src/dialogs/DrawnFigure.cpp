#include "dialogs/DrawnFigure.h"

#include <QAccessibleWidget>
#include <QPainter>

namespace kestrane {

namespace {

constexpr int kFrame = 2; // pixels

QAccessibleInterface* interfaceOf(const QString&, QObject* object) {
    auto* const figure = dynamic_cast<DrawnFigure*>(object);
    return figure == nullptr ? nullptr : new QAccessibleWidget(figure, QAccessible::Chart);
}

} // namespace

DrawnFigure::DrawnFigure(QWidget* parent) : QWidget(parent) {
    static const bool isInstalled = [] {
        QAccessible::installFactory(interfaceOf);
        return true;
    }();
    static_cast<void>(isInstalled);
    setFocusPolicy(Qt::TabFocus);
}

void DrawnFigure::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.save();
    draw(painter);
    painter.restore();
    if (!hasFocus()) return;
    painter.setPen(QPen(palette().color(QPalette::Highlight), kFrame, Qt::SolidLine, Qt::SquareCap, Qt::MiterJoin));
    painter.drawRect(rect().adjusted(kFrame / 2, kFrame / 2, -kFrame / 2, -kFrame / 2));
}

} // namespace kestrane

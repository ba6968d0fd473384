#include "charts/ChartTouch.h"

#include <QGestureEvent>
#include <QGuiApplication>
#include <QPinchGesture>
#include <QStyleHints>
#include <QTapAndHoldGesture>
#include <QTouchEvent>
#include <QWidget>

namespace kestrane {

ChartTouch::ChartTouch(QWidget& chart, Hands hands) : QObject(&chart), chart_(chart), hands_(std::move(hands)) {
    chart.setAttribute(Qt::WA_AcceptTouchEvents);
    chart.grabGesture(Qt::PinchGesture);
    chart.installEventFilter(this);
    // The toolkit's own gesture for this would take a mouse that is held still in the middle of a drag for a finger.
    resting_.setSingleShot(true);
    connect(&resting_, &QTimer::timeout, this, [this] { hands_.AskMenu(restsAt_.toPoint()); });
}

// Touches are taken, so that the toolkit makes no mouse of the first finger, which would drag a rectangle.
bool ChartTouch::eventFilter(QObject* watched, QEvent* event) {
    switch (event->type()) {
    case QEvent::TouchBegin:
    case QEvent::TouchUpdate:
    case QEvent::TouchEnd:
    case QEvent::TouchCancel:
        take(static_cast<QTouchEvent&>(*event));
        return true;
    case QEvent::Gesture:
        take(static_cast<QGestureEvent&>(*event));
        return true;
    default:
        return QObject::eventFilter(watched, event);
    }
}

void ChartTouch::take(QTouchEvent& event) {
    event.accept();
    const bool isFirst = event.type() == QEvent::TouchBegin;
    hasSecond_ = (hasSecond_ && !isFirst) || event.points().size() > 1;
    const bool isMoving = event.type() == QEvent::TouchUpdate && !hasSecond_;
    if (!isFirst && !isMoving) return resting_.stop();
    const QEventPoint& finger = event.points().front();
    if (isFirst) {
        restsAt_ = finger.globalPosition();
        resting_.start(QTapAndHoldGesture::timeout());
        return;
    }
    if ((finger.globalPosition() - restsAt_).manhattanLength() > QGuiApplication::styleHints()->startDragDistance())
        resting_.stop();
    if (finger.position().x() != finger.lastPosition().x())
        hands_.Move(finger.position().x() - finger.lastPosition().x());
}

void ChartTouch::take(QGestureEvent& event) {
    if (const auto* const pinch = static_cast<QPinchGesture*>(event.gesture(Qt::PinchGesture)); pinch != nullptr) {
        if (pinch->changeFlags().testFlag(QPinchGesture::ScaleFactorChanged) && pinch->scaleFactor() > 0)
            hands_.Zoom(pinch->scaleFactor(), chart_.mapFromGlobal(pinch->centerPoint()));
        event.accept(Qt::PinchGesture);
    }
}

} // namespace kestrane

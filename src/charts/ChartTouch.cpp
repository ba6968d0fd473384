#include "charts/ChartTouch.h"

#include <QGestureEvent>
#include <QPinchGesture>
#include <QTapAndHoldGesture>
#include <QTouchEvent>
#include <QWidget>

namespace kestrane {

ChartTouch::ChartTouch(QWidget& chart, Hands hands) : QObject(&chart), chart_(chart), hands_(std::move(hands)) {
    chart.setAttribute(Qt::WA_AcceptTouchEvents);
    chart.grabGesture(Qt::PinchGesture);
    chart.grabGesture(Qt::TapAndHoldGesture);
    chart.installEventFilter(this);
}

// Touches are taken, so that the toolkit makes no mouse of the first finger, which would drag a rectangle.
bool ChartTouch::eventFilter(QObject* watched, QEvent* event) {
    switch (event->type()) {
    case QEvent::TouchBegin:
    case QEvent::TouchUpdate:
    case QEvent::TouchEnd:
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
    if (event.type() == QEvent::TouchBegin) hasSecond_ = false;
    hasSecond_ = hasSecond_ || event.points().size() > 1;
    if (event.type() != QEvent::TouchUpdate || hasSecond_) return;
    const QEventPoint& finger = event.points().front();
    if (finger.position().x() != finger.lastPosition().x())
        hands_.Move(finger.position().x() - finger.lastPosition().x());
}

void ChartTouch::take(QGestureEvent& event) {
    if (const auto* const pinch = static_cast<QPinchGesture*>(event.gesture(Qt::PinchGesture)); pinch != nullptr) {
        if (pinch->changeFlags().testFlag(QPinchGesture::ScaleFactorChanged) && pinch->scaleFactor() > 0)
            hands_.Zoom(pinch->scaleFactor(), chart_.mapFromGlobal(pinch->centerPoint()));
        event.accept(Qt::PinchGesture);
    }
    const auto* const hold = static_cast<QTapAndHoldGesture*>(event.gesture(Qt::TapAndHoldGesture));
    if (hold == nullptr) return;
    if (hold->state() == Qt::GestureFinished) hands_.AskMenu(hold->position().toPoint());
    event.accept(Qt::TapAndHoldGesture);
}

} // namespace kestrane

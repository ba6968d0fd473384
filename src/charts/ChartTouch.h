// Fingers on a chart: one moves along the rows, two zoom them, one that rests asks for the menu.
#pragma once

#include <QObject>
#include <QPointF>
#include <QTimer>

#include <functional>

class QGestureEvent;
class QTouchEvent;
class QWidget;

namespace kestrane {

class ChartTouch : public QObject {
public:
    struct Hands {
        std::function<void(double pixels)> Move; // to the right when above 0
        // How many times as far apart the fingers are, and the place between them in the chart.
        std::function<void(double factor, const QPointF& at)> Zoom;
        std::function<void(const QPoint& at)> AskMenu; // at a place on the screen
    };

    ChartTouch(QWidget& chart, Hands hands); // it belongs to the chart

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void take(QTouchEvent& event);
    void take(QGestureEvent& event);

    QWidget& chart_;
    Hands hands_;
    bool hasSecond_ = false; // since the first finger came down there was another
    QTimer resting_;         // ends when the only finger has rested long enough
    QPointF restsAt_;        // on the screen
};

} // namespace kestrane

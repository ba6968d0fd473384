// A widget that draws figures. Tab reaches it, it shows that it has the focus, and a screen reader hears it as a chart
// with the name and the description that its owner gives it.
#pragma once

#include <QWidget>

class QPainter;

namespace kestrane {

class DrawnFigure : public QWidget {
public:
    explicit DrawnFigure(QWidget* parent = nullptr);

protected:
    void paintEvent(QPaintEvent* event) final;
    virtual void draw(QPainter& painter) = 0;
};

} // namespace kestrane

#include "dialogs/LinePreview.h"

#include <QPainter>
#include <QPolygonF>

namespace kestrane {

namespace {

constexpr double kPixelsPerTwentieth = 96.0 / 72 / 20;

} // namespace

void LinePreview::SetLineWidth(int twentieths) {
    twentieths_ = twentieths;
    update();
}

QSize LinePreview::sizeHint() const {
    return {fontMetrics().averageCharWidth() * 12, fontMetrics().height() * 2};
}

void LinePreview::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(palette().color(QPalette::Mid));
    painter.setBrush(palette().color(QPalette::Base));
    painter.drawRoundedRect(QRectF(rect()).adjusted(0.5, 0.5, -0.5, -0.5), 3, 3);

    // The line is a piece of a log: its points are fractions of the width and height.
    constexpr QPointF kLevels[] = {{0.06, 0.70}, {0.22, 0.55}, {0.36, 0.66}, {0.52, 0.28}, {0.68, 0.46}, {0.94, 0.36}};
    QPolygonF line;
    for (const QPointF& level : kLevels)
        line << QPointF(level.x() * width(), level.y() * height());
    QPen pen(palette().color(isEnabled() ? QPalette::Active : QPalette::Disabled, QPalette::Highlight));
    pen.setWidthF(twentieths_ * kPixelsPerTwentieth);
    pen.setJoinStyle(Qt::RoundJoin);
    pen.setCapStyle(Qt::RoundCap);
    painter.setPen(pen);
    painter.drawPolyline(line);
}

} // namespace kestrane

#include "charts/LevelLines.h"

#include <vector>

namespace kestrane {

namespace {

constexpr double kWidth = 1.5;
constexpr int kGap = 4; // pixels between the label and the edge, and above the line

} // namespace

void LevelLines::draw(QCPPainter* painter) {
    const QRectF area = values_->axisRect()->rect();
    painter->setFont(looks_.font(content_.data.AxisFont));
    const QFontMetricsF metrics(painter->font());
    std::vector<QRectF> labels; // that stand already; one that would lie over another goes beside it
    for (const ChartLine& line : content_.data.Lines) {
        if (!values_->range().contains(line.Value)) continue;
        const double y = values_->coordToPixel(line.Value);
        painter->setPen(QPen(looks_.Emphasis, kWidth, Qt::DashLine, Qt::FlatCap));
        painter->drawLine(QPointF(area.left(), y), QPointF(area.right(), y));
        const QString text = QString::fromStdString(line.Label);
        QRectF box(area.left() + kGap, y - kGap - metrics.ascent(), metrics.horizontalAdvance(text), metrics.height());
        for (const QRectF& label : labels)
            if (label.intersects(box)) box.moveLeft(label.right() + 2 * kGap);
        labels.push_back(box);
        painter->setPen(looks_.Emphasis);
        painter->drawText(QPointF(box.left(), y - kGap), text);
    }
}

} // namespace kestrane

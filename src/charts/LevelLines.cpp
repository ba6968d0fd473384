#include "charts/LevelLines.h"

namespace kestrane {

namespace {

constexpr double kWidth = 1.5;
constexpr int kGap = 4; // pixels between the label and the edge, and above the line

} // namespace

void LevelLines::draw(QCPPainter* painter) {
    const QRectF area = values_->axisRect()->rect();
    painter->setFont(looks_.font(content_.data.AxisFont));
    for (const ChartLine& line : content_.data.Lines) {
        if (!values_->range().contains(line.Value)) continue;
        const double y = values_->coordToPixel(line.Value);
        painter->setPen(QPen(looks_.Emphasis, kWidth, Qt::DashLine, Qt::FlatCap));
        painter->drawLine(QPointF(area.left(), y), QPointF(area.right(), y));
        painter->setPen(looks_.Emphasis);
        painter->drawText(QPointF(area.left() + kGap, y - kGap), QString::fromStdString(line.Label));
    }
}

} // namespace kestrane

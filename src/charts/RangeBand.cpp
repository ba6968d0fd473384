#include "charts/RangeBand.h"

namespace kestrane {

namespace {

constexpr int kTint = 34; // opacity
constexpr double kLine = 1.5;
constexpr double kHandle = 5;

} // namespace

void RangeBand::show(const std::optional<Span>& span) {
    if (span == span_) return;
    span_ = span;
    layer()->replot();
}

void RangeBand::draw(QCPPainter* painter) {
    if (!span_) return;
    const QRectF area = rows_->axisRect()->rect();
    const double left = rows_->coordToPixel(static_cast<double>(span_->first) - 0.5);
    const double right = rows_->coordToPixel(static_cast<double>(span_->last) + 0.5);
    painter->save();
    painter->setClipRect(area);
    QColor tint = looks_.Text;
    tint.setAlpha(kTint);
    painter->fillRect(QRectF(QPointF(left, area.top()), QPointF(right, area.bottom())), tint);
    painter->setPen(QPen(looks_.Text, kLine));
    for (const double x : {left, right})
        painter->drawLine(QPointF(x, area.top()), QPointF(x, area.bottom()));
    painter->setPen(Qt::NoPen);
    painter->setBrush(looks_.Text);
    const double x = span_->isFirstMoving ? left : right;
    painter->drawPolygon(
        QPolygonF({{x - kHandle, area.top()}, {x + kHandle, area.top()}, {x, area.top() + 2 * kHandle}}));
    painter->restore();
}

} // namespace kestrane

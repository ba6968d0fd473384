#include "charts/LevelLines.h"

#include <utility>
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
    std::vector<std::pair<QRectF, QString>> labels; // one that would lie over another goes beside it
    painter->setPen(QPen(looks_.Emphasis, kWidth, Qt::DashLine, Qt::FlatCap));
    for (const ChartLine& line : content_.data.Lines) {
        if (!values_->range().contains(line.Value)) continue;
        const double y = values_->coordToPixel(line.Value);
        painter->drawLine(QPointF(area.left(), y), QPointF(area.right(), y));
        const QString text = QString::fromStdString(line.Label);
        QRectF box(area.left() + kGap, y - kGap - metrics.ascent(), metrics.horizontalAdvance(text), metrics.height());
        for (const auto& [label, other] : labels)
            if (label.intersects(box)) box.moveLeft(label.right() + 2 * kGap);
        labels.emplace_back(box, text);
    }
    painter->setPen(looks_.Emphasis);
    for (const auto& [box, text] : labels) {
        painter->fillRect(box, looks_.Background); // over the next line
        painter->drawText(QPointF(box.left(), box.top() + metrics.ascent()), text);
    }
}

} // namespace kestrane

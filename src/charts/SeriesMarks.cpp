#include "charts/SeriesMarks.h"

#include <algorithm>
#include <cmath>

namespace kestrane {

namespace {

constexpr double kSize = 3;     // points, half the width of a shape
constexpr double kBetween = 96; // pixels between two shapes of a line
constexpr double kHatch = 5;    // pixels between the lines of a pattern
constexpr double kHatchPen = 1.2;
constexpr double kOutline = 1.4;

QPolygonF shapeOf(std::size_t kind, const QPointF& at, double size) {
    switch (kind) {
    case 0: // square
        return QRectF(at - QPointF(size, size), QSizeF(2 * size, 2 * size));
    case 1: // triangle that stands on its side
        return QPolygonF(
            {at + QPointF(0, -size * 1.2), at + QPointF(size * 1.2, size), at + QPointF(-size * 1.2, size)});
    case 2: // square that stands on its tip
        return QPolygonF({at + QPointF(0, -size * 1.4), at + QPointF(size * 1.4, 0), at + QPointF(0, size * 1.4),
                          at + QPointF(-size * 1.4, 0)});
    default: // triangle that stands on its tip
        return QPolygonF(
            {at + QPointF(0, size * 1.2), at + QPointF(size * 1.2, -size), at + QPointF(-size * 1.2, -size)});
    }
}

struct Hatch {
    bool IsRising, IsFalling, IsLevel, IsUpright;
};

constexpr Hatch kHatches[] = {{true, false, false, false}, {false, true, false, false}, {false, false, true, false},
                              {true, true, false, false},  {false, false, false, true}, {false, false, true, true}};

} // namespace

std::optional<SeriesMarks> SeriesMarks::of(const ChartContent& content, std::size_t drawn, const ChartLooks& looks) {
    if (!content.data.HasMarks || content.isReference(drawn)) return std::nullopt;
    SeriesMarks marks;
    marks.own_ = drawn - content.data.ReferenceSeries;
    marks.count_ = content.series.size() - content.data.ReferenceSeries;
    marks.size_ = kSize * looks.PixelsPerPoint;
    marks.colour_ = looks.color(content, drawn);
    marks.ground_ = looks.Background;
    return marks;
}

// Circle, square, triangle, ... filled, then the same hollow.
void SeriesMarks::drawShape(QPainter& painter, const QPointF& at) const {
    constexpr std::size_t kShapes = 5;
    const std::size_t kind = own_ % kShapes;
    const bool isHollow = own_ / kShapes % 2 == 1;
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(QPen(colour_, kOutline));
    painter.setBrush(isHollow ? ground_ : colour_);
    kind == 0 ? painter.drawEllipse(at, size_, size_) : painter.drawPolygon(shapeOf(kind - 1, at, size_));
    painter.restore();
}

// The first series is filled, the others are hatched.
void SeriesMarks::fill(QPainter& painter, const QRectF& bar) const {
    if (own_ == 0) return painter.fillRect(bar, colour_);
    const Hatch& hatch = kHatches[(own_ - 1) % std::size(kHatches)];
    painter.save();
    painter.fillRect(bar, ground_);
    painter.setClipRect(bar, Qt::IntersectClip);
    painter.setPen(QPen(colour_, kHatchPen));
    const double span = std::max(bar.width(), bar.height());
    const int lines = static_cast<int>(std::ceil(2 * span / kHatch - 0.5));
    for (int line = 0; line < lines; ++line) {
        const double at = kHatch * (line + 0.5);
        const QPointF foot = bar.bottomLeft();
        if (hatch.IsRising) painter.drawLine(bar.topLeft() + QPointF(0, at), bar.topLeft() + QPointF(at, 0));
        if (hatch.IsFalling) painter.drawLine(foot - QPointF(0, at), foot + QPointF(at, 0));
        if (hatch.IsLevel) painter.drawLine(foot - QPointF(0, at), foot - QPointF(-bar.width(), at));
        if (hatch.IsUpright) painter.drawLine(bar.topLeft() + QPointF(at, 0), foot + QPointF(at, 0));
    }
    painter.setBrush(Qt::NoBrush);
    painter.drawRect(bar.adjusted(0, 0, -1, -1));
    painter.restore();
}

std::size_t SeriesMarks::RowsBetween(double pixelsOfRow) const {
    return static_cast<std::size_t>(std::max(1.0, std::ceil(kBetween / std::max(pixelsOfRow, 1e-6))));
}

std::size_t SeriesMarks::FirstRow(std::size_t rowsBetween) const {
    return rowsBetween * own_ / std::max<std::size_t>(count_, 1);
}

} // namespace kestrane

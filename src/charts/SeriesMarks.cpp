#include "charts/SeriesMarks.h"

#include <QPainterPath>

#include <algorithm>
#include <cmath>
#include <limits>

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
    if (!content.data.HasMarks || content.hasSeriesAsRows() || content.isReference(drawn)) return std::nullopt;
    SeriesMarks marks;
    marks.own_ = drawn - content.data.ReferenceSeries;
    marks.count_ = content.series.size() - content.data.ReferenceSeries;
    marks.size_ = kSize * looks.PixelsPerPoint;
    marks.colour_ = looks.color(content, drawn);
    marks.ground_ = looks.Background;
    return marks;
}

// Circle, square, triangle, ... filled, then the same hollow; each with an edge of the ground around it, which sets it
// off from what it lies on.
void SeriesMarks::drawShape(QPainter& painter, const QPointF& at) const {
    constexpr std::size_t kShapes = 5;
    const std::size_t kind = own_ % kShapes;
    const bool isHollow = own_ / kShapes % 2 == 1;
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setBrush(isHollow ? ground_ : colour_);
    for (const QPen& edge : {QPen(ground_, 3 * kOutline), QPen(colour_, kOutline)}) {
        painter.setPen(edge);
        kind == 0 ? painter.drawEllipse(at, size_, size_) : painter.drawPolygon(shapeOf(kind - 1, at, size_));
    }
    painter.restore();
}

// The first series is filled, the others are hatched.
void SeriesMarks::fill(QPainter& painter, const QRectF& bar) const {
    if (own_ == 0) return painter.fillRect(bar, colour_);
    painter.save();
    painter.fillRect(bar, ground_);
    painter.setClipRect(bar, Qt::IntersectClip);
    hatch(painter);
    painter.drawRect(bar.adjusted(0, 0, -1, -1));
    painter.restore();
}

void SeriesMarks::fill(QPainter& painter, const QPolygonF& face) const {
    painter.save();
    painter.setPen(QPen(colour_, kHatchPen));
    painter.setBrush(own_ == 0 ? colour_ : ground_);
    painter.drawPolygon(face);
    if (own_ != 0) {
        QPainterPath edge;
        edge.addPolygon(face);
        painter.setClipPath(edge, Qt::IntersectClip);
        hatch(painter);
    }
    painter.restore();
}

// Draws the lines where the painter's clip lets them be seen. They lie on one grid, so that they stay where they are
// whatever part of a bar is in view.
void SeriesMarks::hatch(QPainter& painter) const {
    const Hatch& kind = kHatches[(own_ - 1) % std::size(kHatches)];
    const QRectF seen = painter.clipBoundingRect();
    painter.setPen(QPen(colour_, kHatchPen));
    painter.setBrush(Qt::NoBrush);
    const double left = seen.left();
    const double right = seen.right();
    const double top = seen.top();
    const double bottom = seen.bottom();
    const auto drawLines = [&painter](bool isDrawn, double from, double to, const auto& lineAt) {
        const int last = isDrawn ? static_cast<int>(std::floor(to / kHatch)) : std::numeric_limits<int>::min();
        for (int line = static_cast<int>(std::ceil(from / kHatch)); line <= last; ++line)
            painter.drawLine(lineAt(kHatch * line));
    };
    drawLines(kind.IsRising, left + top, right + bottom,
              [&](double sum) { return QLineF(sum - bottom, bottom, sum - top, top); });
    drawLines(kind.IsFalling, left - bottom, right - top,
              [&](double difference) { return QLineF(difference + top, top, difference + bottom, bottom); });
    drawLines(kind.IsLevel, top, bottom, [&](double y) { return QLineF(left, y, right, y); });
    drawLines(kind.IsUpright, left, right, [&](double x) { return QLineF(x, top, x, bottom); });
}

std::size_t SeriesMarks::RowsBetween(double pixelsOfRow) const {
    return static_cast<std::size_t>(std::max(1.0, std::ceil(kBetween / std::max(pixelsOfRow, 1e-6))));
}

std::size_t SeriesMarks::FirstRow(std::size_t rowsBetween) const {
    return rowsBetween * own_ / std::max<std::size_t>(count_, 1);
}

} // namespace kestrane

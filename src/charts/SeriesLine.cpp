#include "charts/SeriesLine.h"

#include <algorithm>
#include <cmath>

namespace kestrane {

namespace {

constexpr double kVectorColumns = 2; // columns per pixel on paper
constexpr double kLabelGap = 4;
constexpr double kDotRadius = 1.5; // points; a dot of a millimetre is seen on paper
constexpr double kDotOfWidth = 3;  // line widths

} // namespace

SeriesLine::SeriesLine(QCPAxis* rows, QCPAxis* values, const ChartContent& content, std::size_t drawn,
                       const ChartLooks& looks) :
    SeriesPlot(rows, values, content, drawn),
    labelColor_(looks.QuietText),
    background_(looks.Background),
    labelFont_(looks.font(content.data.AxisFont)) {
    setPen(looks.linePen(content, drawn));
    dotRadius_ = std::max(kDotRadius * looks.PixelsPerPoint, kDotOfWidth / 2 * mPen.widthF());
    marks_ = SeriesMarks::of(content, drawn, looks);
}

void SeriesLine::draw(QCPPainter* painter) {
    const QCPRange range = mKeyAxis->range();
    const auto count = static_cast<double>(values().size());
    const auto begin = static_cast<std::size_t>(std::clamp(std::floor(range.lower), 0.0, count));
    const auto end = static_cast<std::size_t>(std::clamp(std::ceil(range.upper) + 1, 0.0, count));
    const bool isVector = painter->modes().testFlag(QCPPainter::pmVectorized);
    const double perPixel = isVector ? kVectorColumns : painter->device()->devicePixelRatioF();
    if (static_cast<double>(end - begin) > mKeyAxis->axisRect()->width() * perPixel) {
        drawColumns(painter, perPixel);
    } else {
        drawRows(painter, begin, end);
    }
    if (marks_) drawMarks(painter, begin, end);
    if (content_.isReference(drawn_)) drawLabel(painter);
}

void SeriesLine::drawMarks(QCPPainter* painter, std::size_t begin, std::size_t end) const {
    const std::size_t step = marks_->RowsBetween(mKeyAxis->axisRect()->width() / mKeyAxis->range().size());
    const std::size_t first = marks_->FirstRow(step);
    const std::size_t skipped = begin > first ? (begin - first + step - 1) / step : 0;
    for (std::size_t row = first + skipped * step; row < end; row += step)
        if (const float value = values()[row]; !isNullValue(value))
            marks_->drawShape(*painter, coordsToPixels(static_cast<double>(row), static_cast<double>(value)));
}

void SeriesLine::drawRows(QCPPainter* painter, std::size_t begin, std::size_t end) const {
    applyDefaultAntialiasingHint(painter);
    painter->setPen(mPen);
    QPolygonF run;
    for (std::size_t row = begin; row < end; ++row) {
        const float value = values()[row];
        if (!isNullValue(value)) {
            run.append(coordsToPixels(static_cast<double>(row), static_cast<double>(value)));
            continue;
        }
        drawRun(painter, run);
        run.clear();
    }
    drawRun(painter, run);
}

void SeriesLine::drawRun(QCPPainter* painter, const QPolygonF& run) const {
    if (run.size() > 1) {
        painter->drawPolyline(run);
    } else if (run.size() == 1) { // a value that has no neighbour to be joined to
        painter->save();
        painter->setPen(Qt::NoPen);
        painter->setBrush(mPen.color());
        painter->drawEllipse(run.front(), dotRadius_, dotRadius_);
        painter->restore();
    }
}

// Draws the columns from the left edge. Each column also covers the last value before it, which joins the columns.
void SeriesLine::drawColumns(QCPPainter* painter, double perPixel) const {
    const QRect area = mKeyAxis->axisRect()->rect();
    const auto columns = static_cast<int>(area.width() * perPixel);
    if (columns <= 0) return;
    const QCPRange range = mKeyAxis->range();
    const double rowsPerColumn = range.size() / columns;
    const auto rowAt = [&](int column) {
        const double row = std::ceil(range.lower + column * rowsPerColumn);
        return static_cast<std::size_t>(std::clamp(row, 0.0, static_cast<double>(values().size())));
    };
    const double pen = std::max(1.0, std::round(mPen.widthF() * perPixel)); // the width of the pen in columns
    std::vector<QRectF> rects;
    rects.reserve(static_cast<std::size_t>(columns));
    std::size_t begin = rowAt(0);
    for (int column = 0; column < columns; ++column) {
        const std::size_t end = rowAt(column + 1);
        const bool isJoined = begin > 0 && begin < end && !isNullValue(values()[begin]);
        const Extent extent = content_.extents[drawn_].of(isJoined ? begin - 1 : begin, end);
        begin = end;
        if (extent.isEmpty()) continue;
        const auto pixel = [&](float value) {
            return std::round(mValueAxis->coordToPixel(static_cast<double>(value)) * perPixel);
        };
        const double top = pixel(extent.Highest) - std::floor(pen / 2);
        const double height = pixel(extent.Lowest) - pixel(extent.Highest) + pen;
        const double left = area.left() * perPixel + column - std::floor(pen / 2);
        rects.emplace_back(left / perPixel, top / perPixel, pen / perPixel, height / perPixel);
    }
    painter->setAntialiasing(false);
    painter->setPen(Qt::NoPen);
    painter->setBrush(mPen.color());
    painter->drawRects(rects.data(), static_cast<int>(rects.size()));
}

// Draws the label at the right end of the line. When the lines are too close together, only every second or fourth has
// one.
void SeriesLine::drawLabel(QCPPainter* painter) const {
    const auto yOf = [&](std::size_t drawn) {
        const float value = content_.series[drawn]->Values.back();
        return mValueAxis->coordToPixel(static_cast<double>(value));
    };
    if (values().empty() || isNullValue(values().back()) || content_.data.ReferenceSeries < 2) return;
    const QFontMetrics metrics(labelFont_);
    const double between = std::abs(yOf(1) - yOf(0));
    std::size_t every = 1;
    while (between * static_cast<double>(every) < metrics.height() && every < content_.data.ReferenceSeries)
        every *= 2;
    if (drawn_ % every != 0) return;
    const double behind = mKeyAxis->coordToPixel(static_cast<double>(values().size()) - 1) + kLabelGap;
    const int width = metrics.horizontalAdvance(mName);
    const double last = mKeyAxis->axisRect()->right() - width - 1.0;
    const QRectF place(std::min(behind, last), yOf(drawn_) - metrics.height() / 2.0, width, metrics.height());
    if (last < behind) painter->fillRect(place, background_); // on the end of the line, which it interrupts
    painter->setFont(labelFont_);
    painter->setPen(QPen(labelColor_));
    painter->drawText(place, Qt::AlignVCenter | Qt::AlignLeft | Qt::TextDontClip, mName);
}

} // namespace kestrane

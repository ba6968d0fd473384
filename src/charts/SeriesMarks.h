// Shapes on lines and patterns in bars, by which the series of a chart differ without their colours, as in print in
// black and white.
#pragma once

#include "charts/ChartContent.h"
#include "charts/ChartLooks.h"

#include <QPainter>

#include <optional>

namespace kestrane {

// The marks of one series: its place among them and its colours.
class SeriesMarks {
public:
    // Nothing when the chart has no marks, or its labels tell the series apart: it is a curve to compare with, or
    // stands like a row.
    static std::optional<SeriesMarks> of(const ChartContent& content, std::size_t drawn, const ChartLooks& looks);

    // Draws the shape of a line around a point, in pixels.
    void drawShape(QPainter& painter, const QPointF& at) const;

    // Fills a bar, or the sample of one; the face of a block. Only what the painter's clip shows is hatched, however
    // large it is.
    void fill(QPainter& painter, const QRectF& bar) const;
    void fill(QPainter& painter, const QPolygonF& face) const;

    // The rows with a shape are this far apart, and at least one row; the shapes of the series stand beside each other.
    std::size_t RowsBetween(double pixelsOfRow) const;
    std::size_t FirstRow(std::size_t rowsBetween) const;

    const QColor& Ground() const { return ground_; }

private:
    void hatch(QPainter& painter) const;

    std::size_t own_ = 0;   // among the series with marks
    std::size_t count_ = 1; // of these series
    double size_ = 0;       // half the width of a shape, pixels
    QColor colour_, ground_;
};

} // namespace kestrane

// A series as a line over its rows, interrupted where values are missing; a value between two missing ones is a dot.
// When there are more rows than pixel columns, each column is drawn from its lowest to its highest value, so that no
// extreme is lost and the time depends only on the number of columns.
#pragma once

#include "charts/ChartLooks.h"
#include "charts/SeriesMarks.h"
#include "charts/SeriesPlot.h"

namespace kestrane {

class SeriesLine : public SeriesPlot {
public:
    SeriesLine(QCPAxis* rows, QCPAxis* values, const ChartContent& content, std::size_t drawn, const ChartLooks& looks);

protected:
    void draw(QCPPainter* painter) override;

private:
    void drawRows(QCPPainter* painter, std::size_t begin, std::size_t end) const;
    void drawRun(QCPPainter* painter, const QPolygonF& run) const;
    void drawColumns(QCPPainter* painter, double perPixel) const;
    void drawMarks(QCPPainter* painter, std::size_t begin, std::size_t end) const;
    void drawLabel(QCPPainter* painter) const;

    QColor labelColor_, background_;
    QFont labelFont_;
    double dotRadius_ = 0; // pixels
    std::optional<SeriesMarks> marks_;
};

} // namespace kestrane

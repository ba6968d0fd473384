// A series as a line over its rows, broken where values are missing; a value between two missing ones is a dot. Where
// there are more rows than pixel columns, each column is drawn from its lowest to its highest value, so that no row is
// lost and the cost is that of the columns.
#pragma once

#include "charts/ChartLooks.h"
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
    void drawLabel(QCPPainter* painter) const;

    QColor labelColor_;
    QFont labelFont_;
};

} // namespace kestrane

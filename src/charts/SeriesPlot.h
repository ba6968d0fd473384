// What the plottables of a series have in common: the index of the series in the content. They cannot be selected.
#pragma once

#include "charts/ChartContent.h"

#include <qcustomplot.h>

namespace kestrane {

class SeriesPlot : public QCPAbstractPlottable {
public:
    SeriesPlot(QCPAxis* rows, QCPAxis* values, const ChartContent& content, std::size_t drawn);

    double selectTest(const QPointF&, bool, QVariant*) const override { return -1; }

    QCPRange getKeyRange(bool& foundRange, QCP::SignDomain) const override;
    QCPRange getValueRange(bool& foundRange, QCP::SignDomain, const QCPRange&) const override;

protected:
    void drawLegendIcon(QCPPainter*, const QRectF&) const override {}

    const std::vector<float>& values() const { return content_.series[drawn_]->Values; }

    const ChartContent& content_;
    const std::size_t drawn_;
};

} // namespace kestrane

#include "charts/SeriesPlot.h"

namespace kestrane {

SeriesPlot::SeriesPlot(QCPAxis* rows, QCPAxis* values, const ChartContent& content, std::size_t drawn) :
    QCPAbstractPlottable(rows, values), content_(content), drawn_(drawn) {
    setSelectable(QCP::stNone);
    setName(QString::fromStdString(content.series[drawn]->Label));
}

QCPRange SeriesPlot::getKeyRange(bool& foundRange, QCP::SignDomain) const {
    foundRange = content_.data.RowCount > 0;
    return {0, static_cast<double>(content_.data.RowCount) - 1};
}

QCPRange SeriesPlot::getValueRange(bool& foundRange, QCP::SignDomain, const QCPRange&) const {
    const Extent extent = content_.extents[drawn_].ofAll();
    foundRange = !extent.isEmpty();
    return foundRange ? QCPRange(extent.Lowest, extent.Highest) : QCPRange();
}

} // namespace kestrane

// A series as bars from 0, beside the bars of the other series of the same row. A missing value has no bar. The figure
// is drawn above its bar where there is room.
#pragma once

#include "charts/ChartLooks.h"
#include "charts/SeriesMarks.h"
#include "charts/SeriesPlot.h"
#include "platform/Locale.h"

namespace kestrane {

class SeriesBars : public SeriesPlot {
public:
    SeriesBars(QCPAxis* rows, QCPAxis* values, const ChartContent& content, std::size_t drawn, const ChartLooks& looks,
               const Locale& locale);

protected:
    void draw(QCPPainter* painter) override;

private:
    void drawFigure(QCPPainter* painter, const QRectF& bar, double pitch, float value) const;

    QColor textColor_;
    QFont font_;
    Locale locale_;
    std::optional<SeriesMarks> marks_;
};

} // namespace kestrane

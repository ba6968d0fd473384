#include "charts/ChartPage.h"

#include "charts/ChartPlot.h"

#include <QPicture>

namespace kestrane {

namespace {

constexpr double kDots = 96; // an inch: the unit of a page's layout

QCPRange rangeOf(const ChartRange& range) {
    return {range.Minimum, range.Maximum};
}

} // namespace

void drawChart(QCPPainter& painter, const QSize& size, const ChartOnPage& chart, const Locale& locale) {
    ChartPlot page(locale, nullptr);
    page.setContent(std::make_shared<ChartContent>(*chart.Data), ChartLooks::ofPaper());
    page.showParts(chart.HasLegend, chart.HasFootnote);
    if (chart.Part && page.hasAxes())
        page.setView({rangeOf(chart.Part->Rows), rangeOf(chart.Part->Primary), rangeOf(chart.Part->Secondary)});
    page.toPainter(&painter, size.width(), size.height());
}

// Through a recorded picture, since the chart draws with a painter of its own kind. Playing it turns its dots an inch
// into those of the device.
void drawChart(QPainter& painter, const QRectF& area, double unitsPerInch, const ChartOnPage& chart,
               const Locale& locale) {
    QPicture recorded;
    const double scale = unitsPerInch / kDots;
    {
        QCPPainter recorder(&recorded);
        recorder.setMode(QCPPainter::pmVectorized);
        drawChart(recorder, (area.size() / scale).toSize(), chart, locale);
    }
    painter.save();
    painter.translate(area.topLeft());
    painter.scale(scale * recorded.logicalDpiX() / painter.device()->logicalDpiX(),
                  scale * recorded.logicalDpiY() / painter.device()->logicalDpiY());
    painter.drawPicture(0, 0, recorded);
    painter.restore();
}

} // namespace kestrane

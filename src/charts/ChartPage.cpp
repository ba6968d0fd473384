#include "charts/ChartPage.h"

#include "charts/ChartPlot.h"
#include "views/Picture.h"

#include <QPicture>

namespace kestrane {

namespace {

QCPRange rangeOf(const ChartRange& range) {
    return {range.Minimum, range.Maximum};
}

void fill(ChartPlot& page, const ChartOnPage& chart) {
    page.setContent(std::make_shared<ChartContent>(*chart.Data), ChartLooks::ofPaper());
    page.showParts(chart.HasLegend, chart.HasFootnote);
    page.keepLegendWhole();
}

} // namespace

double plotHeight(const QSize& size, const ChartOnPage& chart) {
    ChartPlot page({}, nullptr);
    fill(page, chart);
    return page.plotHeight(size);
}

bool cutsFootnote(const QSize& size, const ChartOnPage& chart) {
    ChartPlot page({}, nullptr);
    fill(page, chart);
    return page.cutsFootnote(size);
}

void drawChart(QCPPainter& painter, const QSize& size, const ChartOnPage& chart, const Locale& locale) {
    ChartPlot page(locale, nullptr);
    fill(page, chart);
    if (chart.Part && page.hasAxes())
        page.setView({rangeOf(chart.Part->Rows), rangeOf(chart.Part->Primary), rangeOf(chart.Part->Secondary)});
    page.toPainter(&painter, size.width(), size.height());
}

// The chart is recorded as a picture first, because it draws with a painter of its own kind. Playing the picture scales
// it from its dots per inch to the units of the device.
void drawChart(QPainter& painter, const QRectF& area, double unitsPerInch, const ChartOnPage& chart,
               const Locale& locale) {
    QPicture recorded;
    const double scale = unitsPerInch / kDotsOfInch;
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

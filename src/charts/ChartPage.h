// Draws a chart on a page, in colours for paper and with fonts in their true size, with a plot of its own.
#pragma once

#include "platform/Locale.h"
#include "views/ChartOnPage.h"

#include <QRectF>

class QCPPainter;
class QPainter;
class QSize;

namespace kestrane {

// The height that the plot of the chart takes when the chart is drawn in this size. Both are in dots.
double plotHeight(const QSize& size, const ChartOnPage& chart);

// Whether a chart in a box of this size shows its footnote in part only.
bool cutsFootnote(const QSize& size, const ChartOnPage& chart);

// Fills the whole device of the painter. size is in units of which 96 are an inch.
void drawChart(QCPPainter& painter, const QSize& size, const ChartOnPage& chart, const Locale& locale);

// Draws into a rectangle, in the units of the painter.
void drawChart(QPainter& painter, const QRectF& area, double unitsPerInch, const ChartOnPage& chart,
               const Locale& locale);

} // namespace kestrane

// A chart drawn on a page, in the colours of paper and with fonts in their true size there, by a plot of its own.
#pragma once

#include "platform/Locale.h"
#include "views/ChartOnPage.h"

#include <QRectF>

class QCPPainter;
class QPainter;
class QSize;

namespace kestrane {

// On the whole of a painter's device, size in units of which 96 are an inch.
void drawChart(QCPPainter& painter, const QSize& size, const ChartOnPage& chart, const Locale& locale);

// Into a rectangle, in units of the painter.
void drawChart(QPainter& painter, const QRectF& area, double unitsPerInch, const ChartOnPage& chart,
               const Locale& locale);

} // namespace kestrane

// The colours, pens and fonts of charts, for a palette or for paper. The colours of series can be told apart by
// colour-blind people; texts and lines have the contrast to their ground that platform/Contrast.h asks for.
#pragma once

#include "charts/ChartContent.h"

#include <QColor>
#include <QFont>
#include <QPalette>
#include <QPen>

namespace kestrane {

struct ChartLooks {
    QColor Background, Text, QuietText, Frame, Grid, Excluded, Warning, Reference, Emphasis;
    bool IsDark = false;
    double PixelsPerPoint = 96.0 / 72;

    static ChartLooks ofPaper();
    static ChartLooks ofScreen(const QPalette& palette, double dotsPerInch);

    // A colour that the data give is darkened or lightened as far as needed to be readable on the background.
    QColor titleColor(const ChartData& chart) const;
    QColor axisTitleColor(const ChartData& chart) const;

    // Sizes are in whole pixels, so that a chart has the same layout on every device.
    QFont font(const clsFont& font) const;

    QColor color(const ChartContent& content, std::size_t drawn) const;
    QPen linePen(const ChartContent& content, std::size_t drawn) const;

private:
    QColor readable(const QColor& colour, double leastContrast) const;
    void makeReadable();
};

} // namespace kestrane

// The levels of bands over rows as colours. A pixel column of several rows has the colour of the highest level in each
// band, so that no loud moment is lost; the time that drawing takes depends on the number of pixels alone.
#pragma once

#include "charts/ChartContent.h"
#include "charts/ChartLooks.h"

#include <qcustomplot.h>

namespace kestrane {

class LevelMapPlot : public QCPLayerable {
public:
    // The content must have a map. Its rows are on the bottom axis, its bands on the left one.
    LevelMapPlot(const QCPAxisRect& area, const ChartContent& content, const ChartLooks& looks);

protected:
    void applyDefaultAntialiasingHint(QCPPainter* painter) const override { painter->setAntialiasing(false); }

    void draw(QCPPainter* painter) override;

private:
    std::vector<std::vector<QRgb>> columnsOfBands(int columns) const;

    QCPAxis* rows_;
    QCPAxis* bands_;
    const ChartContent& content_;
    const ChartLooks& looks_;
    std::vector<QRgb> colours_; // of the scale, from its lowest level up
};

// The scale of the colours beside a map, with its levels.
QCPColorGradient levelGradient();

} // namespace kestrane

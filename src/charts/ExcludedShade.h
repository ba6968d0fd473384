// The faint shade and the hatching behind rows that are left out of calculations. The hatching can be told from a line
// of the grid in print without colours and on dark screens. Over a map of levels they are drawn on top, and what is
// below shines through.
#pragma once

#include "charts/ChartContent.h"
#include "charts/ChartLooks.h"

#include <qcustomplot.h>

namespace kestrane {

// The excluded rows within a range, as spans that reach from edge to edge of their rows (row r from r - 0.5 to r +
// 0.5). Spans less than a pixel apart are joined; pixels is the width of the range.
std::vector<QCPRange> excludedSpans(const ChartData& chart, const QCPRange& rows, double pixels);

class ExcludedShade : public QCPLayerable {
public:
    ExcludedShade(QCPAxis* rows, const ChartContent& content, const ChartLooks& looks);

protected:
    void applyDefaultAntialiasingHint(QCPPainter* painter) const override { painter->setAntialiasing(false); }

    void draw(QCPPainter* painter) override;

private:
    QCPAxis* rows_;
    const ChartContent& content_;
    const ChartLooks& looks_;
};

} // namespace kestrane

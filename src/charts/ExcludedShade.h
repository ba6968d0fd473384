// The quiet shade behind rows that are left out of calculations.
#pragma once

#include "charts/ChartContent.h"

#include <qcustomplot.h>

namespace kestrane {

class ExcludedShade : public QCPLayerable {
public:
    ExcludedShade(QCPAxis* rows, const ChartContent& content, const QColor& color);

protected:
    void applyDefaultAntialiasingHint(QCPPainter* painter) const override { painter->setAntialiasing(false); }

    void draw(QCPPainter* painter) override;

private:
    QCPAxis* rows_;
    const ChartContent& content_;
    QColor color_;
};

} // namespace kestrane

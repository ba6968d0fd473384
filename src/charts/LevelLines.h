// Lines across a chart at values that the data give, with their labels at the left end.
#pragma once

#include "charts/ChartContent.h"
#include "charts/ChartLooks.h"

#include <qcustomplot.h>

namespace kestrane {

class LevelLines : public QCPLayerable {
public:
    LevelLines(QCPAxis* values, const ChartContent& content, const ChartLooks& looks) :
        QCPLayerable(values->parentPlot(), "grid"), values_(values), content_(content), looks_(looks) {}

protected:
    void applyDefaultAntialiasingHint(QCPPainter* painter) const override { painter->setAntialiasing(false); }

    void draw(QCPPainter* painter) override;

private:
    QCPAxis* values_;
    const ChartContent& content_;
    const ChartLooks& looks_;
};

} // namespace kestrane

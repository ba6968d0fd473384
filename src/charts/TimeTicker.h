// The marks on the time axis of a chart whose rows begin at known times.
#pragma once

#include "charts/ChartContent.h"

#include <qcustomplot.h>

namespace kestrane {

class TimeTicker : public QCPAxisTicker {
public:
    explicit TimeTicker(const ChartContent& content) : content_(content) {}

    void fit(int pixels, const QFontMetrics& metrics); // to an axis of so many pixels

    void generate(const QCPRange& range, const QLocale& locale, QChar formatChar, int precision, QVector<double>& ticks,
                  QVector<double>* subTicks, QVector<QString>* tickLabels) override;

private:
    const ChartContent& content_;
    std::size_t most_ = 1;
};

} // namespace kestrane

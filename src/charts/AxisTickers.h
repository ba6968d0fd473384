// What stands at the axes of a chart: labels of rows, and round numbers.
#pragma once

#include "charts/ChartContent.h"
#include "platform/Locale.h"

#include <qcustomplot.h>

namespace kestrane {

// Rows lie at whole numbers. In the whole view there is a label every DivisionsPerLabel rows and a grid line every
// DivisionsPerTick; in a part of it there are as many.
class CategoryTicker : public QCPAxisTicker {
public:
    explicit CategoryTicker(const ChartContent& content) : content_(content) {}

    // Chooses between labels that lie, labels that stand and leaving some out, for an axis of this many pixels that
    // shows the range. Returns the rotation.
    double fit(const QCPRange& range, int pixels, const QFontMetrics& metrics);

    void generate(const QCPRange& range, const QLocale& locale, QChar formatChar, int precision, QVector<double>& ticks,
                  QVector<double>* subTicks, QVector<QString>* tickLabels) override;

private:
    struct Mark {
        double position;
        std::string label; // may be empty
    };

    std::vector<Mark> marks(const QCPRange& range, std::size_t labelStride) const;

    const ChartContent& content_;
    std::size_t stride_ = 1; // every so many labels is shown
};

class ValueTicker : public QCPAxisTicker {
public:
    explicit ValueTicker(Locale locale) : locale_(std::move(locale)) {}

    // For an axis of this many pixels.
    void fit(int pixels, const QFontMetrics& metrics);

    void generate(const QCPRange& range, const QLocale& locale, QChar formatChar, int precision, QVector<double>& ticks,
                  QVector<double>* subTicks, QVector<QString>* tickLabels) override;

protected:
    double getTickStep(const QCPRange& range) override;
    int getSubTickCount(double tickStep) override;
    QString getTickLabel(double tick, const QLocale& locale, QChar formatChar, int precision) override;

private:
    Locale locale_;
    int decimals_ = 0;
};

// A number of a chart as text, with no more decimals than told.
QString numberText(double value, int decimals, const Locale& locale);

} // namespace kestrane

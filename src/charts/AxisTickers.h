// The marks on the axes of a chart: labels of rows, and round numbers.
#pragma once

#include "charts/ChartContent.h"
#include "platform/Locale.h"

#include <qcustomplot.h>

namespace kestrane {

// Rows are at whole numbers. The whole view has a label every DivisionsPerLabel rows and a grid line every
// DivisionsPerTick; a view of a part has about as many of them.
class CategoryTicker : public QCPAxisTicker {
public:
    explicit CategoryTicker(const ChartContent& content) : content_(content) {}

    // Chooses between horizontal labels, upright labels and leaving some out, for an axis of so many pixels that shows
    // the range. Returns the rotation of the labels in degrees.
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
    std::size_t stride_ = 1; // only every label of this number is shown
};

class ValueTicker : public QCPAxisTicker {
public:
    explicit ValueTicker(Locale locale) : locale_(std::move(locale)) {}

    // Fits the marks to an axis of so many pixels.
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

// The bands of a map of levels, each at its number.
class BandTicker : public QCPAxisTicker {
public:
    explicit BandTicker(const ChartContent& content) : content_(content) {}

    void fit(int pixels, const QFontMetrics& metrics); // to the height of the axis

    void generate(const QCPRange& range, const QLocale& locale, QChar formatChar, int precision, QVector<double>& ticks,
                  QVector<double>* subTicks, QVector<QString>* tickLabels) override;

private:
    const ChartContent& content_;
    double mostLabels_ = 1;
};

// A number of a chart as text with the given number of decimals.
QString numberText(double value, int decimals, const Locale& locale);

} // namespace kestrane

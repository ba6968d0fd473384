#include "charts/AxisTickers.h"

#include "platform/Numbers.h"
#include "views/LevelMap.h"

#include <algorithm>
#include <cmath>

namespace kestrane {

namespace {

constexpr std::size_t kMostLabels = 15;
constexpr int kLabelGap = 10;     // pixels between two labels
constexpr double kStanding = -90; // degrees: the label reads upwards
constexpr double kLittle = 1e-9;
constexpr double kNearly = 1e-6;
constexpr double kLarger = 1.5;       // a multiple of a step that is above the step but not above the next larger one
constexpr double kNearest = 0.75;     // a few more numbers are preferred to half as many
constexpr double kLinesPerTick = 3.2; // lines of text between two numbers of a value axis

std::size_t firstRow(const QCPRange& range) {
    return static_cast<std::size_t>(std::max(0.0, std::ceil(range.lower)));
}

bool endsOn(const QCPRange& range, double step) {
    const auto isMultiple = [&](double end) { return std::abs(std::remainder(end, step)) < step * kNearly; };
    return isMultiple(range.lower) && isMultiple(range.upper);
}

} // namespace

std::vector<CategoryTicker::Mark> CategoryTicker::marks(const QCPRange& range, std::size_t labelStride) const {
    std::vector<Mark> marks;
    if (content_.hasSeriesAsRows()) {
        const auto count = static_cast<double>(content_.series.size());
        for (std::size_t i = 0; i < content_.series.size(); ++i)
            marks.push_back({-0.5 + (static_cast<double>(i) + 0.5) / count, content_.series[i]->Label});
        return marks;
    }
    const std::size_t begin = firstRow(range);
    const auto end = static_cast<std::size_t>(
        std::clamp(std::floor(range.upper) + 1, 0.0, static_cast<double>(content_.data.RowCount)));
    if (begin >= end) return marks;
    const std::size_t enough = (end - begin) / kMostLabels + 1;
    const std::size_t tickStep = std::clamp<std::size_t>(content_.data.DivisionsPerTick, 1, enough);
    const std::size_t labelStep = std::clamp<std::size_t>(content_.data.DivisionsPerLabel, 1, enough) * labelStride;
    for (std::size_t row = (begin + tickStep - 1) / tickStep * tickStep; row < end; row += tickStep)
        marks.push_back({static_cast<double>(row), row % labelStep == 0 ? content_.data.RowLabel(row) : std::string()});
    return marks;
}

double CategoryTicker::fit(const QCPRange& range, int pixels, const QFontMetrics& metrics) {
    stride_ = 1;
    const std::vector<Mark> all = marks(range, 1);
    int widest = 0;
    double last = 0;
    double spacing = range.size();
    std::size_t labels = 0;
    for (const Mark& mark : all) {
        if (mark.label.empty()) continue;
        widest = std::max(widest, metrics.horizontalAdvance(QString::fromStdString(mark.label)));
        if (labels++ > 0) spacing = mark.position - last;
        last = mark.position;
    }
    const double room = pixels * spacing / range.size();
    if (labels < 2 || room >= widest + kLabelGap) return 0;
    const bool isEveryRowNamed = content_.data.DivisionsPerLabel <= 1;
    if (isEveryRowNamed && room >= metrics.height()) return kStanding;
    stride_ = static_cast<std::size_t>(std::ceil((widest + kLabelGap) / std::max(room, 0.01)));
    return 0;
}

void CategoryTicker::generate(const QCPRange& range, const QLocale&, QChar, int, QVector<double>& ticks,
                              QVector<double>* subTicks, QVector<QString>* tickLabels) {
    ticks.clear();
    if (subTicks != nullptr) subTicks->clear();
    if (tickLabels != nullptr) tickLabels->clear();
    for (const Mark& mark : marks(range, stride_)) {
        ticks.append(mark.position);
        if (tickLabels != nullptr) tickLabels->append(QString::fromStdString(mark.label));
    }
}

void ValueTicker::fit(int pixels, const QFontMetrics& metrics) {
    setTickCount(std::max(2, static_cast<int>(pixels / (kLinesPerTick * metrics.height()))));
}

// Generates marks for a range that is slightly larger, so that the mark at 6 times 0.1 is not lost to rounding.
void ValueTicker::generate(const QCPRange& range, const QLocale& locale, QChar formatChar, int precision,
                           QVector<double>& ticks, QVector<double>* subTicks, QVector<QString>* tickLabels) {
    const double little = range.size() * kLittle;
    QCPAxisTicker::generate({range.lower - little, range.upper + little}, locale, formatChar, precision, ticks,
                            subTicks, tickLabels);
}

double ValueTicker::getTickStep(const QCPRange& range) {
    double step = roundStep(kNearest * range.size() / tickCount());
    const double larger = roundStep(step * kLarger);
    if (endsOn(range, larger) && !endsOn(range, step)) step = larger; // from 75 to 95 in steps of 5, not of 2
    decimals_ = std::max(0, static_cast<int>(-std::floor(std::log10(step) + 1e-9)));
    return step;
}

int ValueTicker::getSubTickCount(double) {
    return 0;
}

QString ValueTicker::getTickLabel(double tick, const QLocale&, QChar, int) {
    return numberText(tick, decimals_, locale_);
}

void BandTicker::fit(int pixels, const QFontMetrics& metrics) {
    mostLabels_ = std::max(1.0, static_cast<double>(pixels) / metrics.height());
}

void BandTicker::generate(const QCPRange& range, const QLocale&, QChar, int, QVector<double>& ticks,
                          QVector<double>* subTicks, QVector<QString>* tickLabels) {
    ticks.clear();
    if (subTicks != nullptr) subTicks->clear();
    if (tickLabels != nullptr) tickLabels->clear();
    const LevelMap& map = *content_.data.Map;
    const auto step = static_cast<std::size_t>(std::ceil(range.size() / mostLabels_));
    for (std::size_t band = 0; band < map.BandCount(); band += step) {
        if (!range.contains(static_cast<double>(band))) continue;
        ticks.append(static_cast<double>(band));
        if (tickLabels != nullptr) tickLabels->append(QString::fromStdString(map.BandLabel(band)));
    }
}

QString numberText(double value, int decimals, const Locale& locale) {
    QString text = QString::number(value, 'f', decimals);
    if (text.startsWith('-') && text.toDouble() == 0) text.remove(0, 1);
    return text.replace('.', QString::fromStdString(locale.DecimalSeparator));
}

} // namespace kestrane

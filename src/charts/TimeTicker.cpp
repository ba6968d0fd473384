#include "charts/TimeTicker.h"

#include "views/TimeAxis.h"

#include <algorithm>

namespace kestrane {

namespace {

constexpr int kMostLabels = 15;
constexpr double kGap = 1.3; // the room for a label, as a multiple of its width

} // namespace

void TimeTicker::fit(int pixels, const QFontMetrics& metrics) {
    const double room = kGap * metrics.horizontalAdvance(QStringLiteral("00:00:00"));
    most_ = static_cast<std::size_t>(std::clamp(static_cast<int>(pixels / room), 1, kMostLabels));
}

void TimeTicker::generate(const QCPRange& range, const QLocale&, QChar, int, QVector<double>& ticks,
                          QVector<double>* subTicks, QVector<QString>* tickLabels) {
    ticks.clear();
    if (subTicks != nullptr) subTicks->clear();
    if (tickLabels != nullptr) tickLabels->clear();
    for (const TimeMark& mark : timeMarks(content_.data.RowBegins, range.lower, range.upper, most_)) {
        ticks.append(mark.Position);
        if (tickLabels != nullptr) tickLabels->append(QString::fromStdString(mark.Label));
    }
}

} // namespace kestrane

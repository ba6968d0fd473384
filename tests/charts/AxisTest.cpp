#include "charts/AxisScale.h"
#include "charts/AxisTickers.h"

#include "charts/TestCharts.h"

#include <gtest/gtest.h>

namespace kestrane {
namespace {

TEST(AxisScale, RangesAreRoundAndHoldTheValues) {
    const struct {
        Extent values;
        bool isFromZero;
        ChartRange range;
    } cases[] = {
        {{42, 88}, false, {40, 90}}, {{71.2F, 72.4F}, false, {70, 75}}, {{65, 65}, false, {60, 70}},
        {{3, 96}, false, {0, 100}},  {{61.7F, 118.9F}, true, {0, 130}}, {{0.02F, 0.9F}, true, {0, 1}},
        {{0, 0}, true, {0, 1}},      {{-12, 30}, false, {-15, 35}},     {{-20, -5}, true, {-22, 0}},
        {{40, 90}, false, {35, 95}}, {{0, 54.6F}, true, {0, 60}},       {{}, true, {0, 1}},
    };

    for (const auto& one : cases) {
        const ChartRange range = roundRange(one.values, one.isFromZero);
        EXPECT_NEAR(range.Minimum, one.range.Minimum, 1e-6) << one.values.Lowest << ' ' << one.values.Highest;
        EXPECT_NEAR(range.Maximum, one.range.Maximum, 1e-6) << one.values.Lowest << ' ' << one.values.Highest;
    }
}

struct Ticks {
    QVector<double> positions;
    QVector<QString> labels;
};

Ticks ticksOf(QCPAxisTicker& ticker, const QCPRange& range) {
    Ticks ticks;
    ticker.generate(range, QLocale::c(), 'f', 0, ticks.positions, nullptr, &ticks.labels);
    return ticks;
}

TEST(CategoryTicker, LabelsEverySoManyRowsAndMoreOfThemWhenZoomed) {
    const ChartContent content(chartOf(ChartShape::Line, {std::vector<float>(480, 60)})); // every 33 rows
    CategoryTicker ticker(content);
    const Ticks whole = ticksOf(ticker, {0, 479});
    EXPECT_EQ(whole.labels, QVector<QString>({"r0", "r33", "r66", "r99", "r132", "r165", "r198", "r231", "r264", "r297",
                                              "r330", "r363", "r396", "r429", "r462"}));
    const Ticks part = ticksOf(ticker, {100.2, 119.8});
    EXPECT_EQ(part.labels.front(), "r102");
    EXPECT_EQ(part.positions, QVector<double>({102, 104, 106, 108, 110, 112, 114, 116, 118}));
}

TEST(CategoryTicker, LabelsNeverOverlap) {
    ChartData chart = chartOf(ChartShape::Bar, {std::vector<float>(34, 60)});
    chart.DivisionsPerLabel = chart.DivisionsPerTick = 1;
    chart.RowLabel = [](std::size_t row) { return "31.5k Hz " + std::to_string(row); };
    const ChartContent content(chart);
    CategoryTicker ticker(content);
    const QFontMetrics metrics((QFont()));
    const QCPRange rows(-0.5, 33.5);
    const int wide = 34 * (metrics.horizontalAdvance("31.5k Hz 33") + 20);
    EXPECT_EQ(ticker.fit(rows, wide, metrics), 0);
    EXPECT_EQ(ticker.fit(rows, 34 * (metrics.height() + 4), metrics), -90); // they stand
    EXPECT_EQ(ticksOf(ticker, rows).labels.count(QString()), 0);
    const int narrow = 34 * metrics.height() / 2;
    EXPECT_EQ(ticker.fit(rows, narrow, metrics), 0);
    double end = -1e9;
    const Ticks ticks = ticksOf(ticker, rows);
    for (qsizetype i = 0; i < ticks.positions.size(); ++i) {
        if (ticks.labels[i].isEmpty()) continue;
        const double middle = (ticks.positions[i] + 0.5) / 34 * narrow;
        const double half = metrics.horizontalAdvance(ticks.labels[i]) / 2.0;
        EXPECT_GT(middle - half, end);
        end = middle + half;
    }
    EXPECT_GT(end, 0);
}

TEST(ValueTicker, NumbersAreRoundWithTheLocalesSeparator) {
    ValueTicker ticker(Locale{",", "."});
    ticker.fit(300, QFontMetrics(QFont()));
    EXPECT_EQ(ticksOf(ticker, {0, 0.6}).labels.last(), "0,6");
    EXPECT_EQ(ticksOf(ticker, {75, 95}).labels, QVector<QString>({"75", "80", "85", "90", "95"})); // both ends
}

} // namespace
} // namespace kestrane

#include "views/LogComparison.h"

#include "ShownLog.h"
#include "views/CopyData.h"

#include <gtest/gtest.h>

namespace kestrane {
namespace {

// Rows of so many seconds from 09:00 on, of these levels.
struct OneLog : ShownLog {
    OneLog(std::int32_t seconds, std::vector<float> levels) {
        log.Interval = seconds;
        addRows(levels.size());
        for (std::size_t row = 0; row < levels.size(); ++row)
            setLevel(Quantity::LeqA, 0, row, levels[row]);
    }

    ComparedLog compared(const char* name) { return {&log, name, analysedRows(log)}; }
};

TEST(LogComparison, PutsRowsOfDifferentLengthsOnOneAxis) {
    OneLog minutes(60, {80, 0, 90});
    OneLog halves(30, {70, 71, 72});
    IntervalColumns& later = halves.log.LogIntervals.Columns();
    for (std::size_t row = 0; row < 3; ++row) { // from 09:01 on, a day later
        later.set(later.StartDate, row, fromCivil({2024, 6, 4}));
        later.set(later.StartTime, row, 9 * 3600 + 60 + static_cast<std::int32_t>(row) * 30);
    }
    const std::vector<ComparedLog> logs = {minutes.compared("a"), halves.compared("b")};
    const auto text = [&](CompareBy by) {
        return chartValuesText(comparisonChart(minutes.session, logs, by), minutes.session.locale);
    };
    EXPECT_EQ(text(CompareBy::TimeOfDay), "\ta\tb\r\n"
                                          "09:00:00\t80.0\t\r\n"
                                          "09:00:30\t80.0\t\r\n"
                                          "09:01:00\t\t70.0\r\n"
                                          "09:01:30\t\t71.0\r\n"
                                          "09:02:00\t90.0\t72.0\r\n"
                                          "09:02:30\t90.0\t\r\n");
    EXPECT_EQ(text(CompareBy::Start).substr(0, 46), "\ta\tb\r\n"
                                                    "00:00:00\t80.0\t70.0\r\n"
                                                    "00:00:30\t80.0\t71.0\r\n");
    EXPECT_EQ(comparisonChart(minutes.session, logs, CompareBy::Band).RowCount, 0U);
    // (10^8 + 10^9) / 2; (10^7 + 10^7.1 + 10^7.2) / 3; and both by their 120 s and 90 s.
    EXPECT_EQ(copiedCells(comparedTable(minutes.session, logs)).Text, "Logs\tLength\tLAeq\tDifference, dB\r\n"
                                                                      "a\t00:02:00\t87.4 dB\t0.0\r\n"
                                                                      "b\t00:01:30\t71.1 dB\t-16.3\r\n"
                                                                      "Energy mean of all\t00:03:30\t85.0 dB\t\r\n");
}

TEST(LogComparison, LevelsOfTwoWeightingsSayThemAndHaveNoDifference) {
    OneLog one(60, {80});
    OneLog other(60, {90});
    one.log.FreqWeightA("A");
    other.log.FreqWeightA("Z");
    const std::vector<ComparedLog> logs = {one.compared("a"), other.compared("b")};
    const ChartData chart = comparisonChart(one.session, logs, CompareBy::Start);
    EXPECT_EQ(chart.PrimaryTitle, "dB");
    EXPECT_EQ(chart.Series.back().Label, "b (dB Z)");
    EXPECT_EQ(copiedCells(comparedTable(one.session, logs)).Text, "Logs\tLength\tLeq\tDifference, dB\r\n"
                                                                  "a (dB A)\t00:01:00\t80.0 dB\t0.0\r\n"
                                                                  "b (dB Z)\t00:01:00\t90.0 dB\t\r\n"
                                                                  "Energy mean of all\t00:02:00\t\t\r\n");
}

TEST(LogComparison, ByBandNamesTheLogsThatDoNotHaveTheBands) {
    OneLog broad(60, {80});
    OneLog octaves(60, {80});
    OneLog thirds(60, {80});
    octaves.log.Mode(modeFullOctave);
    thirds.log.Mode(modeThirdOctave);
    const std::vector<ComparedLog> logs = {broad.compared("a"), octaves.compared("b"), thirds.compared("c")};
    const ChartData chart = comparisonChart(broad.session, logs, CompareBy::Band);
    EXPECT_EQ(chart.Series.size(), 1U);
    EXPECT_EQ(chart.Footnote, "Not in the chart, as they do not have these bands: a, c");
}

TEST(LogComparison, WithoutTimesThereIsNoTimeAxis) {
    OneLog untimed(0, {80, 81});
    const std::vector<ComparedLog> logs = {untimed.compared("a")};
    EXPECT_EQ(comparisonChart(untimed.session, logs, CompareBy::TimeOfDay).RowCount, 0U);
    EXPECT_EQ(comparisonChart(untimed.session, {}, CompareBy::Start).RowCount, 0U);
    EXPECT_EQ(comparedTable(untimed.session, {}).RowCount, 1U);
}

} // namespace
} // namespace kestrane

#include "views/ChartSummary.h"

#include "ShownLog.h"
#include "views/TimeChart.h"

#include <gtest/gtest.h>

namespace kestrane {
namespace {

TEST(ChartSummary, SaysWhatIsSeenOfTheRowsThatCount) {
    ShownLog shown;
    shown.log.IsChannelBOn = true;
    shown.log.Note = "Wind from the west";
    shown.addRows(4);
    shown.plot(kChannelA, kInterval, {eLeq, eDoseET});
    shown.plot(kChannelB, kInterval, {eLeq});
    shown.setLevel(Quantity::LeqA, 0, 0, 85);
    shown.setLevel(Quantity::LeqA, 0, 1, 120); // excluded
    shown.setLevel(Quantity::LeqA, 0, 2, 80);
    shown.setLevel(Quantity::LeqA, 0, 3, 81);
    shown.setLevel(Quantity::DoseA, 0, 2, 12.5F);
    IntervalColumns& rows = shown.log.LogIntervals.Columns();
    rows.set(rows.isExcluded, 1, std::uint8_t{1});
    EXPECT_EQ(chartSummary(shown.session, fullLogChart(&shown.log, {})),
              "Yard\n"
              "From 03/06/24 09:00:00 to 03/06/24 09:03:00, 4 points.\n"
              "Axes: Time, dB A, %.\n"
              "LAeq (CHA): minimum 80.0, arithmetic mean 82.0, maximum 85.0.\n" // 246 / 3
              "Dose %(ET) (CHA): 12.5.\n"
              "Leq (CHB): no values.\n"
              "Excluded points, which do not count here: 1.\n"
              "Wind from the west");
}

TEST(ChartSummary, LeavesOutCurvesToCompareWithPlaceholdersAndWhatIsMissing) {
    TestSession test;
    ChartData chart;
    EXPECT_EQ(chartSummary(test.session, chart), "");
    chart.Title = "Press shop";
    chart.RowCount = 1;
    chart.RowName = [](std::size_t) { return std::string(); };
    chart.Series = {{"NR 80", ChartAxis::Primary, {80}},
                    {"", ChartAxis::Primary, {kNullValue}},
                    {"*", ChartAxis::Primary, {-2.5F}}};
    chart.ReferenceSeries = 1;
    EXPECT_EQ(chartSummary(test.session, chart), "Press shop\n*: -2.5.");
}

} // namespace
} // namespace kestrane

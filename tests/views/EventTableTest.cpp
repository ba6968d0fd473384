#include "views/EventTable.h"

#include "ShownLog.h"
#include "views/CopyData.h"
#include "views/Distribution.h"

#include <gtest/gtest.h>

namespace kestrane {
namespace {

TEST(EventTable, ListsEachEventWithItsShareOfTheEnergy) {
    ShownLog shown;
    shown.addRows(6); // of a minute, from 09:00 on
    const float levels[] = {90, 80, 90, 90, 70, 90};
    for (std::size_t row = 0; row < 6; ++row)
        shown.setLevel(Quantity::LeqA, 0, row, levels[row]);
    shown.setLevel(Quantity::LmaxA, 0, 3, 101.5F);
    const auto rows = std::make_shared<const std::vector<AnalysedRow>>(analysedRows(shown.log));
    const EventTable events(shown.log, rows, {85, 0});
    EXPECT_EQ(copiedCells(events.Table()).Text, // of 4.11 units of energy, the unit a minute at 90 dB
              "Start\tLength\tLAeq\tAmax\tShare\r\n"
              "03/06/24 09:00:00\t00:01:00\t90.0 dB\t\t24.3 %\r\n"
              "03/06/24 09:02:00\t00:02:00\t90.0 dB\t101.5 dB\t48.7 %\r\n"
              "03/06/24 09:05:00\t00:01:00\t90.0 dB\t\t24.3 %\r\n");
    EXPECT_EQ(events.Summary(), "Events: 3, 00:04:00 in all, 97.3 % of the sound energy");
    const EventTable longer(shown.log, rows, {85, 120});
    EXPECT_EQ(longer.RowsOf(0).From, 3);
    EXPECT_EQ(longer.RowsOf(0).To, 4);
    EXPECT_EQ(EventTable(shown.log, rows, {91, 0}).Summary(), "Events: 0, 00:00:00 in all, 0.0 % of the sound energy");
}

TEST(Distribution, SaysHowLongTheLevelWasInEachClassAndAbove) {
    ShownLog shown;
    shown.log.Interval = 900;
    shown.addRows(8);
    const float levels[] = {70, 71, 70.5F, 74, 74, 70, 71.9F, 72};
    for (std::size_t row = 0; row < 8; ++row)
        shown.setLevel(Quantity::LeqA, 0, row, levels[row]);
    const auto rows = analysedRows(shown.log);
    const CellTable table = distributionTable(shown.log, rows, 2);
    EXPECT_EQ(copiedDistribution(shown.log, "L50 71.0 dB", table).Text,
              "Yard\r\nL50 71.0 dB\r\n"
              "From, dB A\tIn the class\tIn the class, %\tAt or above\tAt or above, %\r\n"
              "70.0\t01:15:00\t62.5\t02:00:00\t100.0\r\n"
              "72.0\t00:15:00\t12.5\t00:45:00\t37.5\r\n"
              "74.0\t00:30:00\t25.0\t00:30:00\t25.0\r\n");
    const ChartData chart = distributionChart(shown.log, rows, 2);
    EXPECT_EQ(chart.CategoryTitle, "From, dB A (Class width, dB: 2.0)");
    EXPECT_EQ(chart.RowName(2), "74.0");
    EXPECT_NEAR(chart.Series[1].Values[1], 37.5, 1e-4);
    // Sorted: 74 74 72 71.9 71 70.5 70 70; a quarter of the time ends between the second and the third.
    const TypedNumbers typed = typedNumbers("25; 0,5 oops 101", 100, shown.session.locale);
    EXPECT_EQ(percentileText(shown.session, rows, typed.Numbers), "L25 73.0 dB, L0.5 74.0 dB");
    EXPECT_EQ(typed.Others, "oops 101");

    shown.log.Interval = 0; // nobody knows how long
    EXPECT_EQ(distributionTable(shown.log, analysedRows(shown.log), 2).Cell(0, 2), "");
    EXPECT_TRUE(isNullValue(distributionChart(shown.log, analysedRows(shown.log), 2).Series[0].Values[0]));
}

} // namespace
} // namespace kestrane

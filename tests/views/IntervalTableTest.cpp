#include "views/IntervalTable.h"

#include "ShownLog.h"

#include <gtest/gtest.h>

#include <sstream>

namespace kestrane {
namespace {

std::string written(const IntervalTable& table) {
    std::ostringstream out;
    table.write(out);
    return out.str();
}

TEST(IntervalTable, ShowsThePlottedParametersOfTheChannel) {
    ShownLog shown(modeBroadband, {",", "/"});
    shown.log.IsChannelBOn = true;
    shown.log.FreqWeightB("C");
    shown.addRows(3);
    shown.plot(kChannelA, kInterval, {eLeq, ePa2Hr});
    shown.plot(kChannelA, kCumulative, {eLmax});
    shown.plot(kChannelB, kInterval, {ePeak});
    shown.setLevel(Quantity::LeqA, 0, 0, 85.04F);
    shown.setLevel(Quantity::LeqA, 0, 2, 1234.5F); // too large for a decimal
    shown.setLevel(Quantity::PeakB, 0, 1, 120.25F);

    EXPECT_EQ(written(IntervalTable(shown.log, kChannelA, {})), "Time\tLAeq (CHA)\tPa2Hr (CHA)\r\n"
                                                                "03/06/24 09:00:00\t85,0\t\r\n"
                                                                "03/06/24 09:01:00\t\t\r\n"
                                                                "03/06/24 09:02:00\t1235\t\r\n");
    const IntervalTable b(shown.log, kChannelB, {"1k", kNoParameter});
    EXPECT_EQ(b.caption(1), "Cpeak (CHB)");
    EXPECT_EQ(b.cell(1, 1), "120,3");

    shown.log.IsChannelBOn = false;
    EXPECT_EQ(IntervalTable(shown.log, kChannelB, {}).caption(1), "LAeq");
}

TEST(IntervalTable, OverloadedRowsAreMarkedWhileTheColumnIsShownAndNeverCopied) {
    ShownLog shown;
    shown.addRows(2);
    IntervalColumns& rows = shown.log.LogIntervals.Columns();
    rows.set(rows.OverloadedA, 1, std::uint8_t{1});
    rows.set(rows.isExcluded, 0, std::uint8_t{1});
    EXPECT_FALSE(IntervalTable(shown.log, kChannelA, {}).isOverloaded(1));

    shown.plot(kChannelA, kInterval, {eOverload});
    const IntervalTable table(shown.log, kChannelA, {});
    EXPECT_EQ(table.cell(0, 1), "No");
    EXPECT_EQ(table.cell(1, 1), "Yes");
    EXPECT_FALSE(table.isOverloaded(0));
    EXPECT_TRUE(table.isOverloaded(1));
    EXPECT_TRUE(table.isExcluded(0));
    EXPECT_FALSE(table.isExcluded(1));
    const CopiedRows copied = table.copiedRows();
    EXPECT_EQ(copied.Text, "Time\tOverload?\r\n*03/06/24 09:00:00\tNo\r\n");
    EXPECT_EQ(copied.LeftOut, 1U);
    EXPECT_TRUE(copied.HasExcluded);
}

TEST(IntervalTable, PeaksOfAnOldInstrumentStandBesideTheRowsAndBelowThem) {
    ShownLog shown;
    shown.addRows(1);
    shown.plot(kChannelA, kInterval, {eLeq});
    shown.setLevel(Quantity::LeqA, 0, 0, 80);
    shown.log.Peaks.resize(2);
    shown.log.Peaks[1].PeakTime.setTimeFromSeconds(3661);
    shown.log.Peaks[1].SampleDuration = 2.5F;
    EXPECT_EQ(IntervalTable(shown.log, kChannelA, {}).rowCount(), 1U);

    shown.log.InsName = "TR 310";
    const IntervalTable table(shown.log, kChannelA, {});
    EXPECT_EQ(written(table), "Time\tLAeq\tPKT\tPKE\r\n"
                              "03/06/24 09:00:00\t80.0\t00:00:00\t0.0\r\n"
                              "\t\t01:01:01\t2.5\r\n");
    EXPECT_FALSE(table.isExcluded(1));
}

TEST(IntervalTable, KeepsItsFiguresWhenTheLogChangesOrGoes) {
    IntervalTable table;
    EXPECT_EQ(table.rowCount(), 0U);
    {
        ShownLog shown;
        shown.addRows(1);
        shown.plot(kChannelA, kInterval, {eLeq});
        shown.setLevel(Quantity::LeqA, 0, 0, 80);
        table = IntervalTable(shown.log, kChannelA, {});
        shown.setLevel(Quantity::LeqA, 0, 0, 90);
        shown.log.LogIntervals.Clear();
    }
    EXPECT_EQ(table.rowCount(), 1U);
    EXPECT_EQ(table.cell(0, 1), "80.0");
}

} // namespace
} // namespace kestrane

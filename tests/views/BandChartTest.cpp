#include "views/BandChart.h"

#include "ShownLog.h"
#include "platform/RuntimeError.h"

#include <gtest/gtest.h>

namespace kestrane {
namespace {

TEST(BandChart, ShowsTheLevelsOfTheWholeLogOrOfAnInterval) {
    ShownLog shown(modeFullOctave);
    shown.log.IsChannelBOn = true;
    shown.addRows(2);
    shown.plot(kChannelA, kCumulative, {eLeq, eLmax, eDoseET, eOverload});
    shown.plot(kChannelB, kCumulative, {eLeq});
    shown.plot(kChannelA, kInterval, {ePeak});
    shown.log.LeqCumA(0).Value(85);
    shown.log.LeqCumA("1k").Value(77);
    shown.log.LeqCumB.Value(88);
    shown.setLevel(Quantity::PeakA, 0, 1, 120);

    const auto whole = bandChart(shown.log, kWholeLog, {}, kByDecibels);
    ASSERT_TRUE(whole);
    EXPECT_EQ(whole->Shape, ChartShape::Bar);
    EXPECT_EQ(whole->CategoryTitle, "");
    EXPECT_EQ(whole->PrimaryTitle, "dB");
    EXPECT_FALSE(whole->HasSecondaryAxis);
    EXPECT_EQ(chartValuesText(*whole, shown.session.locale),
              "\tLAeq (CHA)\tAmax (CHA)\tLeq (CHB)\r\n\t85.0\t\t88.0\r\n");

    const auto band = bandChart(shown.log, kWholeLog, {"1k", kNoParameter}, kByDecibels);
    EXPECT_EQ(chartValuesText(*band, shown.session.locale),
              "\tLAeq 1k Hz (CHA)\tAmax 1k Hz (CHA)\tLeq (CHB)\r\n\t77.0\t\t88.0\r\n");

    const auto interval = bandChart(shown.log, 2, {}, kByDecibels);
    EXPECT_EQ(interval->Title, "Yard");
    EXPECT_EQ(interval->CategoryTitle, "Interval Time: 09:01:00");
    EXPECT_EQ(chartValuesText(*interval, shown.session.locale), "\tApeak (CHA)\r\n\t120.0\r\n");
}

TEST(BandChart, DoseAndPa2HrShareTheChartOnAxesOfTheirOwn) {
    ShownLog shown;
    shown.plot(kChannelA, kCumulative, {eLeq, ePa2Hr});
    shown.log.Pa2hCumA.Value(2.4F);
    const auto one = bandChart(shown.log, kWholeLog, {}, kByPercent);
    ASSERT_EQ(one->Series.size(), 1U);
    EXPECT_EQ(one->Series[0].Axis, ChartAxis::Primary);
    EXPECT_EQ(one->PrimaryTitle, "Pa2Hrs");
    EXPECT_FALSE(one->HasSecondaryAxis);

    shown.plot(kChannelA, kCumulative, {eDoseET});
    shown.log.DoseETCumA.Value(75);
    const auto both = bandChart(shown.log, kWholeLog, {}, kByPercent);
    ASSERT_EQ(both->Series.size(), 2U);
    EXPECT_EQ(both->Series[0].Axis, ChartAxis::Primary);
    EXPECT_EQ(both->PrimaryTitle, "%");
    EXPECT_EQ(both->Series[1].Axis, ChartAxis::Secondary);
    EXPECT_EQ(both->SecondaryTitle, "Pa2Hrs");
    EXPECT_TRUE(both->HasSecondaryAxis);
    ASSERT_TRUE(both->SecondaryRange);
    EXPECT_EQ(both->SecondaryRange->Minimum, 0);
    EXPECT_EQ(both->SecondaryRange->Maximum, 5);
}

TEST(BandChart, AnExcludedIntervalIsToldInTheTitle) {
    ShownLog shown;
    shown.addRows(2);
    shown.plot(kChannelA, kInterval, {eLeq});
    IntervalColumns& rows = shown.log.LogIntervals.Columns();
    rows.set(rows.isExcluded, 1, std::uint8_t{1});
    EXPECT_FALSE(bandChart(shown.log, 1, {}, kByDecibels)->IsTitleWarning);
    const auto chart = bandChart(shown.log, 2, {}, kByDecibels);
    EXPECT_EQ(chart->Title, "Yard - (EXCLUDED INTERVAL)");
    EXPECT_TRUE(chart->IsTitleWarning);
}

TEST(BandChart, NothingToShowIsNoChartAndAMissingIntervalAnError) {
    ShownLog shown;
    shown.addRows(1);
    shown.plot(kChannelA, kInterval, {eDoseET});
    EXPECT_FALSE(bandChart(shown.log, 1, {}, kByDecibels));
    EXPECT_FALSE(bandChart(shown.log, kWholeLog, {}, kByPercent));
    EXPECT_TRUE(bandChart(shown.log, 1, {}, kByPercent));
    EXPECT_THROW(bandChart(shown.log, 2, {}, kByPercent), RuntimeError);
    EXPECT_THROW(bandChart(shown.log, -1, {}, kByPercent), RuntimeError);
}

TEST(BandChart, ABrevikMeterShowsWhatItsModelRecords) {
    ShownLog shown;
    shown.log.InsName = "Brevik E";
    shown.plot(kChannelA, kCumulative, {eLeq, ePeak, eLAvg});
    shown.log.objLogOptions.Plottable = shown.session.Options.objLogOptions.Plottable;
    const auto chart = bandChart(shown.log, kWholeLog, {}, kByDecibels);
    ASSERT_EQ(chart->Series.size(), 2U);
    EXPECT_EQ(chart->Series[0].Label, "LAeq");
    EXPECT_EQ(chart->Series[1].Label, "LAvg");
}

} // namespace
} // namespace kestrane

#include "views/TimeChart.h"

#include "ShownLog.h"
#include "views/ChartLines.h"

#include <gtest/gtest.h>

namespace kestrane {
namespace {

std::vector<std::string> labels(const ChartData& chart) {
    std::vector<std::string> texts;
    for (const ChartSeries& series : chart.Series)
        texts.push_back(series.Label);
    return texts;
}

TEST(TimeChart, ShowsPlottedParametersOfBothChannelsOverTime) {
    ShownLog shown;
    shown.log.IsChannelBOn = true;
    shown.log.Note = "Wind from the west";
    shown.addRows(3);
    shown.plot(kChannelA, kInterval, {eLeq, eDoseET, eOverload, ePa2Hr});
    shown.plot(kChannelB, kInterval, {eLeq});
    shown.setLevel(Quantity::LeqA, 0, 0, 85);
    shown.setLevel(Quantity::LeqA, 0, 2, 86.25F);
    shown.setLevel(Quantity::DoseA, 0, 1, 12.5F);
    IntervalColumns& rows = shown.log.LogIntervals.Columns();
    rows.set(rows.isExcluded, 1, std::uint8_t{1});

    const ChartData chart = fullLogChart(&shown.log, {});
    EXPECT_EQ(labels(chart), (std::vector<std::string>{"LAeq (CHA)", "Dose %(ET) (CHA)", "Pa2Hr (CHA)", "Leq (CHB)"}));
    EXPECT_EQ(chart.Series[0].Axis, ChartAxis::Primary);
    EXPECT_EQ(chart.Series[1].Axis, ChartAxis::Secondary);
    EXPECT_EQ(chart.Series[2].Axis, ChartAxis::Secondary);
    EXPECT_EQ(chart.PrimaryTitle, "dB A");
    EXPECT_EQ(chart.SecondaryTitle, "Pa2Hrs / %");
    EXPECT_TRUE(chart.HasSecondaryAxis);
    EXPECT_EQ(chart.Title, "Yard");
    EXPECT_EQ(chart.Footnote, "Wind from the west");
    EXPECT_EQ(chart.ExcludedRows, (std::vector<std::uint8_t>{0, 1, 0}));
    EXPECT_EQ(chart.RowName(1), "03/06/24 09:01:00");
    EXPECT_EQ(chartValuesText(chart, shown.session.locale), "\tLAeq (CHA)\tDose %(ET) (CHA)\tPa2Hr (CHA)\tLeq (CHB)\r\n"
                                                            "09:00\t85.0\t\t\t\r\n"
                                                            "09:01\t\t12.5\t\t\r\n"
                                                            "09:02\t86.25\t\t\t\r\n");

    const ChartData nothing = fullLogChart(nullptr, {});
    EXPECT_TRUE(nothing.Title.empty() && nothing.Footnote.empty() && nothing.Series.empty());
}

TEST(TimeChart, AnAxisIsTitledByWhatItCarries) {
    ShownLog shown;
    shown.log.FreqWeightA("");
    shown.addRows(1);
    shown.plot(kChannelA, kInterval, {eLeq});
    EXPECT_FALSE(fullLogChart(&shown.log, {}).HasSecondaryAxis);
    EXPECT_EQ(fullLogChart(&shown.log, {}).PrimaryTitle, "dB");
    shown.plot(kChannelA, kInterval, {ePa2Hr});
    EXPECT_EQ(fullLogChart(&shown.log, {}).SecondaryTitle, "Pa2Hrs");

    shown.log.FreqWeightA("A");
    shown.log.FreqWeightB("C");
    shown.log.IsChannelBOn = true;
    shown.plot(kChannelA, kInterval, {eLepdET});
    EXPECT_EQ(fullLogChart(&shown.log, {}).PrimaryTitle, "dB A");
    shown.plot(kChannelB, kInterval, {eLeq, eLe_Sel});
    const ChartData both = fullLogChart(&shown.log, {});
    EXPECT_EQ(both.PrimaryTitle, "dB");
    EXPECT_EQ(labels(both), (std::vector<std::string>{"LAeq (CHA)", "LEP,d(ET) (CHA) (dB A)", "Pa2Hr (CHA)",
                                                      "LCeq (CHB)", "LE (CHB) (dB C)"}));
}

TEST(TimeChart, ShowsABandOrAllBandsOfAParameter) {
    ShownLog shown(modeFullOctave);
    shown.addRows(1);
    shown.plot(kChannelA, kInterval, {eLeq, ePeak});
    shown.setLevel(Quantity::LeqA, 7, 0, 71.5F);
    shown.setLevel(Quantity::PeakA, 0, 0, 110);

    const ChartData band = fullLogChart(&shown.log, {"1k", kNoParameter});
    EXPECT_EQ(band.Title, "Yard - 1k");
    EXPECT_EQ(labels(band), (std::vector<std::string>{"LAeq 1k Hz", "Apeak"}));
    EXPECT_EQ(band.Series[0].Values[0], 71.5F);
    EXPECT_EQ(band.Series[1].Values[0], 110);

    const ChartData bands = fullLogChart(&shown.log, {"", eLeq});
    EXPECT_EQ(bands.Title, "Yard - LAeq");
    ASSERT_EQ(bands.Series.size(), 12U);
    EXPECT_EQ(bands.Series[0].Label, "AP");
    EXPECT_TRUE(isNullValue(bands.Series[0].Values[0]));
    EXPECT_EQ(bands.Series[7].Label, "1k Hz");
    EXPECT_EQ(bands.Series[7].Values[0], 71.5F);
}

TEST(TimeChart, SomeMetersShowTheWholeRunsPercentileBesideTheIntervals) {
    for (const auto& [instrument, isShown] : {std::pair("Corvane", false), {"TR 350", true}}) {
        ShownLog shown;
        shown.log.InsName = instrument;
        shown.addRows(2);
        shown.log.LnNumberA(1, 90);
        shown.log.LnCumA(1, 0).Value(55);
        shown.plot(kChannelA, kInterval, {eLn(1)});
        shown.plot(kChannelA, kCumulative, {eLn(1), eLeq});
        const ChartData chart = fullLogChart(&shown.log, {});
        ASSERT_EQ(chart.Series.size(), isShown ? 2U : 1U) << instrument;
        EXPECT_EQ(chart.Series.back().Label, isShown ? "L90 (Cumultv)" : "L90");
        EXPECT_EQ(chart.Series.back().Values[1] == 55, isShown);
    }
}

TEST(TimeChart, LabelsAreThinnedAndShowSecondsWhereTheyMatter) {
    struct Case {
        std::size_t rows;
        std::int32_t interval;
        std::size_t divisions;
        const char* secondLabel;
    };

    for (const Case& c : {Case{14, 60, 1, "09:01"}, Case{15, 90, 2, "09:01:30"}, Case{3000, 3600, 201, "10:00"}}) {
        ShownLog shown;
        shown.log.Interval = c.interval;
        shown.addRows(c.rows);
        const ChartData chart = fullLogChart(&shown.log, {});
        EXPECT_EQ(chart.DivisionsPerLabel, c.divisions);
        EXPECT_EQ(chart.DivisionsPerTick, c.divisions);
        EXPECT_EQ(chart.RowLabel(1), c.secondLabel);
    }
}

TEST(TimeChart, AsksBeforeMoreThan150IntervalsIn3D) {
    ShownLog shown;
    shown.addRows(150);
    EXPECT_FALSE(isAskedBefore3D(shown.log, eChartAs3D));
    shown.addRows(151);
    EXPECT_TRUE(isAskedBefore3D(shown.log, eChartAs3D));
    EXPECT_FALSE(isAskedBefore3D(shown.log, eChartAs2D));
}

TEST(ChartLines, AreThoseOfTheUserWhereTheyMeanSomething) {
    ShownLog shown;
    shown.addRows(3);
    shown.log.Criterion = 90;
    const auto lines = [&](LimitLines limits, const char* own = "") {
        storeChartLines(shown.session, {limits, own, false});
        std::string labels;
        for (const ChartLine& line : fullLogChart(&shown.log, {}).Lines)
            labels += line.Label + ", ";
        return labels;
    };
    EXPECT_EQ(lines(LimitLines::None), "");
    EXPECT_EQ(lines(LimitLines::Usual), "80 dB, 85 dB, 87 dB, ");
    EXPECT_EQ(lines(LimitLines::Criterion), "90 dB, ");
    shown.log.Criterion = 87;
    shown.log.Exchange = 4;
    EXPECT_EQ(lines(LimitLines::Criteria), "80 dB (EU 2003/10/EC), "
                                           "85 dB (EU 2003/10/EC, OSHA hearing conservation, NIOSH 98-126, ACGIH TLV), "
                                           "87 dB (EU 2003/10/EC, Own criterion), 90 dB (OSHA PEL), ")
        << "half the dose at a rate of 5 dB is 90 dB less 5 dB";
    EXPECT_EQ(lines(LimitLines::Own, " 78.5 x;300 -4  100"), "78.5 dB, 100 dB, ");
    shown.log.IsChannelBOn = true;
    shown.log.FreqWeightB("C");
    shown.plot(kChannelA, kInterval, {ePeak});
    EXPECT_EQ(lines(LimitLines::Usual), "80 dB, 85 dB, 87 dB, ") << "the peak that is shown is not C-weighted";
    shown.plot(kChannelB, kInterval, {ePeak});
    EXPECT_EQ(lines(LimitLines::Usual), "80 dB, 85 dB, 87 dB, Peak 135 dB, Peak 137 dB, Peak 140 dB, ");
    shown.log.FreqWeightA("Z");
    EXPECT_EQ(lines(LimitLines::Usual), "Peak 135 dB, Peak 137 dB, Peak 140 dB, ");
    shown.settings.Values[{"Chart", "LimitLines"}] = "Purple";
    EXPECT_EQ(readChartLines(shown.session).Limits, LimitLines::None);
}

TEST(ChartLines, ALevelFromBandsIsAddedWhereTheLogIsNotAWeighted) {
    ShownLog shown(modeFullOctave);
    shown.addRows(2);
    shown.setLevel(Quantity::LeqA, shown.log.e("63"), 1, 100);
    storeChartLines(shown.session, {LimitLines::None, "", false, true});
    EXPECT_TRUE(fullLogChart(&shown.log, {}).Series.empty()) << "its own level says the same";
    shown.log.FreqWeightA("Z");
    const ChartData chart = fullLogChart(&shown.log, {});
    EXPECT_EQ(labels(chart), std::vector<std::string>{"LAeq from bands"});
    EXPECT_TRUE(isNullValue(chart.Series.front().Values[0]));
    EXPECT_NEAR(chart.Series.front().Values[1], 73.8, 1e-3);
}

TEST(ChartLines, TheExposureSoFarLeavesOutWhatDoesNotCount) {
    ShownLog shown;
    shown.log.Interval = 3600;
    shown.log.Criterion = 85;
    shown.log.Exchange = 3;
    shown.addRows(4);
    for (std::size_t row = 0; row < 4; ++row)
        shown.setLevel(Quantity::LeqA, 0, row, row == 1 ? 120.0F : 85.0F);
    IntervalColumns& rows = shown.log.LogIntervals.Columns();
    rows.set(rows.isExcluded, 1, std::uint8_t{1});
    storeChartLines(shown.session, {LimitLines::None, "", true});
    const ChartData chart = fullLogChart(&shown.log, {});
    ASSERT_EQ(chart.Series.size(), 3U);
    EXPECT_EQ(chart.Series[0].Label, "LAeq so far");
    EXPECT_EQ(chart.Series[2].Label, "Dose so far (85 dB, 3 dB)");
    EXPECT_TRUE(isNullValue(chart.Series[0].Values[1]));
    EXPECT_NEAR(chart.Series[0].Values[3], 85, 1e-4);
    EXPECT_NEAR(chart.Series[1].Values[0], 75.97, 0.005); // 85 + 10 lg(1/8)
    EXPECT_NEAR(chart.Series[1].Values[3], 80.74, 0.005); // 85 + 10 lg(3/8)
    EXPECT_NEAR(chart.Series[2].Values[0], 12.5, 1e-4);
    EXPECT_NEAR(chart.Series[2].Values[3], 37.5, 1e-4);
    EXPECT_EQ(chart.SecondaryTitle, "%");
    shown.log.Exchange = 0;
    EXPECT_TRUE(isNullValue(fullLogChart(&shown.log, {}).Series[2].Values[3]));
}

// 101.2 dB at 63 Hz are 75 dB(A).
TEST(ChartLines, TheExposureSoFarIsMadeOfAWeightedLevels) {
    ShownLog shown(modeFullOctave);
    clsLog& log = shown.log;
    log.FreqWeightA("Z");
    log.FreqWeightB("A");
    log.Interval = 3600;
    log.Criterion = 85;
    shown.addRows(1);
    shown.setLevel(Quantity::LeqA, 0, 0, 101.2F);
    shown.setLevel(Quantity::LeqA, log.e("63"), 0, 101.2F);
    shown.setLevel(Quantity::LeqB, 0, 0, 85);
    shown.plot(kChannelA, kInterval, {eDoseMT});
    storeChartLines(shown.session, {LimitLines::None, "", true});
    ChartData chart = fullLogChart(&log, {});
    EXPECT_EQ(labels(chart),
              (std::vector<std::string>{"Dose %(MT)", "LAeq from bands so far", "LEX,8h so far (LAeq from bands)",
                                        "Dose so far (85 dB, 3 dB) (LAeq from bands)"}));
    EXPECT_NEAR(chart.Series[2].Values[0], 65.969, 1e-3); // 75 + 10 lg(1/8)
    EXPECT_NEAR(chart.Series[3].Values[0], 1.2402, 1e-3); // 12.5 * 2^(-10/3)
    log.IsChannelBOn = true;
    chart = fullLogChart(&log, {});
    EXPECT_EQ(chart.Series[1].Label, "LAeq (CHB) so far");
    EXPECT_NEAR(chart.Series[3].Values[0], 12.5, 1e-4);
    shown.log.Mode(modeBroadband);
    log.IsChannelBOn = false;
    EXPECT_EQ(fullLogChart(&log, {}).Series.back().Label, "LZeq so far");
}

} // namespace
} // namespace kestrane

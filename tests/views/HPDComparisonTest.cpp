#include "views/HPDComparison.h"

#include "ShownLog.h"
#include "protection/Attenuation.h"
#include "views/HPDChart.h"

#include <gtest/gtest.h>

namespace kestrane {
namespace {

struct Compared : ShownLog {
    clsOptions options;
    clsHP hp;

    explicit Compared(LogMode mode = modeBroadband) : ShownLog(mode) { hp.Name = "Muff <1>"; }

    void twoChannels(float a, float c) {
        log.IsChannelBOn = true;
        log.FreqWeightB("C");
        log.LeqCumA(0).Value(a);
        log.LeqCumB.Value(c);
        hp.High = 32;
        hp.Medium = 25;
        hp.Low = 17;
    }

    HPDComparison compare(CorrectionKind correction = kCorrectionNone) {
        return compareWithProtector(log, hp, options, correction);
    }
};

TEST(HPDComparison, GradesAtTheEdges) {
    constexpr std::pair<float, ProtectionGrade> kCases[] = {
        {70, ProtectionGrade::Green},  {75, ProtectionGrade::Green},  {69.9F, ProtectionGrade::Orange},
        {65, ProtectionGrade::Orange}, {80, ProtectionGrade::Orange}, {80.1F, ProtectionGrade::Red},
        {64.9F, ProtectionGrade::Red}, {-1, ProtectionGrade::Red},    {75.1F, ProtectionGrade::Orange}};
    for (const auto& [level, grade] : kCases)
        EXPECT_EQ(gradeOf(level), grade) << level;
    const TestSession test;
    HPDComparison red;
    for (const auto& [level, word] :
         {std::pair(-1.0F, "computed"), {64.9F, "over-protected"}, {80.1F, "insufficient"}}) {
        red.Result = level;
        EXPECT_TRUE(gradeText(test.session, red).ends_with(word)) << level;
    }
    red.Grade = ProtectionGrade::Orange;
    EXPECT_TRUE(gradeText(test.session, red).ends_with("acceptable"));
}

TEST(HPDComparison, ByHMLNamesWhatItUsed) {
    Compared compared;
    compared.twoChannels(100, 102); // d is 2: 100 - M
    HPDComparison result = compared.compare();
    EXPECT_EQ(result.Method, "HML");
    EXPECT_EQ(result.LevelName, "APL");
    EXPECT_FLOAT_EQ(result.Result, 75);
    EXPECT_FALSE(result.ExceedsLimit);
    EXPECT_EQ(result.ChartTitle, "Hearing Protector Comparison: Yard / Muff <1>");
    EXPECT_EQ(result.ResultLine,
              "Using HML Method  (H=32.0 dB,  M=25.0 dB,  L=17.0 dB),   LAeq=100.0 dB,  LCeq=102.0 dB"
              "   :   APL=75.0 dB");
    const std::vector<std::pair<std::string, std::string>> panel = {
        {"LAeq", "100.0"}, {"LCeq", "102.0"}, {"H", "32.0"}, {"M", "25.0"}, {"L", "17.0"}};
    EXPECT_EQ(result.Panel, panel);
    ASSERT_EQ(result.Bars.size(), 3U);
    EXPECT_EQ(result.Bars[2].Label, "APL");
    EXPECT_TRUE(result.Footnote.empty());

    compared.twoChannels(112, 114);
    EXPECT_FALSE(compared.compare().ExceedsLimit); // exactly 87
    compared.twoChannels(113, 115);
    result = compared.compare();
    EXPECT_TRUE(result.ExceedsLimit);
    EXPECT_EQ(result.ResultLine, "Using HML Method (H=32.0 dB, M=25.0 dB, L=17.0 dB), LAeq=113.0 dB, LCeq=115.0 dB: "
                                 "APL=88.0 dB   EXCEEDING LIMIT VALUE");
}

TEST(HPDComparison, BySNRAndNRR) {
    Compared compared;
    compared.twoChannels(95, 98);
    compared.hp = clsHP();
    compared.hp.SNR = 27;
    EXPECT_EQ(compared.compare().ResultLine, "Using SNR Method  LCeq=98.0 dB   :   APL=71.0 dB");

    compared.options.HPDCalc = eHPDModeUSNIOSH;
    compared.hp.NRR = 29;
    compared.log.DoseMTCumA.Value(100);
    compared.log.Exchange = 5;
    compared.log.StartDate.setDate("03/06/2024", compared.session.locale);
    compared.log.EndDate = compared.log.StartDate;
    compared.log.EndTime.Hours = 8;
    const HPDComparison result = compared.compare();
    EXPECT_EQ(result.ResultLine, "Using NRR Method  Dose(MT)=100.0 %   :   ENL=79.0 dB");
    const std::vector<std::pair<std::string, std::string>> panel = {
        {"FrqW", "A"}, {"Dose", "100.0"}, {"TWA8", "90.0"}, {"NRR", "29.0"}};
    EXPECT_EQ(result.Panel, panel);
    EXPECT_EQ(result.Bars.front().Label, "LAeq");
}

TEST(HPDComparison, ByOctavesConvertsACopyOfTheLog) {
    Compared compared(modeFullOctave);
    compared.log.LeqCumA("63").Value(60);
    compared.log.LeqCumA("1k").Value(95);
    compared.log.OctaveType("Leq");
    compared.log.TimeWeightA("Fast");
    compared.log.StartDate.setDate("03/06/2024", compared.session.locale);
    compared.hp.Mean(1) = 90;
    compared.hp.Mean(5) = 20;
    compared.hp.SD(5) = 4;
    const HPDComparison result = compared.compare(kCorrectionOneDeviation);
    ASSERT_EQ(compared.messages.Boxes.size(), 1U);
    EXPECT_EQ(compared.messages.Boxes.front().Prompt,
              "This log is not Z weighted.  It will be converted for this analysis.");
    EXPECT_EQ(compared.log.FreqWeightA(), "A");
    EXPECT_EQ(compared.log.LeqCumA("63").CalcValue(), 60);
    ASSERT_EQ(result.Bars.size(), 2U);
    EXPECT_EQ(result.Bars[0].Label, "63Hz");
    EXPECT_FLOAT_EQ(result.Bars[0].Without, 86.2F);
    EXPECT_EQ(result.Bars[0].With, 0); // not below 0 on the chart
    EXPECT_EQ(result.Bars[1].Label, "1kHz");
    EXPECT_FLOAT_EQ(result.Bars[1].With, 79);
    EXPECT_NEAR(result.Result, 79, 1e-3);
    EXPECT_EQ(result.ResultLine, "Octave band centre frequency                    APL: 79.0 dB");
    const std::vector<std::string> footnote = {"LZeq:     95.5 dB             Leq                           ",
                                               "Freq Wgt: Z                   Time Wgt: Fast                ",
                                               "Recorded on 03/06/2024 at 00:00:00", "Using 1 Standard Deviation"};
    EXPECT_EQ(result.Footnote, footnote);

    compared.log.FreqWeightA("Z");
    compared.compare();
    EXPECT_EQ(compared.messages.Boxes.size(), 1U); // nothing to convert
}

TEST(HPDChart, ShowsBarsByBandOrColumnsInTheColourOfTheGrade) {
    Compared levels;
    levels.twoChannels(100, 102);
    ChartData chart = hpdChart(levels.log, levels.compare());
    EXPECT_EQ(chart.GradeColour, (Colour{0, 255, 0})); // 75 dB
    EXPECT_EQ(chart.PrimaryTitle, "dBA");
    EXPECT_TRUE(chart.CategoryTitle.starts_with("Using HML Method"));
    EXPECT_EQ(chartValuesText(chart, {}), "\tLAeq\tLCeq\tAPL\r\n\t100.0\t102.0\t75.0\r\n");
    EXPECT_FALSE(chart.HasLegend);

    chart = hpdChart(levels.log, levels.compare(kCorrectionOneDeviation)); // not for HML
    EXPECT_EQ(chart.GradeColour, (Colour{255, 0, 0}));
    EXPECT_TRUE(isNullValue(chart.Series[2].Values[0]));

    Compared octaves(modeFullOctave);
    octaves.log.FreqWeightA("Z");
    octaves.log.LeqCumA(octaves.log.e("125")).Value(88);
    octaves.log.LeqCumA(octaves.log.e("4k")).Value(10);
    octaves.hp.Mean(2) = 20;
    octaves.hp.Mean(7) = 30;
    chart = hpdChart(octaves.log, octaves.compare());
    EXPECT_EQ(chartValuesText(chart, {}), "\tWithout Hearing Protection\tWith Hearing Protection\r\n"
                                          "125Hz\t88.0\t68.0\r\n4kHz\t10.0\t0.0\r\n");
    EXPECT_EQ(chart.GradeColour, (Colour{255, 165, 0}));
    EXPECT_EQ(std::count(chart.Footnote.begin(), chart.Footnote.end(), '\n'), 3);

    octaves.hp = clsHP();
    chart = hpdChart(octaves.log, octaves.compare());
    EXPECT_TRUE(chart.Series.empty()) << "no method";
}

} // namespace
} // namespace kestrane

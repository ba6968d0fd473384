#include "calc/FreqWeight.h"
#include "calc/ConvertedLog.h"

#include "TestSession.h"

#include <gtest/gtest.h>

#include <iterator>
#include <utility>

namespace kestrane {
namespace {

struct OctaveLog : TestSession {
    clsLog log{session};

    explicit OctaveLog(LogMode mode = modeFullOctave) {
        log.Mode(mode);
        log.FreqWeightA("A");
        for (int band = 0; band <= log.e("Last"); ++band) {
            log.LeqCumA(band).Value(70);
            log.LminCumA(band).Value(0);
        }
    }

    float leq(std::string_view band) { return log.LeqCumA(band).CalcValue(); }
};

TEST(AdjustFreqWeight, AddsWhatTheOldWeightingTookAndTakesWhatTheNewOneTakes) {
    OctaveLog octave;
    AdjustFreqWeight(octave.log, "lin", false);
    EXPECT_EQ(octave.log.FreqWeightA(), "Z");
    EXPECT_FLOAT_EQ(octave.leq("16"), 126.7F);
    EXPECT_FLOAT_EQ(octave.leq("63"), 96.2F);
    EXPECT_FLOAT_EQ(octave.leq("1k"), 70);
    EXPECT_FLOAT_EQ(octave.leq("4k"), 69);
    EXPECT_EQ(octave.log.LeqCumA("4k").Value(), 70);
    EXPECT_EQ(octave.log.LeqCumA(0).CalcValue(), 70);
    EXPECT_EQ(octave.log.LminCumA("16").CalcValue(), 0); // absent

    AdjustFreqWeight(octave.log, "C", false);
    EXPECT_FLOAT_EQ(octave.leq("16"), 118.2F);
    EXPECT_FLOAT_EQ(octave.leq("8k"), 70 + 1.1F - 3);
    AdjustFreqWeight(octave.log, "A", false);
    for (int band = 1; band <= 11; ++band)
        EXPECT_NEAR(octave.log.LeqCumA(band).CalcValue(), 70, 1e-4) << band;
}

TEST(AdjustFreqWeight, EachThirdOctaveBandHasItsOffsets) {
    struct Offsets {
        const char* band;
        float a, c;
    };

    constexpr Offsets kOffsets[] = {
        {"12.5", 63.4F, 11.2F}, {"16", 56.7F, 8.5F},  {"20", 50.5F, 6.2F},   {"25", 44.7F, 4.4F},
        {"31.5", 39.4F, 3},     {"40", 34.6F, 2},     {"50", 30.2F, 1.3F},   {"63", 26.2F, 0.8F},
        {"80", 22.5F, 0.5F},    {"100", 19.1F, 0.3F}, {"125", 16.1F, 0.2F},  {"160", 13.4F, 0.1F},
        {"200", 10.9F, 0},      {"250", 8.6F, 0},     {"315", 6.6F, 0},      {"400", 4.8F, 0},
        {"500", 3.2F, 0},       {"630", 1.9F, 0},     {"800", 0.8F, 0},      {"1k", 0, 0},
        {"1.25k", -0.6F, 0},    {"1.6k", -1, 0.1F},   {"2k", -1.2F, 0.2F},   {"2.5k", -1.3F, 0.3F},
        {"3.15k", -1.2F, 0.5F}, {"4k", -1, 0.8F},     {"5k", -0.5F, 1.3F},   {"6.3k", 0.1F, 2},
        {"8k", 1.1F, 3},        {"10k", 2.5F, 4.4F},  {"12.5k", 4.3F, 6.2F}, {"16k", 6.6F, 8.5F},
        {"20k", 9.3F, 11.2F}};
    static_assert(std::size(kOffsets) == 33);
    OctaveLog third(modeThirdOctave);
    AdjustFreqWeight(third.log, "Z", false);
    for (const Offsets& offsets : kOffsets)
        EXPECT_NEAR(third.leq(offsets.band), 70 + offsets.a, 1e-4) << offsets.band;
    AdjustFreqWeight(third.log, "C", false);
    for (const Offsets& offsets : kOffsets)
        EXPECT_NEAR(third.leq(offsets.band), 70 + offsets.a - offsets.c, 1e-4) << offsets.band;
}

TEST(AdjustFreqWeight, RowsAreConvertedWhenAskedFor) {
    for (const bool withRows : {false, true}) {
        OctaveLog octave;
        octave.log.LnNumberA(2, 50);
        octave.log.LogIntervals.setArraySize(2);
        IntervalColumns& rows = octave.log.LogIntervals.Columns();
        const int band = octave.log.e("125");
        rows.setLevel(Quantity::LeqA, band, 0, {60, 60});
        rows.setLevel(lnQuantity(1), band, 1, {50, 50});
        clsLog copy(octave.session);
        copy.Copy(octave.log, 0, 0);
        AdjustFreqWeight(octave.log, "Z", withRows);
        EXPECT_FLOAT_EQ(rows.level(Quantity::LeqA, band, 0).CalcValue, withRows ? 76.1F : 60);
        EXPECT_EQ(rows.level(Quantity::LeqA, band, 0).Value, 60);
        EXPECT_EQ(rows.level(Quantity::LeqA, band, 1).CalcValue, 0);
        EXPECT_FLOAT_EQ(rows.level(lnQuantity(1), band, 1).CalcValue, withRows ? 66.1F : 50);
        EXPECT_FLOAT_EQ(octave.log.LnCumA(2, band).CalcValue(), 16.1F); // an Ln in use, absent as it was
        EXPECT_EQ(octave.log.LnCumA(1, band).CalcValue(), 0);
        EXPECT_EQ(copy.LogIntervals.Columns().level(Quantity::LeqA, band, 0).CalcValue, 60);
    }
}

// 63 Hz at 101.2 dB is 75 dB(A), 1 kHz at 75 dB the same: together 78.0103 dB(A), for 15 minutes.
TEST(ConvertLog, OverallLevelsAndExposureFollowTheBands) {
    OctaveLog octave;
    clsLog& log = octave.log;
    log.FreqWeightA("Z");
    log.Criterion = 85;
    log.LogIntervals.setArraySize(1);
    IntervalColumns& rows = log.LogIntervals.Columns();
    for (int band = 0; band <= log.e("Last"); ++band)
        log.LeqCumA(band).Value(0);
    for (const auto& [band, level] : {std::pair("63", 101.2F), std::pair("1k", 75.0F), std::pair("", 101.21F)}) {
        log.LeqCumA(band).Value(level);
        rows.setLevel(Quantity::LeqA, log.e(band), 0, {level, level});
    }
    log.LmaxCumA(log.e("1k")).Value(90); // at another time than the row's
    rows.setLevel(Quantity::LmaxA, log.e("1k"), 0, {80, 80});
    log.PeakCumA.Value(120);
    log.Interval = 900;
    convertLog(log, "A");
    EXPECT_NEAR(log.LeqCumA(0).CalcValue(), 78.0103, 1e-3);
    EXPECT_EQ(log.LeqCumA(0).Value(), 101.21F);
    EXPECT_NEAR(rows.level(Quantity::LeqA, 0, 0).CalcValue, 78.0103, 1e-3);
    EXPECT_EQ(log.PeakCumA.CalcValue(), 120);
    EXPECT_NEAR(log.LmaxCumA(0).CalcValue(), 80, 1e-3);
    EXPECT_NEAR(log.LepdETCumA.CalcValue(), 78.0103, 1e-3); // for 8 h
    EXPECT_NEAR(log.LepdMTCumA.CalcValue(), 62.9588, 1e-3); // 10 lg (0.25 / 8) = -15.0515
    EXPECT_NEAR(log.DoseETCumA.CalcValue(), 19.8898, 1e-3); // 100 * 2^(-6.9897 / 3)
    EXPECT_NEAR(log.DoseHourA.CalcValue(), 2.4862, 1e-3);   // an eighth of it
    EXPECT_NEAR(log.TWACumA.CalcValue(), 78.0103, 1e-3);
    convertLog(log, "Z");
    EXPECT_NEAR(log.LeqCumA(0).CalcValue(), 101.2104, 1e-3); // 101.2 + 10 lg (1 + 10^-2.62)
    EXPECT_EQ(log.TWACumA.CalcValue(), 0);
}

TEST(AdjustFreqWeight, NamesThatAreNoneAndTheLogsOwnChangeNothing) {
    OctaveLog octave;
    for (const char* name : {"", "B", "a"})
        AdjustFreqWeight(octave.log, name, true);
    EXPECT_EQ(octave.leq("63"), 70);
    EXPECT_EQ(octave.log.FreqWeightA(), "A");

    TestSession test;
    clsLog broadband(test.session);
    AdjustFreqWeight(broadband, "C", false);
    EXPECT_EQ(broadband.FreqWeightA(), "C");
    ASSERT_EQ(test.messages.Boxes.size(), 1U);
    EXPECT_EQ(test.messages.Boxes.front().Prompt, "Frequency weighting changing will have no effect in this mode");
    EXPECT_EQ(test.messages.Boxes.front().Flags, kIconExclamation);
}

TEST(AdjustFreqWeight, ALogWithoutAWeightingRepeatsTheStepBefore) {
    OctaveLog octave;
    octave.log.FreqWeightA("");
    AdjustFreqWeight(octave.log, "A", false);
    EXPECT_FLOAT_EQ(octave.leq("16"), 70 - 56.7F);           // no step before the first
    EXPECT_FLOAT_EQ(octave.leq("31.5"), 70 - 56.7F - 39.4F); // the 16 Hz step again, then its own
}

TEST(FreqWeights, ChannelsAreFoundByTheirWeighting) {
    struct Case {
        const char* a;
        const char* b;
        bool isBOn;
        float leqA, leqC, difference;
        const char* nrr;
    };

    for (const Case& c : {Case{"A", "C", true, 80, 84, 4, "A"}, Case{"C", "A", true, 84, 80, -4, "C"},
                          Case{"Z", "A", true, 84, 0, 0, "A"}, Case{"Z", "C", false, 0, 0, 0, ""},
                          Case{"A", "C", false, 80, 0, 0, "A"}, Case{"", "C", true, 0, 84, 0, "C"}}) {
        TestSession test;
        clsLog log(test.session);
        log.FreqWeightA(c.a);
        log.FreqWeightB(c.b);
        log.IsChannelBOn = c.isBOn;
        log.LeqCumA(0).Value(80);
        log.LeqCumB.Value(84);
        EXPECT_EQ(LeqFreqWA(log), c.leqA) << c.a << c.b;
        EXPECT_EQ(LeqFreqWC(log), c.leqC) << c.a << c.b;
        EXPECT_EQ(HMLCMinusA(log), c.difference) << c.a << c.b;
        EXPECT_EQ(FreqW_NRR(log), c.nrr) << c.a << c.b;
    }
}

} // namespace
} // namespace kestrane

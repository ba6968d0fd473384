#include "calc/FreqWeight.h"

#include "TestSession.h"

#include <gtest/gtest.h>

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

TEST(AdjustFreqWeight, ThereAndBackGivesEveryBandOfAThirdOctaveLogBack) {
    OctaveLog third(modeThirdOctave);
    AdjustFreqWeight(third.log, "Z", false);
    EXPECT_FLOAT_EQ(third.leq("12.5"), 133.4F);
    EXPECT_FLOAT_EQ(third.leq("20k"), 79.3F);
    AdjustFreqWeight(third.log, "A", false);
    for (int band = 1; band <= 33; ++band)
        EXPECT_NEAR(third.log.LeqCumA(band).CalcValue(), 70, 1e-4) << band;
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

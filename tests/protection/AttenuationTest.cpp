#include "protection/Attenuation.h"

#include "TestSession.h"

#include <gtest/gtest.h>

#include <cmath>

namespace kestrane {
namespace {

struct Wearer : TestSession {
    clsLog log{session};
    clsOptions options;
    clsHP hp;

    explicit Wearer(LogMode mode = modeBroadband) { log.Mode(mode); }

    void mode(std::int16_t calc, const char* method = "Auto") {
        options.HPDCalc = calc;
        options.HPDCalcMethod = method;
    }

    void twoChannels(float a, float c) {
        log.IsChannelBOn = true;
        log.FreqWeightA("A");
        log.FreqWeightB("C");
        log.LeqCumA(0).Value(a);
        log.LeqCumB.Value(c);
    }

    void setHML(float high, float medium, float low) {
        hp.High = high;
        hp.Medium = medium;
        hp.Low = low;
    }

    void setOctaves(float mean, float sd) {
        for (int i = 1; i <= kProtectorBands; ++i) {
            hp.Mean(i) = mean;
            hp.SD(i) = sd;
        }
    }

    float level(CorrectionKind correction = kCorrectionNone) { return APL_PAR_ENL(hp, log, options, correction); }
};

TEST(HPDCalcMethodToUse, FollowsTheModeTheChoiceAndTheData) {
    struct Case {
        bool isOctave, isAC;
        const char* data; // of the protector: o octave, u US octave, h HML, s SNR, n NRR
        std::int16_t mode;
        const char* choice;
        const char* method;
    };

    const Case cases[] = {{true, true, "ohs", 0, "Auto", "Octave"}, {false, true, "ohs", 0, "Auto", "HML"},
                          {true, true, "uhs", 0, "Auto", "HML"},    {false, true, "os", 0, "Auto", "SNR"},
                          {false, false, "ohs", 0, "Auto", ""},     {true, true, "ohs", 0, "HML", "HML"},
                          {true, true, "os", 0, "HML", ""},         {true, true, "ohs", 0, "SNR", "SNR"},
                          {true, true, "ohsn", 0, "NRR", ""},       {true, true, "un", 1, "Auto", "Octave"},
                          {true, true, "on", 2, "Auto", "NRR"},     {false, true, "un", 2, "Auto", "NRR"},
                          {true, true, "un", 1, "NRR", "NRR"},      {true, true, "u", 1, "NRR", ""},
                          {false, true, "hs", 1, "HML", ""}};
    for (const Case& c : cases) {
        Wearer wearer(c.isOctave ? modeFullOctave : modeBroadband);
        if (c.isAC) wearer.twoChannels(90, 92);
        const std::string data = c.data;
        if (data.find('o') != std::string::npos) wearer.hp.SD(3) = 1;
        if (data.find('u') != std::string::npos) wearer.hp.MeanUS(8) = 1;
        if (data.find('h') != std::string::npos) wearer.hp.Low = 1;
        if (data.find('s') != std::string::npos) wearer.hp.SNR = 1;
        if (data.find('n') != std::string::npos) wearer.hp.NRR = 1;
        wearer.mode(c.mode, c.choice);
        EXPECT_EQ(HPDCalcMethodToUse(wearer.log, wearer.options, wearer.hp), c.method)
            << c.isOctave << c.data << c.mode << c.choice;
    }
}

// One band alone leaves level less attenuation: worked by hand.
TEST(ProtectedLevel, ByOctavesTakesTheAssumedAttenuationOffEachBand) {
    Wearer wearer(modeFullOctave);
    wearer.log.LeqCumA("1k").Value(95);
    wearer.setOctaves(20, 4);
    const double seven = 7 * std::pow(10.0, -2.0); // the other bands, at 0 dB less 20
    EXPECT_NEAR(wearer.level(), 10 * std::log10(std::pow(10.0, 7.5) + seven), 1e-4);
    EXPECT_NEAR(wearer.level(kCorrectionTwoDeviations), 95 - 12, 1e-3);
    EXPECT_NEAR(wearer.level(kCorrectionOneDeviation), 95 - 16, 1e-3);
    EXPECT_NEAR(wearer.level(kCorrectionFourDecibels), 79, 1e-3);

    wearer.hp.Mean(5) = 0; // a band that the maker left out takes no part
    EXPECT_LT(wearer.level(), 0);
    EXPECT_GT(wearer.level(), -13);

    Wearer all(modeFullOctave); // 80 dB in the eight bands, 20 off each: 60 + 10 log10(8)
    for (int band = 1; band <= 11; ++band)
        all.log.LeqCumA(band).Value(80);
    all.setOctaves(20, 0);
    EXPECT_NEAR(all.level(), 69.0309, 1e-3);
    float before = all.level();
    for (int i = 1; i <= kProtectorBands; ++i) {
        all.hp.Mean(i) += 1;
        EXPECT_LT(all.level(), before);
        before = all.level();
    }
}

TEST(ProtectedLevel, ByOctavesOfAThirdOctaveLogSumsByThrees) {
    Wearer wearer(modeThirdOctave);
    for (const char* band : {"800", "1k", "1.25k"})
        wearer.log.LeqCumA(band).Value(90);
    const auto levels = octaveLevels(wearer.log);
    EXPECT_NEAR(levels[5], 94.7712, 1e-3);              // 31.5, 63, 125, 250, 500, 1k
    EXPECT_NEAR(levels[0], 10 * std::log10(3.0), 1e-6); // absent bands count as 0 dB
    wearer.hp.Mean(5) = 30;
    EXPECT_NEAR(wearer.level(), 64.7712, 1e-3);
}

// ISO 4869-2: PNR by H, M, L on both sides of a difference of 2 dB.
TEST(ProtectedLevel, ByHML) {
    struct Case {
        float a, c, pnr;
    };

    // H 32, M 25, L 17: d 0 gives 25 + 7/4 * 2, d 1.5 gives 25 + 7/4 * 0.5, d 2 gives M, d 10 gives L
    for (const Case& k : {Case{100, 100, 28.5F}, Case{100, 101.5F, 25.875F}, Case{100, 102, 25}, Case{100, 106, 21},
                          Case{100, 110, 17}}) {
        Wearer wearer;
        wearer.twoChannels(k.a, k.c);
        wearer.setHML(32, 25, 17);
        EXPECT_NEAR(wearer.level(), k.a - k.pnr, 1e-3) << k.c;
        EXPECT_NEAR(wearer.level(kCorrectionFourDecibels), k.a - k.pnr + 4, 1e-3);
        EXPECT_EQ(wearer.level(kCorrectionTwoDeviations), -1);
        EXPECT_EQ(wearer.level(kCorrectionOneDeviation), -1);
    }
}

TEST(ProtectedLevel, BySNR) {
    Wearer wearer;
    wearer.twoChannels(95, 98);
    wearer.hp.SNR = 27;
    EXPECT_NEAR(wearer.level(), 71, 1e-4);
    EXPECT_NEAR(wearer.level(kCorrectionFourDecibels), 75, 1e-4);
    wearer.log.IsChannelBOn = false;
    EXPECT_EQ(wearer.level(), -1);
}

// A measured dose of 100 % in 8 hours is a TWA at the criterion.
TEST(ProtectedLevel, ByNRR) {
    struct Case {
        std::int16_t mode, type;
        const char* weight;
        float level; // 90 less (29, less 7 for A) times the derating
    };

    for (const Case& c : {Case{eHPDModeUSOSHA, 0, "A", 79}, Case{eHPDModeUSOSHA, 1, "A", 79},
                          Case{eHPDModeUSNIOSH, 1, "A", 84.5F}, Case{eHPDModeUSNIOSH, 0, "C", 75.5F}}) {
        Wearer wearer;
        wearer.mode(c.mode);
        wearer.log.FreqWeightA(c.weight);
        wearer.log.Exchange = 5;
        wearer.log.DoseMTCumA.Value(100);
        wearer.log.StartDate.setDate("03/06/2024", wearer.session.locale);
        wearer.log.EndDate = wearer.log.StartDate;
        wearer.log.EndTime.Hours = 8;
        wearer.hp.Tipe = c.type;
        wearer.hp.NRR = 29;
        EXPECT_NEAR(wearer.level(), c.level, 1e-3) << c.mode << c.type << c.weight;
        EXPECT_EQ(wearer.level(kCorrectionFourDecibels), wearer.level());
        wearer.log.DoseMTCumA.Value(0);
        EXPECT_EQ(wearer.level(), -1);
        wearer.log.EndTime.Hours = 0;
        EXPECT_EQ(wearer.level(), -1);
    }
}

TEST(ProtectedLevel, NothingThatFitsGivesMinusOne) {
    Wearer wearer;
    wearer.setOctaves(20, 3);
    EXPECT_EQ(wearer.level(), -1);
    Wearer empty(modeFullOctave);
    empty.hp.SD(1) = 3; // data, but no mean
    EXPECT_EQ(empty.level(), -1);
}

TEST(Correction, TextsAreReadBack) {
    TestSession test;
    EXPECT_EQ(correctionOf(test.session, "None", eHPDModeEUHSE), 0);
    EXPECT_EQ(correctionOf(test.session, "2 std devs", eHPDModeUSOSHA), 1);
    EXPECT_EQ(correctionOf(test.session, "4dB", eHPDModeUSOSHA), 2);
    EXPECT_EQ(correctionOf(test.session, "1 std dev", eHPDModeEUHSE), 3);
    EXPECT_EQ(correctionOf(test.session, "?", eHPDModeEUHSE), 2);
    EXPECT_EQ(correctionOf(test.session, "?", eHPDModeUSNIOSH), 0);
}

} // namespace
} // namespace kestrane

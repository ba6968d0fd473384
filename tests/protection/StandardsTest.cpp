#include "model/Acoustics.h"
#include "protection/Attenuation.h"
#include "protection/RankTable.h"

#include "TestSession.h"

#include <gtest/gtest.h>

#include <cmath>

namespace kestrane {
namespace {

struct Worn : TestSession {
    clsLog log{session};
    clsOptions options;
    clsHP hp;

    explicit Worn(LogMode mode = modeBroadband) {
        log.Mode(mode);
        hp.Name = "A";
    }

    void twoChannels(float a, float c) {
        log.IsChannelBOn = true;
        log.FreqWeightA("A");
        log.FreqWeightB("C");
        log.LeqCumA(0).Value(a);
        log.LeqCumB.Value(c);
    }

    void rating(float high, float medium, float low, float snr) {
        hp.High = high;
        hp.Medium = medium;
        hp.Low = low;
        hp.SNR = snr;
    }

    double level(const std::string& method, CorrectionKind correction = kCorrectionNone) {
        for (const StandardFigure& figure : standardFigures(log, hp, options, correction))
            if (figure.Method == method) return figure.Level;
        return -1;
    }
};

TEST(Standards, PrintedValues) {
    EXPECT_DOUBLE_EQ(predictedReduction(24, 18, 13, -1), 22.5);
    EXPECT_DOUBLE_EQ(predictedReduction(24, 18, 13, 10), 13);
    EXPECT_DOUBLE_EQ(levelByNrr(NrrRule::AppendixB, 98, false, 25), 80);
    EXPECT_DOUBLE_EQ(levelByNrr(NrrRule::AppendixB, 98, true, 25), 73);
    EXPECT_DOUBLE_EQ(levelByNrr(NrrRule::HalfOf, 98, false, 25), 89);
    EXPECT_DOUBLE_EQ(levelByNrr(NrrRule::HalfOf, 98, true, 25), 85.5);
    EXPECT_DOUBLE_EQ(levelByNrr(NrrRule::Muff, 98, false, 25), 86.25);
    EXPECT_DOUBLE_EQ(levelByNrr(NrrRule::FormablePlug, 98, false, 25), 92.5);
    EXPECT_DOUBLE_EQ(levelByNrr(NrrRule::OtherPlug, 98, true, 25), 90.5);
}

TEST(Standards, TwoChannelsGiveHmlSnrAndThreeOrFourByNrr) {
    Worn worn;
    worn.twoChannels(104.02F, 103.02F);
    worn.rating(23.6F, 18.4F, 12.5F, 20.5F); // whole before use: 24, 18, 13, 21
    worn.hp.NRR = 25;
    EXPECT_NEAR(worn.level("HML"), 81.52, 1e-4);
    EXPECT_NEAR(worn.level("SNR"), 82.02, 1e-4);
    const auto figures = standardFigures(worn.log, worn.hp, worn.options, kCorrectionNone);
    ASSERT_EQ(figures.size(), 6U);
    EXPECT_EQ(figures[0].Rounded(), 82);
    EXPECT_NEAR(figures[0].Plus4(), 85.52, 1e-4);
    worn.hp.Tipe = 1;
    EXPECT_EQ(standardFigures(worn.log, worn.hp, worn.options, kCorrectionNone).size(), 5U);
    worn.log.LeqCumB.Value(0);
    worn.log.LeqCumA(0).Value(0);
    EXPECT_TRUE(standardFigures(worn.log, worn.hp, worn.options, kCorrectionNone).empty()) << "no levels";
}

// Bands of one level each, so that a hand sum has one or two terms.
TEST(Standards, OctaveBandsGoByTheirLinearLevels) {
    Worn worn(modeFullOctave);
    worn.log.FreqWeightA("Z");
    worn.log.LeqCumA("63").Value(110);
    worn.log.LeqCumA("1k").Value(90);
    for (int band = 1; band <= kProtectorBands; ++band) {
        worn.hp.Mean(band) = 20;
        worn.hp.SD(band) = 3;
    }
    worn.rating(24, 18, 13, 21);
    worn.hp.NRR = 25;
    const double a63 = 110 - 26.2 - 17; // 66.8
    EXPECT_NEAR(worn.level("Octave"), levelOf(energyOf(a63) + energyOf(73)), 1e-4);
    EXPECT_NEAR(worn.level("Octave", kCorrectionTwoDeviations), worn.level("Octave") + 3, 1e-4);
    EXPECT_NEAR(worn.level("SNR from bands"), levelOf(energyOf(109.2) + energyOf(90)) - 21, 1e-4);
    EXPECT_NEAR(worn.level("NRR OSHA App. B from bands"), levelOf(energyOf(83.8) + energyOf(90)) - 18, 1e-4);
    const double plain = worn.level("Octave");
    worn.log.FreqWeightA("A"); // the same sound under A
    worn.log.LeqCumA("63").Value(110 - 26.2F);
    EXPECT_NEAR(worn.level("Octave"), plain, 1e-4);
    worn.hp.Mean(1) = 0;
    EXPECT_NEAR(worn.level("Octave"), 73, 1e-4) << "from 125 Hz";
    worn.hp.Mean(8) = 0;
    EXPECT_EQ(worn.level("Octave"), -1) << "a band above is missing";
}

TEST(Standards, VerdictAtEachBoundary) {
    struct Case {
        double level, action;
        Verdict verdict;
    };

    for (const Case& c :
         {Case{80.01, 80, Verdict::Insufficient}, Case{80, 80, Verdict::Acceptable},
          Case{75.01, 80, Verdict::Acceptable}, Case{75, 80, Verdict::Good}, Case{70, 80, Verdict::Good},
          Case{69.99, 80, Verdict::Acceptable}, Case{65, 80, Verdict::Acceptable},
          Case{64.99, 80, Verdict::OverProtected}, Case{85, 85, Verdict::Acceptable}, Case{80, 85, Verdict::Good},
          Case{69.9, 85, Verdict::OverProtected}, Case{NAN, 85, Verdict::None}})
        EXPECT_EQ(verdictOf(c.level, c.action), c.verdict) << c.level << " by " << c.action;
}

TEST(Standards, ProtectorsAreRankedByVerdictThenByDistance) {
    Worn worn;
    worn.twoChannels(100, 100);
    std::vector<clsHP> list;
    for (const auto& [name, snr] :
         {std::pair{"loud", 15.F}, {"none", 0.F}, {"silent", 40.F}, {"edge", 30.F}, {"good", 27.F}, {"fair", 22.F}}) {
        clsHP& hp = list.emplace_back();
        hp.Name = name;
        hp.SNR = snr;
    }
    const auto names = [&](CorrectionKind correction) {
        std::string text;
        for (const RankedProtector& ranked : rankProtectors(worn.log, list, worn.options, correction))
            text += ranked.Protector->Name + " " + std::string(verdictName(ranked.Verdict)) + "; ";
        return text;
    };
    EXPECT_EQ(names(kCorrectionNone),
              "good good; edge good; fair acceptable; silent over-protected; loud insufficient; "
              "none none; ");
    EXPECT_EQ(names(kCorrectionFourDecibels), "edge good; good acceptable; silent over-protected; fair insufficient; "
                                              "loud insufficient; none none; ");
    const RankedProtector best = rankProtectors(worn.log, list, worn.options, kCorrectionNone).front();
    EXPECT_EQ(best.Method, "SNR");
    EXPECT_EQ(best.Result, 73);
    EXPECT_EQ(best.Standard, 73);
}

TEST(Standards, AnOctaveLogIsJudgedFromItsBandsWhereTheComparisonHasNoMethod) {
    Worn worn(modeFullOctave);
    worn.log.FreqWeightA("Z");
    worn.log.LeqCumA("1k").Value(95);
    worn.rating(24, 18, 13, 21);
    const StandardJudgement judged = judgeByStandards(worn.log, worn.hp, worn.options, kCorrectionNone, "", -1);
    ASSERT_TRUE(judged.Chosen);
    EXPECT_EQ(judged.Chosen->Method, "HML from bands");
    EXPECT_NEAR(*judged.Level, 95 - 21, 1e-4); // C-A 0: M + (H - M) / 2
    const auto none = judgeByStandards(worn.log, worn.hp, worn.options, kCorrectionNone, "HSE", NAN);
    EXPECT_EQ(std::pair(none.Level.has_value(), none.Verdict), std::pair(false, Verdict::None));
    worn.options.HPDCalcMethod = "SNR";
    EXPECT_EQ(judgeByStandards(worn.log, worn.hp, worn.options, kCorrectionNone, "", -1).Chosen->Method,
              "SNR from bands");
}

TEST(RankTable, SaysWhatEachMethodGivesAndCountsTheTimeNotWorn) {
    Worn worn;
    worn.twoChannels(90, 92);
    worn.hp.SNR = 17; // 92 less 17 is 75, at the edge of good
    worn.hp.NRR = 20;
    std::vector<clsHP> list = {clsHP(), worn.hp, worn.hp, worn.hp};
    list[2].Tipe = 1; // a muff, 4 dB weaker
    list[2].SNR = 13;
    RankTable table = rankTable(worn.log, list, worn.options, kCorrectionNone, 1);
    ASSERT_EQ(table.Rows.size(), 4U); // the two plugs, the muff, and the one without figures
    EXPECT_EQ(table.Rows[0].Cells, (std::vector<std::string>{"A", "Earplug", "\u2713 good", "SNR", "75.0", "", "",
                                                             "75.0", "77.0", "83.5", "87.0", "79.0"}))
        << "NRR 20 from 90 dB(A): less 13, half of 13, and 10 less 7 for a formable plug";
    EXPECT_EQ(table.Rows[3].Verdict, Verdict::None);
    EXPECT_EQ(levelUnderBoth(table, table.Rows[0], table.Rows[2]), 75 - 5);
    EXPECT_FALSE(levelUnderBoth(table, table.Rows[0], table.Rows[1])) << "two plugs";
    EXPECT_FALSE(levelUnderBoth(table, table.Rows[2], table.Rows[3]));
    EXPECT_EQ(rankText(table).substr(0, 5), "Name\t");
    table = rankTable(worn.log, list, worn.options, kCorrectionNone, 0.5);
    EXPECT_NE(rankText(table).find("\r\nWorn for 50 % of the time"), std::string::npos);
    EXPECT_NEAR(*table.Rows[0].Level, 87.1249, 0.0001); // 10 lg (0.5 10^7.5 + 0.5 10^9)
    EXPECT_EQ(table.Rows[0].Verdict, Verdict::Insufficient);
    EXPECT_EQ(table.Rows[0].Cells[RankTable::VerdictColumn], "\u2717 insufficient (87.1)");
    EXPECT_NEAR(*levelUnderBoth(table, table.Rows[0], table.Rows[2]), 87.0329, 0.0001); // 10 lg (0.5 10^7 + 0.5 10^9)
}

} // namespace
} // namespace kestrane

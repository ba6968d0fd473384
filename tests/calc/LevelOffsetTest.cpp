#include "calc/LevelOffset.h"

#include "TestSession.h"
#include "calc/BandLevels.h"

#include <gtest/gtest.h>

namespace kestrane {
namespace {

struct OctaveRows : TestSession {
    clsLog log{session};

    OctaveRows() {
        log.Mode(modeFullOctave);
        log.Exchange = 3;
        log.LogIntervals.setArraySize(3);
    }

    void set(Quantity quantity, int band, std::size_t row, float level) {
        log.LogIntervals.Columns().setLevel(quantity, band, row, {level, level});
    }

    Level at(Quantity quantity, int band, std::size_t row) const {
        return log.LogIntervals.Columns().level(quantity, band, row);
    }
};

TEST(LevelOffset, MovesLevelsDosesAndExposuresOfLogAndRows) {
    OctaveRows octave;
    clsLog& log = octave.log;
    octave.set(Quantity::LeqA, 4, 1, 80);
    octave.set(Quantity::PeakB, 0, 0, 3);
    octave.set(lnQuantity(2), 1, 2, 60);
    octave.set(Quantity::DoseA, 0, 1, 50);
    octave.set(Quantity::DoseA, 0, 2, 50);
    octave.set(Quantity::Pa2hA, 0, 1, 1);
    IntervalColumns& rows = log.LogIntervals.Columns();
    rows.set(rows.Exchange, 2, std::int16_t{5});
    log.LmaxCumA(4).Value(90);
    log.LnCumA(2, 0).Value(70);
    log.DoseETCumA.Value(40);
    log.Pa2hCumA.Value(2);
    log.SELCumB.Value(100);
    log.LeqCumA(0).Value(82);
    log.DoseLogIntervals.resize(2);
    log.DoseLogIntervals[0].Leq.Value(82);
    log.DoseLogIntervals[1].Leq.Value(90);

    addToLevels(log, -3);
    EXPECT_EQ(octave.at(Quantity::LeqA, 4, 1), (Level{77, 77}));
    EXPECT_EQ(octave.at(Quantity::LeqA, 4, 0), Level()) << "absent";
    EXPECT_GT(octave.at(Quantity::PeakB, 0, 0).CalcValue, 0) << "a level that comes to 0 is not lost";
    EXPECT_LT(octave.at(Quantity::PeakB, 0, 0).CalcValue, 0.001F);
    EXPECT_EQ(octave.at(lnQuantity(2), 1, 2).CalcValue, 57);
    EXPECT_FLOAT_EQ(octave.at(Quantity::DoseA, 0, 1).CalcValue, 25);
    EXPECT_NEAR(octave.at(Quantity::DoseA, 0, 2).CalcValue, 32.988, 0.001) << "50 / 2^(3/5), by the rate of the row";
    EXPECT_NEAR(octave.at(Quantity::Pa2hA, 0, 1).CalcValue, 0.50119, 1e-5);
    EXPECT_EQ(log.LmaxCumA(4).CalcValue(), 87);
    EXPECT_EQ(log.LnCumA(2, 0).CalcValue(), 67);
    EXPECT_EQ(log.LnCumA(2, 1).CalcValue(), 0);
    EXPECT_FLOAT_EQ(log.DoseETCumA.CalcValue(), 20);
    EXPECT_NEAR(log.Pa2hCumA.CalcValue(), 1.00237, 1e-5);
    EXPECT_EQ(log.SELCumB.CalcValue(), 97);
    EXPECT_EQ(log.DoseLogIntervals[0].Leq.CalcValue(), 79) << "the level of the log";
    EXPECT_EQ(log.DoseLogIntervals[1].Leq.CalcValue(), 90) << "one that was typed";
}

TEST(LevelOffset, ChangesADoseByTheRateThatItWasMadeWith) {
    OctaveRows octave;
    clsLog& log = octave.log;
    log.ExchangeDose = 5; // of the file, before the user chose 3
    octave.set(Quantity::DoseA, 0, 0, 50);
    log.DoseETCumA.Value(40);
    log.DoseMTCumA.Value(40);
    log.DoseMTCumA.CalcValue(50); // computed by the rate of now
    addToLevels(log, 3);
    EXPECT_NEAR(octave.at(Quantity::DoseA, 0, 0).CalcValue, 75.786, 0.001) << "50 * 2^(3/5)";
    EXPECT_NEAR(log.DoseETCumA.CalcValue(), 60.629, 0.001);
    EXPECT_EQ(log.DoseETCumA.Value(), log.DoseETCumA.CalcValue()) << "still the instrument's figure";
    EXPECT_FLOAT_EQ(log.DoseMTCumA.CalcValue(), 100);
}

TEST(BandLevels, GiveTheLevelOfEachRow) {
    OctaveRows octave;
    octave.log.FreqWeightA("Z");
    EXPECT_TRUE(levelsOfRowsFromBands(octave.log, Quantity::LeqA, "A").empty());
    octave.set(Quantity::LeqA, octave.log.e("1k"), 0, 80);
    octave.set(Quantity::LeqA, octave.log.e("125"), 0, 96.1F);
    octave.set(Quantity::LeqA, octave.log.e("4k"), 2, 70);
    const std::vector<float> levels = levelsOfRowsFromBands(octave.log, Quantity::LeqA, "A");
    ASSERT_EQ(levels.size(), 3U);
    EXPECT_NEAR(levels[0], 83.0103, 1e-3) << "80 dB twice: 96.1 dB less 16.1 dB";
    EXPECT_EQ(levels[1], 0);
    EXPECT_NEAR(levels[2], 71, 1e-3);
}

} // namespace
} // namespace kestrane

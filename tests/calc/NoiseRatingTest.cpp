#include "calc/NoiseRating.h"

#include "TestSession.h"

#include <gtest/gtest.h>

namespace kestrane {
namespace {

struct RatedLog : TestSession {
    clsLog log{session};

    explicit RatedLog(LogMode mode) { log.Mode(mode); }

    void level(const char* band, float figure) { log.LeqCumA(band).Value(figure); }
};

TEST(NoiseRating, TheHighestBandRatingRoundedUpIsTheLevel) {
    struct Case {
        const char* band;
        float level;
        std::int32_t rating;
    };

    constexpr Case kCases[] = {
        {"1k", 0, 8},      // nothing measured: the 8k constants alone, 8 / 1.03 = 7.77
        {"1k", 72, 72},    // whole
        {"1k", 72.5F, 73}, // a half that rounds to even, down
        {"63", 80, 36},    // 80 - 35.4 / 0.79 = 35.19
        {"8k", 65, 73},    // 65 + 8 / 1.03 = 72.77
        {"16k", 120, 8},   // a band without constants
    };
    for (const LogMode mode : {modeFullOctave, modeThirdOctave}) {
        for (const Case& c : kCases) {
            RatedLog rated(mode);
            rated.level(c.band, c.level);
            EXPECT_EQ(noiseRating(rated.log).Level, c.rating) << c.band << " " << c.level;
        }
    }
}

TEST(NoiseRating, ARowHoldsTheCurvesAndTheLogsOwnLevel) {
    RatedLog rated(modeThirdOctave);
    rated.level("63", 91.5F);
    const NoiseRating rating = noiseRating(rated.log);
    ASSERT_EQ(rating.Rows.size(), 9U);
    EXPECT_EQ(rating.Rows.front().Frequency(), "31.5");
    EXPECT_EQ(rating.Rows.back().Frequency(), "8k");

    const clsNoiseRating& row = rating.Rows[1];
    ASSERT_EQ(row.Levels.size(), 26U);
    EXPECT_EQ(row.Levels[20].NoiseRatingLevel, 100);
    EXPECT_FLOAT_EQ(row.Levels[20].SoundLevel(), 114.4F); // 0.79 * 100 + 35.4
    EXPECT_EQ(rating.Rows[5].Levels[20].SoundLevel(), 100);
    EXPECT_FLOAT_EQ(rating.Rows[8].Levels[24].SoundLevel(), 115.6F); // 1.03 * 120 - 8
    EXPECT_EQ(row.Levels.back().Parent, nullptr);
    EXPECT_EQ(row.Levels.back().SoundLevel(), 91.5F);
}

// The rating of the instrument goes by the same curves but for the slope at 500 Hz, which it was told otherwise.
TEST(NoiseRating, TheCurvesRateTheLinearOctaves) {
    struct Curve {
        const char* band;
        double a, b;
    };

    for (const Curve& curve : {Curve{"31.5", 55.4, 0.681},
                               {"63", 35.4, 0.79},
                               {"125", 22, 0.87},
                               {"250", 12, 0.93},
                               {"500", 4.8, 0.974},
                               {"1k", 0, 1},
                               {"2k", -3.5, 1.015},
                               {"4k", -6.1, 1.025},
                               {"8k", -8, 1.03}}) {
        const char* const band = curve.band;
        const auto level = static_cast<float>(curve.a + curve.b * 80);
        clsNoiseRating row;
        row.Frequency(band);
        EXPECT_EQ(row.Multiplier, band == std::string_view("500") ? 0.93F : static_cast<float>(curve.b)) << band;
        EXPECT_EQ(row.ConstantNumber, static_cast<float>(curve.a)) << band;
        RatedLog rated(modeFullOctave);
        EXPECT_FALSE(ratingByCurves(rated.log));
        rated.level(band, level);
        EXPECT_NEAR(*ratingByCurves(rated.log), 80, 1e-4) << band;
        RatedLog thirds(modeThirdOctave);
        thirds.level(band, level - 4.771213F); // a third of the energy
        const int middle = thirds.log.e(band);
        for (const int side : {middle - 1, middle + 1})
            thirds.log.LeqCumA(side).Value(level - 4.771213F);
        EXPECT_NEAR(*ratingByCurves(thirds.log), *ratingByCurves(rated.log), 1e-4) << band;
    }
    RatedLog weighted(modeFullOctave);
    weighted.log.FreqWeightA("A");
    weighted.level("125", 60);
    EXPECT_NEAR(*ratingByCurves(weighted.log), (76.1 - 22) / 0.87, 1e-4);
}

TEST(NoiseRating, ABroadbandLogHasNone) {
    RatedLog rated(modeBroadband);
    rated.log.LeqCumA(0).Value(90);
    EXPECT_TRUE(noiseRating(rated.log).Rows.empty());
    EXPECT_EQ(noiseRating(rated.log).Level, 0);
}

} // namespace
} // namespace kestrane

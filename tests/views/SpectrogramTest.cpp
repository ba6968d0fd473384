#include "views/Spectrogram.h"

#include "ShownLog.h"
#include "views/LevelMap.h"

#include <gtest/gtest.h>

#include <random>

namespace kestrane {
namespace {

constexpr std::size_t kRows = 1000;

// A log with random levels, some of which are missing.
struct NoisyLog : ShownLog {
    NoisyLog() : ShownLog(modeThirdOctave) {
        addRows(kRows);
        std::mt19937 dice(7);
        for (int band = 1; band <= 33; ++band)
            for (std::size_t row = 0; row < kRows; ++row)
                if (dice() % 5 != 0) setLevel(Quantity::LeqA, band, row, static_cast<float>(dice() % 900) / 10 - 5);
    }

    // Row by row, converted by hand.
    float highest(int band, std::size_t begin, std::size_t end, float offset) const {
        float highest = kNullValue;
        for (std::size_t row = begin; row < end; ++row) {
            const float level = log.LogIntervals.Columns().level(Quantity::LeqA, band, row).CalcValue;
            if (level != 0 && !(level + offset <= highest)) highest = level + offset;
        }
        return highest;
    }
};

TEST(LevelMap, FindsTheHighestLevelOfAnyRowsInEachBand) {
    NoisyLog noisy;
    noisy.log.FreqWeightA("Z");
    const LevelMap map(noisy.log, "A");
    const int at63 = noisy.log.e("63");
    ASSERT_EQ(map.BandCount(), 33U);
    ASSERT_EQ(map.BandLabel(static_cast<std::size_t>(at63) - 1), "63");
    std::vector<float> levels(map.BandCount());
    std::mt19937 dice(1);
    for (int i = 0; i < 300; ++i) {
        const std::size_t begin = dice() % kRows;
        const std::size_t end = std::min(kRows, begin + dice() % (i % 2 == 0 ? 5 : 300));
        map.Highest(begin, end, levels);
        const float found = levels[static_cast<std::size_t>(at63) - 1];
        const float wanted = noisy.highest(at63, begin, end, -26.2F);
        EXPECT_TRUE(found == wanted || (isNullValue(found) && isNullValue(wanted))) << begin << ' ' << end;
    }
    map.Highest(kRows + 5, kRows + 9, levels);
    EXPECT_TRUE(isNullValue(levels.front()));
}

TEST(Spectrogram, ShowsTheBandsOverTimeOnAScaleOfRoundLevels) {
    ShownLog shown(modeFullOctave);
    EXPECT_FALSE(hasSpectrogram(shown.log));
    shown.addRows(3);
    shown.setLevel(Quantity::LeqA, 0, 1, 80);
    EXPECT_FALSE(hasSpectrogram(shown.log)) << "the rows have no bands";
    shown.setLevel(Quantity::LeqA, shown.log.e("125"), 1, 71);
    shown.setLevel(Quantity::LeqA, shown.log.e("1k"), 2, 52);
    IntervalColumns& rows = shown.log.LogIntervals.Columns();
    rows.set(rows.isExcluded, 2, std::uint8_t{1});
    ASSERT_TRUE(hasSpectrogram(shown.log));

    const ChartData chart = spectrogramChart(shown.log, "Z");
    EXPECT_EQ(chart.Title, "Spectrogram - Yard");
    EXPECT_EQ(chart.SecondaryTitle, "dB Z");
    EXPECT_EQ(chart.PrimaryRange->Maximum, 10.5) << "eleven octaves";
    EXPECT_EQ(chart.SecondaryRange->Minimum, 50);
    EXPECT_EQ(chart.SecondaryRange->Maximum, 90) << "71 dB under A is 87.1 dB";
    EXPECT_EQ(chart.RowName(1), "03/06/24 09:01:00");
    EXPECT_EQ(chart.ExcludedRows, (std::vector<std::uint8_t>{0, 0, 1}));

    const ChartData spectrum = spectrumChart(shown.log, 1, "C");
    EXPECT_EQ(spectrum.Title, "Spectrum at 03/06/24 09:01:00");
    EXPECT_EQ(spectrum.RowCount, 11U);
    EXPECT_EQ(spectrum.RowName(3), "125 Hz");
    EXPECT_FLOAT_EQ(spectrum.Series.front().Values[3], 71 + 16.1F - 0.2F);
    EXPECT_TRUE(isNullValue(spectrum.Series.front().Values[6]));
}

} // namespace
} // namespace kestrane

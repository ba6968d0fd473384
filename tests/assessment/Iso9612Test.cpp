#include "assessment/Iso9612.h"

#include <gtest/gtest.h>

#include <array>

namespace kestrane {
namespace {

TEST(Iso9612, PrintedAndHandValues) {
    EXPECT_NEAR(*energyMean(std::array{80.1, 82.2, 79.6}), 80.8, 0.05);
    EXPECT_NEAR(*energyMean(std::array{86.5, 92.4, 89.3, 93.2, 87.8, 86.2}), 90.1, 0.05);
    EXPECT_NEAR(*uncertaintyOfMean(std::array{80.1, 82.2, 79.6}), 0.8, 0.05);
    EXPECT_NEAR(*uncertaintyOfMean(std::array{86.5, 92.4, 89.3, 93.2, 87.8, 86.2}), 1.2, 0.05);
    EXPECT_NEAR(*standardDeviation(std::array{88.0, 90.0, 92.0}), 2, 1e-12);
    EXPECT_FALSE(energyMean({}) || uncertaintyOfMean(std::array{80.0}) || standardDeviation(std::array{80.0}));
    EXPECT_NEAR(levelSensitivity(80.8, 5, 84.3), 0.28, 0.005);
    EXPECT_NEAR(levelSensitivity(90.1, 1.5, 84.3), 0.71, 0.005);
    EXPECT_DOUBLE_EQ(durationSensitivity(0.5, 2), 1.085);
    EXPECT_DOUBLE_EQ(uncertaintyOfDuration(4, 6), 1);
}

TEST(Iso9612, TableOfSampling) {
    struct Case {
        std::size_t samples;
        double u1;
        double c1u1; // -1: none
    };

    constexpr Case kCases[] = {
        {3, 0.5, 0.6},   {3, 6, 46.5},   {5, 3, 3.3}, {6, 3, 2.6},  {10, 5, 3.5},   {20, 6, 2.6},
        {30, 6, 2.0},    {4, 1, 1.6},    {9, 2, 1.4}, {29, 3, 0.9}, {1000, 3, 0.7}, // the next lower number
        {5, 1.25, 0.95}, {6, 2.6, 2.04},                                            // between columns
        {3, 0.25, 0.3},  {5, 0, 0},                                                 // below the first
        {5, 6.01, -1},   {2, 1, -1},     {0, 0, -1},
    };
    for (const Case& c : kCases)
        EXPECT_NEAR(samplingUncertainty(c.samples, c.u1).value_or(-1), c.c1u1, 1e-9) << c.samples << ", " << c.u1;
}

TEST(Iso9612, MeasuredTimeByTheSizeOfTheGroup) {
    constexpr std::pair<int, double> kCases[] = {{1, 5},      {5, 5},      {6, 5.5}, {15, 10},
                                                 {16, 10.25}, {40, 16.25}, {41, 17}};
    for (const auto& [workers, hours] : kCases)
        EXPECT_DOUBLE_EQ(minimumMeasuredHours(workers), hours) << workers;
}

} // namespace
} // namespace kestrane

#include "model/Acoustics.h"

#include <gtest/gtest.h>

#include <array>
#include <cmath>

namespace kestrane {
namespace {

struct Worked {
    const char* what;
    double computed;
    double expected;
    double within;
};

// Printed values of the standards and regulations, and hand calculation.
TEST(Acoustics, WorkedValues) {
    const double osha = 16.61;
    const Worked cases[] = {
        {"80 dB, 5 h: part of a day", normalisedTo8Hours(80, 5), 78.0, 0.05},
        {"100 dB, 80 dB for three quarters of the time", levelPartlyProtected(100, 80, 0.75), 94.108, 0.001},
        {"86 dB, 2 h", normalisedTo8Hours(86, 2), 80.0, 0.05},
        {"95 dB, 45 min", normalisedTo8Hours(95, 0.75), 84.7, 0.05},
        {"and back", levelOfNormalised(normalisedTo8Hours(95, 0.75), 0.75), 95, 1e-9},
        {"sum of the three", levelOf(energyOf(78.0) + energyOf(80.0) + energyOf(84.7)), 86.6, 0.05},
        {"3.2 Pa²h", soundExposure(90, 8), 3.2, 1e-6},
        {"1 Pa²h", soundExposure(84.948, 8), 1, 1e-3},
        {"LE of 90 dB for 1 h", soundExposureLevel(90, 3600), 125.56, 0.005},
        {"criterion level for 8 h", doseOf(85, {85, 3}, 8), 100, 1e-9},
        {"half the time", doseOf(85, {85, 3}, 4), 50, 1e-9},
        {"90 dB at 5 dB over 85", doseOf(90, {85, 5}, 8), 200, 1e-4},
        {"115 dB for a quarter of an hour, 90 and 5 dB", doseOf(115, {90, 5}, 0.25), 100, 1e-4},
        {"91 dB for 2 h, 85 and 3 dB", doseOf(91, {85, 3}, 2), 100, 1e-4},
        {"10 % by 90 and 5 dB", levelOfDose(10, 90, osha), 73.4, 0.05},
        {"50 %", levelOfDose(50, 90, osha), 85.0, 0.05},
        {"132 %", twaOfDose(132, {90, 5}), 92.0, 0.05},
        {"200 % by 85 and 3 dB", twaOfDose(200, {85, 3}), 88.0, 1e-9},
        {"400 %", levelOfDose(400, 90, osha), 100.0, 0.05},
        {"a dose of 4 h for 8", doseIn8Hours(50, 4), 100, 1e-9},
        {"and by the hour", dosePerHour(50, 4), 12.5, 1e-9},
        {"80 dB by 90 and 5 dB may last 32 h", allowedHours(80, {90, 5}), 32, 1e-9},
        {"115 dB a quarter of an hour", allowedHours(115, {90, 5}), 0.25, 1e-12},
        {"100 dB by 85 and 3 dB 15 min", allowedHours(100, {85, 3}), 0.25, 1e-12},
        {"part of a dose", dosePart(88, 2, {85, 3}), 50, 1e-9},
        {"mean level of 50 % in 2 h by 90 and 5 dB", averageLevelOfDose(50, {90, 5}, 2), 95, 1e-9},
        {"mean level of 100 % in 8 h", averageLevelOfDose(100, {90, 5}, 8), 90, 1e-9},
        {"points of 85 dB over 8 h", exposurePoints(85, 8), 100, 1e-9},
        {"points of 95 dB over 4 h", exposurePoints(95, 4), 500, 1e-9},
        {"a week of five equal days", weeklyExposure(std::array{84.3, 84.3, 84.3, 84.3, 84.3}), 84.3, 1e-9},
        {"a week of one day with 500 points", weeklyExposure(std::array{91.98970004}), 85, 1e-6},
        {"6 days of 85 dB", weeklyExposure(std::array{85., 85., 85., 85., 85., 85.}), 85.79, 0.005},
        {"20 dB less for half of the time", levelPartlyProtected(100, 80, 0.5), 97.03, 0.005},
    };
    for (const Worked& worked : cases)
        EXPECT_NEAR(worked.computed, worked.expected, worked.within) << worked.what;
    EXPECT_TRUE(std::isinf(levelOf(0)) && std::isinf(levelOfDose(0, 85, 10))) << "no energy, no dose: no level";
}

} // namespace
} // namespace kestrane

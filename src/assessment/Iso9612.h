// The uncertainty of an exposure by ISO 9612:2009, its Annex C. Pure functions of numbers. Levels and uncertainties are
// dB, times hours; nothing stands for a figure that there is none of.
#pragma once

#include <optional>
#include <span>

namespace kestrane {

constexpr double kCoverageFactor = 1.65;     // one-sided, 95 %
constexpr double kPositionUncertainty = 1.0; // u3
constexpr double kClass1Uncertainty = 0.7;   // u2
constexpr double kOtherUncertainty = 1.5;    // u2 of class 2 and of dosimeters

// The energy mean of samples (equations 7 and 11). Nothing for none.
std::optional<double> energyMean(std::span<const double> levels);

// u1a: the standard deviation of the arithmetic mean of samples, (C.6). The same for several durations. Nothing below
// two of them.
std::optional<double> uncertaintyOfMean(std::span<const double> samples);

// u1 of the samples of a job: their standard deviation, (C.12). Nothing below two of them.
std::optional<double> standardDeviation(std::span<const double> samples);

// u1b of a duration that lies between two, (C.7).
double uncertaintyOfDuration(double shortest, double longest);

// c1a of a task, (C.4), and c1b, (C.5), in dB an hour.
double levelSensitivity(double level, double hours, double lex8h);
double durationSensitivity(double c1a, double hours);

// c1u1 of Table C.4: the row of the next lower number of samples, straight between two columns, and down to 0 at 0.
// Nothing below 3 samples and above 6 dB.
constexpr double kHighestU1 = 6;
std::optional<double> samplingUncertainty(std::size_t samples, double u1);

// How long a group of so many workers is to be measured, (Table 1). Above 40 workers the group might be split instead.
constexpr int kLargestGroup = 40;
double minimumMeasuredHours(int workers);

} // namespace kestrane

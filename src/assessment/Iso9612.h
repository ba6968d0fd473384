// The uncertainty of an exposure by Annex C of ISO 9612:2009. These are pure functions of numbers. Levels and
// uncertainties are in dB, times in hours; a figure that cannot be computed is nothing.
#pragma once

#include <optional>
#include <span>

namespace kestrane {

constexpr double kCoverageFactor = 1.65;     // one-sided, 95 %
constexpr double kPositionUncertainty = 1.0; // u3
constexpr double kClass1Uncertainty = 0.7;   // u2
constexpr double kOtherUncertainty = 1.5;    // u2 of class 2 and of dosimeters

// The energy mean of samples (equations 7 and 11). Nothing without samples.
std::optional<double> energyMean(std::span<const double> levels);

// u1a: the standard deviation of the arithmetic mean of samples, (C.6); the formula also serves for several durations.
// Nothing for fewer than two samples.
std::optional<double> uncertaintyOfMean(std::span<const double> samples);

// u1 of the samples of a job: their standard deviation, (C.12). Nothing for fewer than two samples.
std::optional<double> standardDeviation(std::span<const double> samples);

// u1b of a duration in hours that lies between shortest and longest, (C.7).
double uncertaintyOfDuration(double shortest, double longest);

// c1a of a task, (C.4), and its c1b, (C.5), in dB per hour.
double levelSensitivity(double level, double hours, double lex8h);
double durationSensitivity(double c1a, double hours);

// c1u1 of Table C.4: the row of the largest number in the table that is not above samples, interpolated linearly
// between two columns; 0 for u1 = 0. Nothing for fewer than 3 samples and for u1 above 6 dB.
constexpr double kHighestU1 = 6;
std::optional<double> samplingUncertainty(std::size_t samples, double u1);

// How many hours a group of so many workers is to be measured (Table 1). A group of more than 40 workers may be split
// instead.
constexpr int kLargestGroup = 40;
double minimumMeasuredHours(int workers);

} // namespace kestrane

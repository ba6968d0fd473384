// The formulas between a level, a time and an exposure, each in one place. They are pure functions of numbers: they
// know no log, do not round to 0.1 dB and keep no state. Levels are in dB relative to 20 micropascals, doses in
// percent, times in hours unless a name says otherwise. Results are doubles; a caller that stores one as a single
// checks its range.
//
// A level of 0 is a number like any other here, although the rest of the program uses 0 for "absent": the caller
// decides whether there is a figure at all. An energy or a dose of 0 has no level, so those functions return minus
// infinity for 0, and not-a-number below 0.
#pragma once

#include <span>

namespace kestrane {

constexpr double kReferenceHours = 8;                        // the working day; ISO 1999, ISO 9612
constexpr double kNepersPerDecibel = 0.23025850929940456840; // ln(10) / 10: an energy is exp(level times this)

// Energy relative to that of 0 dB, 10^(L/10), and the level of an energy. Sums and means of energy are built on them
// (IEC 61672-1).
double energyOf(double level);
double levelOf(double energy);

// The level that carries the same energy in 8 h as this level in its time: L + 10 lg(T/8). LEP,d and LEX,8h (ISO 1999).
// Minus infinity for a time of 0.
double normalisedTo8Hours(double level, double hours);

// The level in this time whose level normalised to 8 h is normalised: the inverse of normalisedTo8Hours.
double levelOfNormalised(double normalised, double hours);

// LE, also called SEL: L + 10 lg(T in seconds) (IEC 61672-1). Minus infinity for a time of 0.
double soundExposureLevel(double level, double seconds);

// Sound exposure in Pa²h: T times the square of 20 micropascals times 10^(L/10) (IEC 61252). The square, 4E-10, is a
// single-precision constant and is multiplied by the time first; this order of rounding is the program's own and is
// meant.
double soundExposure(double level, float hours);

// The number of dB that make a dose ten times as large: exchange rate / lg 2 (ANSI S1.25), 9.97 for 3 dB and 16.61 for
// 5 dB.
double decibelsPerDecade(double exchange);

// What a dose is made by, dB: the criterion level, which gives 100 % in 8 h, and the exchange rate, by which a level
// must rise for the dose to double.
struct DoseRule {
    double Criterion;
    double Exchange;
};

// Dose in percent of a level held for a time: 12.5 T 10^((L - criterion) / decibelsPerDecade) (ANSI S1.25; 100 at the
// criterion level for 8 h). The number of dB per decade and the exponent are rounded to single precision (instrument
// convention). There is no dose for an exchange rate of 0: the caller decides what to use instead. Raises 6 when the
// exponent fits no single.
double doseOf(float level, DoseRule rule, double hours);

// TWA, the level that gives a dose when held for 8 h: (exchange rate / ln 2) ln(D/100) + criterion (29 CFR 1910.95
// Appendix A, with the exact factor in place of 16.61).
double twaOfDose(double dose, DoseRule rule);

// The level of a dose by a printed or rounded factor, perDecade, in dB for ten times the dose: criterion + perDecade
// lg(D/100).
double levelOfDose(double dose, double criterion, double perDecade);

// LAVG, the mean level over a time by an exchange rate: criterion + (exchange rate / lg 2) lg(D / (12.5 T)) (ANSI
// S1.25). It equals LAeq only for an exchange rate of 3 dB.
double averageLevelOfDose(double dose, DoseRule rule, double hours);

// How many hours a level may last for a dose of 100 %: 8 / 2^((L - criterion) / exchange rate) (29 CFR 1910.95 Table
// G-16a, NIOSH 98-126). The exchange rate must not be 0.
double allowedHours(double level, DoseRule rule);

// The dose in percent that a level makes when it is held for a time: 100 T / allowedHours, without the roundings of
// doseOf.
double dosePart(double level, double hours, DoseRule rule);

// Exposure points: 100 for 85 dB over 8 h, 100 (T/8) 10^((L - 85) / 10) (HSE L108). Points of several exposures add up.
double exposurePoints(double level, double hours);

// LEX,w in dB from the LEX,8h of each day of a week: 10 lg[(1/5) of the sum of 10^(LEX/10)]. The divisor is 5 whatever
// the number of days (Directive 2003/10/EC, ISO 1999). Minus infinity for no day.
double weeklyExposure(std::span<const double> days);

// The level over the same time when a protector that lowers it to protectedLevel is worn for a share (0..1) of the
// time.
double levelPartlyProtected(double level, double protectedLevel, double share);

// The dose in percent that the same noise would give in 8 h, and the dose that it gives in one hour. Infinite for a
// time of 0.
double doseIn8Hours(double dose, double hours);
double dosePerHour(double dose, double hours);

} // namespace kestrane

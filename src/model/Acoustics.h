// The formulas between a level, a time and an exposure, each in one place. Pure functions of numbers: they know no log,
// round nothing to 0.1 dB and keep no state. Levels are in dB relative to 20 micropascals, doses in percent, times in
// hours unless a name says otherwise. Results are in double; who stores one in single precision checks its range.
//
// Boundaries: a level of 0 is a number here like any other, though the program uses 0 for "absent"; who calls decides
// whether there is a figure at all. An energy or a dose of 0 has no level: those functions return minus infinity, and
// not-a-number below 0.
#pragma once

#include <span>

namespace kestrane {

constexpr double kReferenceHours = 8;                        // of a working day; ISO 1999, ISO 9612
constexpr double kNepersPerDecibel = 0.23025850929940456840; // ln(10) / 10: energy is exp(level times this)

// 10^(L/10): energy relative to that of 0 dB, and back. The basis of energy sums and means (IEC 61672-1).
double energyOf(double level);
double levelOf(double energy);

// The level that carries the same energy in 8 h as this level in its time: L + 10 lg(T/8). LEP,d and LEX,8h (ISO 1999).
// Minus infinity for a time of 0.
double normalisedTo8Hours(double level, double hours);

// The level whose normalised level this is: the inverse for the same time.
double levelOfNormalised(double normalised, double hours);

// LE, also called SEL: L + 10 lg(T in seconds) (IEC 61672-1). Minus infinity for a time of 0.
double soundExposureLevel(double level, double seconds);

// Sound exposure in Pa²h: T times the square of 20 micropascals times 10^(L/10) (IEC 61252). The square, 4E-10, is a
// single-precision constant, and that product with the time is the program's own order of rounding.
double soundExposure(double level, float hours);

// How many dB make a dose ten times as large: exchange rate / lg 2 (ANSI S1.25), 9.97 for 3 dB and 16.61 for 5 dB.
double decibelsPerDecade(double exchange);

// Dose in percent of a level held for a time: 12.5 T 10^((L - criterion) / decibelsPerDecade) (ANSI S1.25; 100 at the
// criterion level for 8 h). The dB per decade and the exponent are rounded to single precision (instrument convention).
// An exchange rate of 0 has no dose: the caller decides what stands in its place. Raises 6 when the exponent fits no
// single.
double doseOf(float level, double criterion, double exchange, double hours);

// TWA, the level that gives a dose when held for 8 h: (exchange rate / ln 2) ln(D/100) + criterion (29 CFR 1910.95
// Appendix A, with the exact factor in place of 16.61).
double twaOfDose(double dose, double criterion, double exchange);

// The same by a factor that is printed or rounded, in dB for ten times the dose: criterion + perDecade lg(D/100).
double levelOfDose(double dose, double criterion, double perDecade);

// The mean level by an exchange rate over a time, LAVG: criterion + (exchange rate / lg 2) lg(D / (12.5 T)) (ANSI
// S1.25). It is LAeq for a rate of 3 dB only.
double averageLevelOfDose(double dose, double criterion, double exchange, double hours);

// How long a level may last for a dose of 100 %: 8 / 2^((L - criterion) / exchange rate) (29 CFR 1910.95 Table G-16a,
// NIOSH 98-126). Not for an exchange rate of 0.
double allowedHours(double level, double criterion, double exchange);

// The part of a dose that a level held for a time makes: 100 T / allowedHours, without the roundings of doseOf.
double dosePart(double level, double hours, double criterion, double exchange);

// Exposure points: 100 for 85 dB over 8 h, 100 (T/8) 10^((L - 85) / 10) (HSE L108). They add up.
double exposurePoints(double level, double hours);

// LEX,w of the LEX,8h of the days of a week, dB: 10 lg[(1/5) of the sum of 10^(LEX/10)], whatever the number of days
// (Directive 2003/10/EC, ISO 1999). Minus infinity for no day.
double weeklyExposure(std::span<const double> days);

// The level of the same time with a protector that takes it to protectedLevel and is worn for a share (0..1) of it.
double levelPartlyProtected(double level, double protectedLevel, double share);

// The dose that 8 h of the same noise would give, and what an hour of it gives. Infinite for a time of 0.
double doseIn8Hours(double dose, double hours);
double dosePerHour(double dose, double hours);

} // namespace kestrane

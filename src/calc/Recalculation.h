// From levels and times to exposure figures: LEP,d, dose, dose per hour, LE, Pa2Hr and TWA of a log. Which figure is
// computed from what, by which time and in which order stands here; the formulas stand in model/Acoustics.h. Figures
// are single precision, and nothing is rounded to 0.1 dB.
#pragma once

#include "model/clsInsData.h"

#include <cstdint>
#include <functional>
#include <string>

namespace kestrane {

// How a recalculation treats figures that are there already.
constexpr int kCalcExposureTime = 0;  // the exposure time alone has changed
constexpr int kCalcFromIntervals = 1; // fill in what is missing, of a log with rows only
constexpr int kCalcAfterZoom = 2;     // fill in what is missing
constexpr int kCalcUnmarked = 3;      // everything afresh, without marking the log
constexpr int kCalcFull = 4;          // everything afresh; marks the log and rebuilds its plottable table

// The criterion levels and exchange rates that the program offers, dB.
constexpr int kCriterionLevels[] = {75, 80, 85, 90};
constexpr int kExchangeRates[] = {3, 4, 5};

// Recalculates a log. With rows the background server does the pass over them and this returns at once
// (IntervalsRecalculating); a recalculation under way is dropped. The log's change event tells when the figures stand.
// ended, if given, is called when a pass over rows has ended, well or with HasFailedRecalc.
void RecalcValues(clsLog& log, int iCalcMode, const std::function<void()>& ended = {});

// The figures that derive from the levels as they stand, in a fixed order, then the change event.
void CompleteRecalcProcess(clsLog& log);

// Gives the log a criterion level and an exchange rate, dB, and keeps in mind which ones its reported figures were made
// with. Nothing is recalculated.
void setCriterion(clsLog& log, std::int16_t criterion, std::int16_t exchange);

// Says that a cumulative figure of a channel is the instrument's own, made with another criterion level or exchange
// rate than the log has now, or not with its exposure time: "as reported (85 dB, 3 dB, not for 12:00:00)". Empty for
// any other figure.
std::string reportedNote(const clsLog& log, int channel, int parameter);

// Tells of a change that needs no calculation.
void AmendedDisplayValues(const clsLog& log);

// Of every log: all of them with bForce; else by the setting RecalcOnOpen, asking first for long ones, and without the
// setting those never fully calculated. Logs left alone get their plottable table, unless rows are to come. Where rows
// are to come that a selection leaves out, the figures stand as they are and RecalcWithRows is set.
void RecalcValues(clsInsData& data, bool bForce);

float CalcTWACumA(const clsLog& log); // dB; 0 unless channel A is weighted A or C; raises 6 for a negative dose
float TWA8CumA(const clsLog& log);    // dB: the level that gives the measured dose when normalised to 8 hours

// The channel's figure to use where only A or C weighting will do: channel A's, else channel B's, else 0.
float DoseET_NRR(const clsLog& log);
float DoseMT_NRR(const clsLog& log);
float Leq_NRR(const clsLog& log);

} // namespace kestrane

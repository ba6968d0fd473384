// From levels and times to exposure figures: LEP,d, dose, dose per hour, LE, Pa2Hr and TWA of a log. This file decides
// which figure is computed from what, by which time and in which order; the formulas are in model/Acoustics.h. Figures
// are in single precision, and nothing is rounded to 0.1 dB.
#pragma once

#include "model/clsInsData.h"

#include <cstdint>
#include <functional>
#include <string>

namespace kestrane {

// The criterion levels and exchange rates that the program offers, dB.
constexpr int kCriterionLevels[] = {75, 80, 85, 90};
constexpr int kExchangeRates[] = {3, 4, 5};

// Recalculates a log. When the log has rows, the background server makes the pass over them and this function returns
// at once (IntervalsRecalculating); a recalculation that is in progress is dropped. The log's change event says when
// the figures are there. ended, if given, is called when a pass over rows has ended, successfully or with
// HasFailedRecalc.
void RecalcValues(clsLog& log, CalcMode iCalcMode, const std::function<void()>& ended = {});

// Derives figures from the present levels, in a fixed order, and then raises the change event.
void CompleteRecalcProcess(clsLog& log);

// Makes the overall Leq, Lmin and Lmax of a log with bands from its bands, as for a log without rows, and derives the
// figures of channel A from them, also those that a meter has reported itself. An overall level without bands stays.
// Rows are not looked at.
void RecalcFromBands(clsLog& log);

// A criterion level and an exchange rate, dB.
struct CriterionRate {
    std::int16_t Criterion;
    std::int16_t Exchange;
};

// Gives the log a criterion level and an exchange rate, in dB, and remembers those that its reported figures were made
// with. Nothing is recalculated.
void setCriterion(clsLog& log, CriterionRate chosen);

// What the log's reported figures were made with, whatever the log has now.
CriterionRate reportedRule(const clsLog& log);

// The note on a cumulative figure that is the instrument's own although it was made with another criterion level or
// exchange rate than the log has now, or not with its exposure time: "as reported (85 dB, 3 dB, not for 12:00:00)".
// Empty for any other figure.
std::string reportedNote(const clsLog& log, LogChannel channel, Parameter parameter);

// Whether a TWA or a dose per hour is not that of the log's present dose: a pass takes them from the dose of the pass
// before, which is meant, so that another recalculation would change them. A difference that nobody sees does not
// count.
bool isToBeRecalculated(const clsLog& log, LogChannel channel, Parameter parameter);

// Raises the change event for a change that needs no calculation.
void AmendedDisplayValues(const clsLog& log);

// Recalculates the logs of a collection. With bForce all logs are recalculated. Otherwise, with the setting
// RecalcOnOpen, all are, but the user is asked about long ones; without the setting, only those that were never fully
// calculated are. A log that is not recalculated gets its plottable table, unless its rows are still to come. When its
// rows are still to come and it has a selection, its figures stay as they are for now and RecalcWithRows is set.
void RecalcValues(clsInsData& data, bool bForce);

float CalcTWACumA(const clsLog& log); // dB; 0 unless channel A is weighted A or C; raises 6 for a negative dose
void updateTWA(clsLog& log);          // the log's TWA from its exposure dose; stays for a negative dose
float TWA8CumA(const clsLog& log);    // dB; the level that gives the measured dose when normalised to 8 hours

// The channel's figure for calculations that need A or C weighting: channel A's, else channel B's, else 0.
float DoseET_NRR(const clsLog& log);
float DoseMT_NRR(const clsLog& log);
float Leq_NRR(const clsLog& log);

} // namespace kestrane

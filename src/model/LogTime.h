// How long a log is, by the instrument, by its rows or by its start and end; and what follows from the time stamps of
// its rows. Rule: instrument convention.
#pragma once

#include "model/clsLog.h"

#include <cstdint>
#include <string>

namespace kestrane {

enum class Run : bool { Measured, Whole }; // as measured, or from start to end
enum class ExcludedRows : bool { Count, LeftOut };

// The log's time in the unit 's', 'm' or 'h' (any case; 0 for any other), in single precision. The instrument's own
// run time counts first; without one, number of rows times Interval; without rows, or for Run::Whole, the
// whole run from start to end. Excluded rows are never left out of the whole run. Raises 6 past 32
// bits.
float getTime(const clsLog& log, char unit, Run run, ExcludedRows excluded);
float getTimeFromSeconds(char unit, std::int32_t lngSecs);

// The length as text. A log of a month or more loses the whole month, and one that ends before it starts counts back
// from the end of a month.
std::string LogLengthText(const clsLog& log);

// Five minutes or more of data. False when the time cannot be told.
bool lastsFiveMinutes(const clsLog& log, ExcludedRows excluded);

// Percentile levels are shown for five minutes or more of data; a zoomed log goes by the log it was cut from. False
// unless channel is 1 and Ln (1..10) is in use.
bool IsLnCumulativeValid(const clsLog& log, int channel, int ln);

// Derive Interval and IsErraticIntervals, or the dates of the rows, from the rows' time stamps.
void SetInterval(clsLog& log);
void SetSampleDates(clsLog& log);

} // namespace kestrane

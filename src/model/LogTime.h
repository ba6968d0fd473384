// How long a log is, by the instrument, by its rows or by its start and end; and what follows from the time stamps of
// its rows. The rules are instrument convention.
#pragma once

#include "model/clsLog.h"

#include <cstdint>
#include <string>

namespace kestrane {

enum class Run : bool { Measured, Whole }; // the time measured, or the time from start to end
enum class ExcludedRows : bool { Count, LeftOut };

// The length of the log in the unit 's', 'm' or 'h' (any case; 0 for any other unit), in single precision. For
// Run::Measured it is the run time that the instrument reported; when it reported none, the number of rows times
// Interval. Without rows as well, and for Run::Whole, it is the time from start to end, and then excluded rows are
// counted all the same. Raises 6 when the seconds do not fit 32 bits.
float getTime(const clsLog& log, char unit, Run run, ExcludedRows excluded);
float getTimeFromSeconds(char unit, std::int32_t lngSecs);

// The length of the log as text; empty when it cannot be calculated. A log of a month or more loses the whole month
// from the text, and one that ends before it starts counts back from the end of a month; both are meant.
std::string LogLengthText(const clsLog& log);

// Whether there are five minutes or more of data. False when the length cannot be calculated.
bool lastsFiveMinutes(const clsLog& log, ExcludedRows excluded);

// Percentile levels are shown when there are five minutes or more of data; a zoomed log goes by the log that it was cut
// from. False unless channel is 1 and the percentile ln (1..10) is in use.
bool IsLnCumulativeValid(const clsLog& log, LogChannel channel, int ln);

// Derive Interval and IsErraticIntervals (SetInterval) or the dates of the rows (SetSampleDates) from the time stamps
// of the rows.
void SetInterval(clsLog& log);
void SetSampleDates(clsLog& log);

} // namespace kestrane

// Display formats by pattern: the one place that knows "##0.0", "####", "##0.0 %", "dd/mm/yyyy" and their like.
#pragma once

#include "platform/Calendar.h"
#include "platform/Locale.h"

#include <string>
#include <string_view>

namespace kestrane {

// Number patterns: "0" a digit that always shows, "#" one that shows when needed, one "." the locale's decimal
// separator, "%" anywhere multiplies by 100; all other characters stand for themselves ("##0.0 dB"). Halves round away
// from zero; a value within a part in 10^9 of a half counts as a half, so that 50.25 divided by 100 for a "%" pattern
// formats as 50.3. A result that rounds to zero has no sign. "####" of 0 is empty. What is not a finite number
// formats as 0.
std::string formatNumber(double value, std::string_view pattern, const Locale& locale);

// Date patterns: d dd ddd dddd, m mm mmm mmmm, yy yyyy, h hh, n nn (minutes), s ss, and "long date" (weekday, day,
// month and year in words: "Monday 3 June 2019"). "/" and ":" stand for themselves. English names.
std::string formatDate(CalendarTime time, std::string_view pattern);

} // namespace kestrane

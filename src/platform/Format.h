// Numbers and dates as text by a pattern. This is the one place that knows "##0.0", "####", "##0.0 %", "dd/mm/yyyy" and
// their like.
#pragma once

#include "platform/Calendar.h"
#include "platform/Locale.h"

#include <array>
#include <string>
#include <string_view>

namespace kestrane {

// In a number pattern "0" is a digit that is always shown and "#" one that is shown when it is needed; "." (at most
// one) is the locale's decimal separator, and "%" anywhere multiplies by 100. All other characters stand for themselves
// ("##0.0 dB"). Halves are rounded away from zero; a value within one part in 10^9 of a half counts as a half, so that
// 50.25, passed as 0.5025 to a "%" pattern, is shown as 50.3. A result that rounds to zero has no sign. "####" of 0 is
// empty. A value that is not a finite number is shown as 0.
std::string formatNumber(double value, std::string_view pattern, const Locale& locale);

// The words of a date, in English unless others are given. The long date is a pattern.
struct DateWords {
    std::array<std::string, 12> Months = {"January", "February", "March",     "April",   "May",      "June",
                                          "July",    "August",   "September", "October", "November", "December"};
    std::array<std::string, 7> Weekdays = {"Monday", "Tuesday",  "Wednesday", "Thursday",
                                           "Friday", "Saturday", "Sunday"};
    std::string LongDate = "dddd d mmmm yyyy";
};

inline const DateWords kEnglishDates;

// Date patterns are made of d dd ddd dddd, m mm mmm mmmm, yy yyyy, h hh, n nn (minutes) and s ss; or "long date", which
// gives weekday, day, month and year ("Monday 3 June 2019"). All other characters stand for themselves.
std::string formatDate(CalendarTime time, std::string_view pattern, const DateWords& words = kEnglishDates);

} // namespace kestrane

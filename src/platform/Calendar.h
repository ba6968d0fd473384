// Calendar arithmetic on the proleptic Gregorian calendar, and the one number that stands for a date and time: days
// since 30 December 1899, with the time of day as fraction. 0 is the empty date.
#pragma once

#include <cstdint>

namespace kestrane {

using CalendarTime = double;

struct CivilDate {
    int Year = 1899; // four digits
    int Month = 12;
    int Day = 30;

    bool operator==(const CivilDate&) const = default;
};

bool isCivilDate(int year, int month, int day); // the day exists; year 1..9999
CalendarTime fromCivil(const CivilDate& date, std::int64_t secondsOfDay = 0);

// The date and the time of day of the nearest second. Both raise 6 outside the years 1 to 9999.
CivilDate toCivil(CalendarTime time);
std::int32_t secondsOfDay(CalendarTime time); // 0..86399

// 0 to 29 become 2000 to 2029 and 30 to 99 become 1930 to 1999; any other year is returned as it is.
int expandTwoDigitYear(int year);

} // namespace kestrane

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

// Of the nearest second. Raise 6 outside of the years 1..9999.
CivilDate toCivil(CalendarTime time);
std::int32_t secondsOfDay(CalendarTime time); // 0..86399

// 0..29 is 2000..2029, 30..99 is 1930..1999, other years stay.
int expandTwoDigitYear(int year);

} // namespace kestrane

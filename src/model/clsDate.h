// A calendar date held as its parts. 1 January 1900 means not set. The year may have two digits, as instruments send
// it.
#pragma once

#include "model/clsTime.h"
#include "platform/Calendar.h"
#include "platform/Locale.h"

#include <cstdint>
#include <string>
#include <string_view>

namespace kestrane {

class clsDate {
public:
    std::int16_t Day = 1;
    std::int16_t Month = 1;
    std::int16_t Year = 1900;

    // Takes the parts of objPrevDate and then adds intDays; nothing is added unless intDays is above 0 and the date is
    // valid.
    void Copy(const clsDate& objPrevDate, int intDays);

    // Reads pairs of hexadecimal digits: the day from characters 1 and 2, the month from 3 and 4, the year from the
    // last two. A text that is no date becomes 1 January 1900.
    void CalcDate(std::string_view strDate);

    // Whether the day exists, in a year of 0 to 99 or 1900 to 2100. True for 1 January 1900, too.
    bool IsDate() const;

    // The date as text; empty when it is no date and for 1 January 1900. An empty pattern stands for "dd/mm/yyyy".
    std::string Format(std::string_view strFormat = {}) const;

    // Reads day, month and year, in that order whatever the locale, separated by "/" or else by the locale's date
    // separator. A text that is not three numbers leaves the date as it was; three numbers that are no date set all
    // parts to 0. Raises 6 for a number that does not fit 16 bits.
    void setDate(std::string_view strDate, const Locale& locale);

    // The date as a calendar number; 0 (the empty date) unless IsDate. With a time, the time of day is added as the
    // fraction; a time whose text is empty adds nothing. Raises 13 when the time is no time of day.
    CalendarTime getDate() const;
    CalendarTime getDate(const clsTime& objTime) const;

    bool operator==(const clsDate&) const = default;
};

} // namespace kestrane

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

    // Takes the parts of objPrevDate, then adds intDays when that is above 0 and the date is valid.
    void Copy(const clsDate& objPrevDate, int intDays);

    // From pairs of hexadecimal digits: day in characters 1 and 2, month in 3 and 4, year in the last two. Anything
    // that is not a date becomes 1 January 1900.
    void CalcDate(std::string_view strDate);

    // The day exists, in a year of 0 to 99 or 1900 to 2100. True of the date that means not set.
    bool IsDate() const;

    // Empty for no date and for 1 January 1900; an empty pattern is "dd/mm/yyyy".
    std::string Format(std::string_view strFormat = {}) const;

    // Reads day, month and year, in that order, separated by "/" or else by the locale's date separator. A text that
    // is not three numbers leaves the date as it was; three numbers that are no date set all parts to 0. Raises 6 for a
    // number past 16 bits.
    void setDate(std::string_view strDate, const Locale& locale);

    // 0 (the empty date) unless IsDate. With a time whose text is not empty, the time of day is the fraction; raises 13
    // when it is none.
    CalendarTime getDate() const;
    CalendarTime getDate(const clsTime& objTime) const;

    bool operator==(const clsDate&) const = default;
};

} // namespace kestrane

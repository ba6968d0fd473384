// A time of day or a duration held as its parts; a duration may have any number of hours.
#pragma once

#include "platform/Locale.h"

#include <cstdint>
#include <string>
#include <string_view>

namespace kestrane {

class clsTime {
public:
    std::int32_t Hours = 0;
    std::int32_t Mins = 0;
    std::int32_t Secs = 0;

    void Copy(const clsTime& objPrevTime) { *this = objPrevTime; }

    // Reads pairs of hexadecimal digits: hours, minutes, and in a text of 6 or more characters seconds from the last
    // two. A part that is out of range becomes 0.
    void AcquireTime(std::string_view strTime);

    std::string hh_mm() const;    // empty when a part is negative or Mins is 60 or more
    std::string hh_mm_ss() const; // empty when Secs is negative or 60 or more; when hh_mm() is empty only ":05" is left

    // Takes objPrevTime plus lngSeconds and carries upwards; negative seconds are not carried. With bResetHours, whole
    // days are taken out of the hours and returned; without it 0 is returned. Raises 6 when a part does not fit 32
    // bits.
    std::int16_t Add(const clsTime& objPrevTime, std::int32_t lngSeconds, bool bResetHours);

    std::int32_t getTimeAsSeconds() const; // raises 6 when they do not fit 32 bits
    float getTimeAsHours() const;

    // Adds to the present time, so it converts only when called on a new object.
    void setTimeFromSeconds(std::int32_t lngSeconds) { Add(clsTime(*this), lngSeconds, false); }

    // Reads "h:m:s". A text without ":" or with parts that are not numbers leaves the time as it is; "h:m" sets hours
    // and minutes and then raises 13, because the seconds cannot be converted; that is meant. Raises 6 when a part does
    // not fit 32 bits.
    void setTime(std::string_view strTime, const Locale& locale);

    bool operator==(const clsTime&) const = default;
};

} // namespace kestrane

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

    // From pairs of hexadecimal digits: hours, minutes, and seconds as the last two of 6 or more characters. Each part
    // that is out of range becomes 0.
    void AcquireTime(std::string_view strTime);

    std::string hh_mm() const;    // empty when a part is negative or Mins is 60 or more
    std::string hh_mm_ss() const; // empty when Secs is negative or 60 or more; hh_mm in front may be empty: ":05"

    // Takes objPrevTime plus lngSeconds and carries upwards; negative seconds are not carried. With bResetHours, whole
    // days leave the hours and are returned. Raises 6 past 32 bits.
    std::int16_t Add(const clsTime& objPrevTime, std::int32_t lngSeconds, bool bResetHours);

    std::int32_t getTimeAsSeconds() const; // raises 6 past 32 bits
    float getTimeAsHours() const;

    // Adds to the time as it stands, so it is a conversion on a new object only.
    void setTimeFromSeconds(std::int32_t lngSeconds) { Add(clsTime(*this), lngSeconds, false); }

    // "h:m:s". Without a ":" or with parts that are not numbers the time stays; "h:m" sets hours and minutes and then
    // raises 13, since the seconds cannot be converted. Raises 6 past 32 bits.
    void setTime(std::string_view strTime, const Locale& locale);

    bool operator==(const clsTime&) const = default;
};

} // namespace kestrane

#include "model/clsTime.h"

#include "platform/Numbers.h"

#include <charconv>
#include <cstdio>

namespace kestrane {

namespace {

// The value of two hexadecimal digits; 0 when they are not such digits or the value is above limit.
std::int32_t hexPart(std::string_view text, std::size_t position, std::int32_t limit) {
    if (position + 2 > text.size()) return 0;
    std::int32_t value = 0;
    const char* end = text.data() + position + 2;
    const auto result = std::from_chars(text.data() + position, end, value, 16);
    const bool isGood = result.ec == std::errc() && result.ptr == end && value >= 0 && value <= limit;
    return isGood ? value : 0;
}

std::string twoDigits(std::int32_t value) {
    char text[16];
    std::snprintf(text, sizeof text, "%02d", value);
    return text;
}

} // namespace

void clsTime::AcquireTime(std::string_view strTime) {
    Hours = hexPart(strTime, 0, 23);
    Mins = hexPart(strTime, 2, 59);
    Secs = strTime.size() >= 6 ? hexPart(strTime, strTime.size() - 2, 59) : 0;
}

std::string clsTime::hh_mm() const {
    if (Hours < 0 || Mins < 0 || Mins >= 60) return {};
    return twoDigits(Hours) + ":" + twoDigits(Mins);
}

std::string clsTime::hh_mm_ss() const {
    if (Secs < 0 || Secs >= 60) return {};
    return hh_mm() + ":" + twoDigits(Secs);
}

std::int16_t clsTime::Add(const clsTime& objPrevTime, std::int32_t lngSeconds, bool bResetHours) {
    std::int64_t hours = objPrevTime.Hours;
    std::int64_t mins = objPrevTime.Mins;
    std::int64_t secs = checkedLong(std::int64_t{objPrevTime.Secs} + lngSeconds);
    std::int64_t days = 0;
    const auto carry = [](std::int64_t& from, std::int64_t& to, std::int64_t size) {
        if (from < size) return;
        to += from / size;
        from %= size;
    };
    carry(secs, mins, 60);
    carry(mins, hours, 60);
    if (bResetHours) carry(hours, days, 24);
    Hours = checkedLong(hours);
    Mins = checkedLong(mins);
    Secs = checkedLong(secs);
    return checkedInteger(days);
}

std::int32_t clsTime::getTimeAsSeconds() const {
    return checkedLong(std::int64_t{Hours} * 3600 + std::int64_t{Mins} * 60 + Secs);
}

float clsTime::getTimeAsHours() const {
    const std::int32_t seconds = getTimeAsSeconds();
    const std::int32_t wholeMinutes = seconds / 60 % 60;
    const std::int32_t wholeHours = seconds / 3600;
    const auto minutes = static_cast<float>(seconds % 60 / 60.0 + wholeMinutes);
    return static_cast<float>(minutes / 60.0 + wholeHours);
}

void clsTime::setTime(std::string_view strTime, const Locale& locale) {
    const std::size_t first = strTime.find(':');
    if (first == std::string_view::npos) return;
    const std::size_t second = strTime.find(':', first + 1);
    const std::string_view hours = strTime.substr(0, first);
    const std::string_view mins =
        strTime.substr(first + 1, second == std::string_view::npos ? std::string_view::npos : second - first - 1);
    const std::string_view secs = second == std::string_view::npos ? std::string_view() : strTime.substr(second + 1);
    if (!isNumeric(hours, locale) || !isNumeric(mins, locale)) return;
    if (!secs.empty() && !isNumeric(secs, locale)) return;
    Hours = toLong(hours, locale);
    Mins = toLong(mins, locale);
    Secs = toLong(secs, locale);
}

} // namespace kestrane

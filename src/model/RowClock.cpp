#include "model/RowClock.h"

#include "platform/Calendar.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdio>

namespace kestrane {

namespace {

constexpr std::int64_t kSecondsOfDay = 86'400;
constexpr std::int64_t kUnset = 2;           // 1 January 1900, which means not set; a row without a date has 0
constexpr std::int64_t kLastDay = 2'958'465; // 31 December 9999

} // namespace

std::int32_t rowSeconds(const IntervalColumns& rows, std::size_t row, std::int32_t interval) {
    const std::int32_t own = rows.IntervalLength.at(row);
    return std::max(own > 0 ? own : interval, 0);
}

std::int64_t rowBegin(const IntervalColumns& rows, std::size_t row) {
    const auto day = static_cast<std::int64_t>(std::floor(rows.StartDate.at(row)));
    return (day > kUnset ? day * kSecondsOfDay : 0) + rows.StartTime.at(row);
}

std::string isoTime(std::int64_t seconds) {
    const std::int64_t day = seconds / kSecondsOfDay;
    if (seconds < 0 || day > kLastDay) return {};
    const auto time = static_cast<int>(seconds % kSecondsOfDay);
    std::array<char, 96> text;
    const auto write = [&](const char* pattern, auto... parts) {
        return static_cast<std::size_t>(std::snprintf(text.data(), text.size(), pattern, parts...));
    };
    const int hour = time / 3600, minute = time / 60 % 60, second = time % 60;
    if (day <= kUnset) return {text.data(), write("%02d:%02d:%02d", hour, minute, second)};
    const CivilDate date = toCivil(static_cast<CalendarTime>(day));
    return {text.data(), write("%04d-%02d-%02dT%02d:%02d:%02d", date.Year, date.Month, date.Day, hour, minute, second)};
}

} // namespace kestrane

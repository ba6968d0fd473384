#include "platform/Calendar.h"

#include "platform/RuntimeError.h"

#include <chrono>
#include <cmath>

namespace kestrane {

namespace {

using namespace std::chrono;

constexpr sys_days kEpoch = year(1899) / December / 30;
constexpr std::int64_t kDay = 86400;

year_month_day parts(int y, int m, int d) {
    return year(y) / month(static_cast<unsigned>(m)) / day(static_cast<unsigned>(d));
}

// Rounds to seconds since the epoch first, so that a time that falls short of midnight by a rounding error has the date
// of the next day.
std::int64_t wholeSeconds(CalendarTime time) {
    constexpr auto kFirst = (sys_days(year(1) / January / 1) - kEpoch).count() * kDay;
    constexpr auto kEnd = (sys_days(year(10000) / January / 1) - kEpoch).count() * kDay;
    const double seconds = std::round(time * kDay);
    if (!(seconds >= kFirst && seconds < kEnd)) raiseOverflow();
    return static_cast<std::int64_t>(seconds);
}

} // namespace

bool isCivilDate(int year, int month, int day) {
    return year >= 1 && year <= 9999 && month >= 1 && month <= 12 && day >= 1 && day <= 31 &&
           parts(year, month, day).ok();
}

CalendarTime fromCivil(const CivilDate& date, std::int64_t secondsOfDay) {
    const auto days = (sys_days(parts(date.Year, date.Month, date.Day)) - kEpoch).count();
    return static_cast<double>(days) + static_cast<double>(secondsOfDay) / kDay;
}

CivilDate toCivil(CalendarTime time) {
    const year_month_day date = floor<days>(kEpoch + seconds(wholeSeconds(time)));
    return {static_cast<int>(date.year()), static_cast<int>(static_cast<unsigned>(date.month())),
            static_cast<int>(static_cast<unsigned>(date.day()))};
}

std::int32_t secondsOfDay(CalendarTime time) {
    const std::int64_t seconds = wholeSeconds(time) % kDay;
    return static_cast<std::int32_t>(seconds < 0 ? seconds + kDay : seconds);
}

int expandTwoDigitYear(int year) {
    if (year < 0 || year > 99) return year;
    return year + (year < 30 ? 2000 : 1900);
}

} // namespace kestrane

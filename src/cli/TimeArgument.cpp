#include "cli/TimeArgument.h"

#include <cstdio>

namespace kestrane {

std::string readTime(const std::string& text, std::optional<CalendarTime>& time) {
    CivilDate date;
    int hour = 0, minute = 0, second = 0, end = 0;
    const int count = std::sscanf(text.c_str(), "%4d-%2d-%2dT%2d:%2d:%2d%n", &date.Year, &date.Month, &date.Day, &hour,
                                  &minute, &second, &end);
    const bool isTime = count == 6 && end == static_cast<int>(text.size()) && text.size() == 19 &&
                        isCivilDate(date.Year, date.Month, date.Day) && hour >= 0 && hour < 24 && minute >= 0 &&
                        minute < 60 && second >= 0 && second < 60;
    if (!isTime) return "a date and time such as 2024-11-26T16:18:53";
    time = fromCivil(date, (hour * 60 + minute) * 60 + second);
    return {};
}

} // namespace kestrane

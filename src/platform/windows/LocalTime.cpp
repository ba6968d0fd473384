#include "platform/LocalTime.h"

#include <cstdlib>

namespace kestrane {

CalendarTime localTime(std::time_t moment) {
    std::tm local{};
    localtime_s(&local, &moment);
    return fromCivil({local.tm_year + 1900, local.tm_mon + 1, local.tm_mday},
                     local.tm_hour * 3600 + local.tm_min * 60 + local.tm_sec);
}

void useUtc() {
    _putenv_s("TZ", "UTC");
    _tzset();
}

} // namespace kestrane

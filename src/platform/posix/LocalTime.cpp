#include "platform/LocalTime.h"

#include <cstdlib>

namespace kestrane {

CalendarTime localTime(std::time_t moment) {
    std::tm local{};
    localtime_r(&moment, &local);
    return fromCivil({local.tm_year + 1900, local.tm_mon + 1, local.tm_mday},
                     local.tm_hour * 3600 + local.tm_min * 60 + local.tm_sec);
}

void useUtc() {
    setenv("TZ", "UTC", 1);
    tzset();
}

} // namespace kestrane

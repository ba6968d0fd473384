#include "platform/Clock.h"

#include <ctime>

namespace kestrane {

CalendarTime SystemClock::now() const {
    const std::time_t now = std::time(nullptr);
    std::tm local{};
    localtime_r(&now, &local);
    return fromCivil({local.tm_year + 1900, local.tm_mon + 1, local.tm_mday},
                     local.tm_hour * 3600 + local.tm_min * 60 + local.tm_sec);
}

} // namespace kestrane

#include "platform/Clock.h"

#include "platform/LocalTime.h"

namespace kestrane {

CalendarTime SystemClock::now() const {
    return localTime(std::time(nullptr));
}

} // namespace kestrane

// A moment of the system's clock in the time of the place where the computer stands.
#pragma once

#include "platform/Calendar.h"

#include <ctime>

namespace kestrane {

CalendarTime localTime(std::time_t moment); // whole seconds

// From now on the local time of this program is UTC. To be called before there are threads.
void useUtc();

} // namespace kestrane

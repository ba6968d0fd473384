// What the command line takes from the toolkit: the loop that serves the serial line and the network. A build without
// the toolkit has neither.
#pragma once

#include "platform/EventPump.h"

#include <functional>

namespace kestrane {

// Does the work with a pump that serves the serial line and the network, and returns what it returns.
int withLoop(const std::function<int(EventPump& pump)>& work);

} // namespace kestrane

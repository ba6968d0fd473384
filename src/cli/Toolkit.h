// What the command line takes from the toolkit: the file of settings, and the loop that serves the serial line and the
// network. A build without the toolkit reads and writes the same file by itself, and has no serial line and no network.
#pragma once

#include "platform/EventPump.h"
#include "platform/Settings.h"

#include <functional>
#include <memory>
#include <string>

namespace kestrane {

// The settings of the user, which are created with the first write. What cannot be read of them is told by
// Unreadable().
std::unique_ptr<SettingsStore> settingsOfApplication(const std::string& name);

// The settings in a file that the caller names, created when it is missing. Raises an error when it cannot be read or
// created.
std::unique_ptr<SettingsStore> settingsOfFile(const std::string& path);

// Does the work with a pump that serves the serial line and the network, and returns what it returns.
int withLoop(const std::function<int(EventPump& pump)>& work);

} // namespace kestrane

// Decides the number by which each serial port of a machine is known.
#pragma once

#include "platform/Comm.h"
#include "platform/Settings.h"

#include <string>
#include <vector>

namespace kestrane {

constexpr int kLastPort = 255;

// The path of a device. A name without a folder means a device in /dev.
std::string devicePath(const std::string& name);

// Numbers the ports of the machine from 1 to 255; of machine, only device and description are read. The section
// "SerialPorts" of the store pins numbers to devices ("COM3" = a path, which may be a link); a pinned port is in the
// result whether or not its device is there. The other ports take the numbers that are left, in the natural order of
// their names (ttyS2 before ttyS10).
std::vector<PortInfo> numberPorts(const std::vector<PortInfo>& machine, const SettingsStore& settings);

} // namespace kestrane

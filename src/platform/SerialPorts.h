// Which number each serial port of a machine goes by.
#pragma once

#include "platform/Comm.h"
#include "platform/Settings.h"

#include <string>
#include <vector>

namespace kestrane {

constexpr int kLastPort = 255;

// The path of a device: a name without a folder lies in /dev.
std::string devicePath(const std::string& name);

// Numbers the machine's ports, of which device and description are read, 1..255. The store's section "SerialPorts" pins
// numbers to devices ("COM3" = a path, which may be a link); such a port counts whether its device is there or not. The
// others take the numbers left, in the natural order of their names (ttyS2 before ttyS10).
std::vector<PortInfo> numberPorts(const std::vector<PortInfo>& machine, const SettingsStore& settings);

} // namespace kestrane

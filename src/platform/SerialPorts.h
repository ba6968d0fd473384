// Decides the number by which each serial port of a machine is known.
#pragma once

#include "platform/Comm.h"
#include "platform/Settings.h"

#include <string>
#include <vector>

namespace kestrane {

constexpr int kLastPort = 255;

// The path of a device, by which it is opened. A name without a folder is the name that the system lists it by
// ("ttyS0").
std::string devicePath(const std::string& name);

// The path of a device after all links have been followed; device itself when that fails.
std::string trueDevice(const std::string& device);

// The number that the system itself gives a port; 0 where it gives none.
int ownNumberOf(const std::string& device);

// What keeps a port from being opened, as far as it can be told without opening it: 0, an errno, and for EACCES the
// group whose members may use the device. ENOTTY is a file that is no device.
struct PortObstacle {
    int Error = 0;
    std::string Group;
};

PortObstacle obstacleOf(const std::string& device);

// Numbers the ports of the machine from 1 to 255; of machine, only device and description are read. The section
// "SerialPorts" of the store pins numbers to devices ("COM3" = a path, which may be a link); a pinned port is in the
// result whether or not its device is there. The other ports have the numbers of their own, when those are free, or
// take the numbers that are left, in the natural order of their names (ttyS2 before ttyS10).
std::vector<PortInfo> numberPorts(const std::vector<PortInfo>& machine, const SettingsStore& settings);

} // namespace kestrane

#include "platform/SerialPorts.h"

#include "platform/windows/Wide.h"

#include <array>
#include <charconv>
#include <string_view>

namespace kestrane {

namespace {

constexpr std::string_view kDevices = "\\\\.\\"; // without it, only COM1 to COM9 can be opened

std::string_view nameOfDevice(std::string_view device) {
    return device.starts_with(kDevices) ? device.substr(kDevices.size()) : device;
}

} // namespace

std::string devicePath(const std::string& name) {
    return name.find_first_of("/\\") == std::string::npos ? std::string(kDevices) + name : name;
}

std::string trueDevice(const std::string& device) {
    return device;
}

int ownNumberOf(const std::string& device) {
    constexpr std::string_view kName = "COM";
    std::string_view name = nameOfDevice(device);
    if (!name.starts_with(kName)) return 0;
    name.remove_prefix(kName.size());
    int number = 0;
    const auto [end, error] = std::from_chars(name.data(), name.data() + name.size(), number);
    return error == std::errc() && end == name.data() + name.size() ? number : 0;
}

// A port that another program uses, or that the user may not open, is told by the try alone.
PortObstacle obstacleOf(const std::string& device) {
    std::array<wchar_t, MAX_PATH> target{};
    if (QueryDosDeviceW(wide(nameOfDevice(device)).c_str(), target.data(), target.size()) != 0) return {};
    const DWORD error = GetLastError();
    return {error == ERROR_INSUFFICIENT_BUFFER ? 0 : errnoOf(error), {}};
}

} // namespace kestrane

#include "platform/SerialPorts.h"

#include <charconv>
#include <string_view>

namespace kestrane {

namespace {

constexpr std::string_view kDevices = "\\\\.\\"; // without it, only COM1 to COM9 can be opened

} // namespace

std::string devicePath(const std::string& name) {
    return name.find_first_of("/\\") == std::string::npos ? std::string(kDevices) + name : name;
}

std::string trueDevice(const std::string& device) {
    return device;
}

int ownNumberOf(const std::string& device) {
    constexpr std::string_view kName = "COM";
    std::string_view name = device;
    if (name.starts_with(kDevices)) name.remove_prefix(kDevices.size());
    if (!name.starts_with(kName)) return 0;
    name.remove_prefix(kName.size());
    int number = 0;
    const auto [end, error] = std::from_chars(name.data(), name.data() + name.size(), number);
    return error == std::errc() && end == name.data() + name.size() ? number : 0;
}

} // namespace kestrane

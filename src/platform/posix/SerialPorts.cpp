#include "platform/SerialPorts.h"

#include <filesystem>

namespace kestrane {

std::string devicePath(const std::string& name) {
    return name.find('/') == std::string::npos ? "/dev/" + name : name;
}

std::string trueDevice(const std::string& device) {
    std::error_code error;
    const auto path = std::filesystem::canonical(device, error);
    return error ? device : path.string();
}

int ownNumberOf(const std::string&) {
    return 0;
}

} // namespace kestrane

#include "platform/SerialPorts.h"

#include <cerrno>
#include <filesystem>

#include <fcntl.h>
#include <grp.h>
#include <sys/stat.h>
#include <unistd.h>

namespace kestrane {

namespace {

std::string groupName(gid_t id) {
    const group* const entry = getgrgid(id);
    return entry == nullptr ? std::to_string(id) : entry->gr_name;
}

} // namespace

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

PortObstacle obstacleOf(const std::string& device) {
    struct stat status {};

    if (stat(device.c_str(), &status) != 0) return {errno, {}};
    if (!S_ISCHR(status.st_mode)) return {ENOTTY, {}};
    if (faccessat(AT_FDCWD, device.c_str(), R_OK | W_OK, AT_EACCESS) != 0) return {EACCES, groupName(status.st_gid)};
    return {};
}

} // namespace kestrane

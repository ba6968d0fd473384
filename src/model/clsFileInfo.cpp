#include "model/clsFileInfo.h"

#include "platform/LocalTime.h"
#include "platform/Paths.h"

#include <chrono>
#include <filesystem>
#include <system_error>

namespace kestrane {

void clsFileInfo::Name(const std::string& name) {
    *this = clsFileInfo();
    const std::filesystem::path path = pathOf(name);
    std::error_code failed;
    const auto modified = std::chrono::file_clock::to_sys(std::filesystem::last_write_time(path, failed));
    if (failed) return;
    name_ = name;
    size_ = std::filesystem::is_regular_file(path, failed)
                ? static_cast<std::int64_t>(std::filesystem::file_size(path, failed))
                : 0;
    modified_ = localTime(std::chrono::floor<std::chrono::seconds>(modified).time_since_epoch().count());
    const std::size_t point = name.find_last_of("./\\");
    if (point != std::string::npos && name[point] == '.') extension_ = name.substr(point + 1);
}

} // namespace kestrane

#include "model/clsFileInfo.h"

#include "platform/LocalTime.h"

#include <sys/stat.h>

namespace kestrane {

void clsFileInfo::Name(const std::string& name) {
    *this = clsFileInfo();

    struct stat status {};

    if (stat(name.c_str(), &status) != 0) return;
    name_ = name;
    size_ = status.st_size;
    modified_ = localTime(status.st_mtime);
    const std::size_t point = name.find_last_of("./\\");
    if (point != std::string::npos && name[point] == '.') extension_ = name.substr(point + 1);
}

} // namespace kestrane

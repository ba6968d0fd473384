#include "model/clsFileInfo.h"

#include <ctime>
#include <sys/stat.h>

namespace kestrane {

void clsFileInfo::Name(const std::string& name) {
    *this = clsFileInfo();

    struct stat status {};

    if (stat(name.c_str(), &status) != 0) return;
    name_ = name;
    size_ = status.st_size;
    std::tm local{};
    localtime_r(&status.st_mtime, &local);
    modified_ = fromCivil({local.tm_year + 1900, local.tm_mon + 1, local.tm_mday},
                          local.tm_hour * 3600 + local.tm_min * 60 + local.tm_sec);
    const std::size_t point = name.find_last_of("./\\");
    if (point != std::string::npos && name[point] == '.') extension_ = name.substr(point + 1);
}

} // namespace kestrane

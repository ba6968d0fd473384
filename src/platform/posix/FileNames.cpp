#include "platform/FileNames.h"

#include "platform/RuntimeError.h"

#include <cerrno>
#include <cstdio>
#include <cstdlib>

#include <fcntl.h>
#include <unistd.h>

namespace kestrane {

namespace {

constexpr const char* kUnique = "XXXXXX"; // is replaced by the system

} // namespace

int renameFile(const std::string& from, const std::string& to) {
    return std::rename(from.c_str(), to.c_str()) == 0 ? 0 : errno;
}

bool giveSecondName(const std::string& path, const std::string& name) {
    return linkat(AT_FDCWD, path.c_str(), AT_FDCWD, name.c_str(), AT_SYMLINK_FOLLOW) == 0;
}

std::string makeUniqueFile(const std::string& begin) {
    std::string name = begin + kUnique;
    const int handle = ::mkstemp(name.data());
    if (handle < 0) raiseSystemError(errno);
    ::close(handle);
    return name;
}

std::string makeUniqueFolder(const std::string& begin) {
    std::string name = begin + kUnique;
    if (::mkdtemp(name.data()) == nullptr) raiseSystemError(errno);
    return name;
}

} // namespace kestrane

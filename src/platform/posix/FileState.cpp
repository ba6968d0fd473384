#include "platform/FileState.h"

#include <algorithm>
#include <cerrno>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace kestrane {

std::optional<FileState> stateOfFile(const std::string& path) {
    struct stat about {};

    if (stat(path.c_str(), &about) != 0 || !S_ISREG(about.st_mode)) return std::nullopt;
    constexpr std::int64_t kNanoseconds = 1'000'000'000;
    const auto time = [](const timespec& t) { return t.tv_sec * kNanoseconds + t.tv_nsec; };
    return FileState{about.st_size, std::max(time(about.st_mtim), time(about.st_ctim))};
}

bool isBeingWritten(const std::string& path) {
    const int handle = open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK);
    if (handle < 0) return false;
    const bool isBusy = fcntl(handle, F_SETLEASE, F_RDLCK) != 0 && errno == EAGAIN;
    close(handle);
    return isBusy;
}

} // namespace kestrane

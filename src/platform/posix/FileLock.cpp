#include "platform/FileLock.h"

#include "platform/RuntimeError.h"

#include <algorithm>
#include <cerrno>

#include <fcntl.h>
#include <sys/file.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <unistd.h>

namespace kestrane {

namespace {

// Whether the handle is still of the file of that name. Whoever gives up a lock removes its file, so that a lock may be
// one of a file that nobody finds any more.
bool isStillThere(int handle, const std::string& path) {
    struct stat locked {
    }, named{};

    return fstat(handle, &locked) == 0 && stat(path.c_str(), &named) == 0 && locked.st_ino == named.st_ino &&
           locked.st_dev == named.st_dev;
}

// Each document that is open holds a lock, and so a handle. The usual limit of 1,024 is made for programs that wait by
// select(); what this one waits by knows no such limit.
bool allowManyHandles() {
    constexpr rlim_t kHandles = 65536;
    rlimit limit{};
    if (getrlimit(RLIMIT_NOFILE, &limit) != 0) return false;
    limit.rlim_cur = std::max(limit.rlim_cur, std::min(limit.rlim_max, kHandles));
    return setrlimit(RLIMIT_NOFILE, &limit) == 0;
}

} // namespace

std::shared_ptr<FileLock> FileLock::take(const std::string& path) {
    [[maybe_unused]] static const bool areAllowed = allowManyHandles(); // otherwise the limit stays as it is
    while (true) {
        const int handle = ::open(path.c_str(), O_RDWR | O_CREAT | O_CLOEXEC | O_NOFOLLOW, 0600);
        if (handle < 0) raiseSystemError(errno);
        if (flock(handle, LOCK_EX | LOCK_NB) == 0) {
            if (isStillThere(handle, path)) return std::shared_ptr<FileLock>(new FileLock(path, handle));
            ::close(handle);
            continue;
        }
        const int error = errno;
        ::close(handle);
        if (error == EINTR) continue;
        if (error == EWOULDBLOCK) return nullptr;
        raiseSystemError(error);
    }
}

FileLock::~FileLock() {
    ::unlink(path_.c_str());
    ::close(handle_);
}

} // namespace kestrane

#include "platform/FileLock.h"

#include "platform/RuntimeError.h"

#include <cerrno>

#include <fcntl.h>
#include <sys/file.h>
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

} // namespace

std::shared_ptr<FileLock> FileLock::take(const std::string& path) {
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

#include "platform/FileStamp.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace kestrane {

FileStamp stampOf(const std::string& path) {
    FileStamp stamp;

    struct stat about {};

    if (::stat(path.c_str(), &about) != 0 || !S_ISREG(about.st_mode)) return stamp; // a device is not to be opened
    const int handle = ::open(path.c_str(), O_RDONLY | O_NONBLOCK | O_CLOEXEC);
    if (handle < 0) return stamp;
    if (fstat(handle, &about) == 0 && S_ISREG(about.st_mode)) {
        constexpr std::int64_t kNanoseconds = 1'000'000'000;
        stamp.Size = about.st_size;
        stamp.Modified = about.st_mtim.tv_sec * kNanoseconds + about.st_mtim.tv_nsec;
    }
    ::close(handle);
    return stamp;
}

} // namespace kestrane

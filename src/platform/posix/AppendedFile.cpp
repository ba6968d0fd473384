#include "platform/AppendedFile.h"

#include "platform/Files.h"
#include "platform/RuntimeError.h"

#include <cerrno>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace kestrane {

namespace {

template <class Result>
Result check(Result result) {
    if (result < 0) raiseSystemError(errno);
    return result;
}

struct Descriptor {
    explicit Descriptor(int handle) : Handle(check(handle)) {}

    ~Descriptor() { ::close(Handle); }

    Descriptor(const Descriptor&) = delete;
    Descriptor& operator=(const Descriptor&) = delete;

    const int Handle;
};

void writeAll(int handle, std::string_view text) {
    while (!text.empty()) {
        const auto count = ::write(handle, text.data(), text.size());
        if (count < 0 && errno == EINTR) continue;
        if (count == 0) raiseSystemError(EIO);
        text.remove_prefix(static_cast<std::size_t>(check(count)));
    }
}

bool isEnded(int handle, off_t size) {
    char last = '\n';
    return size == 0 || ::pread(handle, &last, 1, size - 1) < 1 || last == '\n';
}

// The name of a new file is on disk when its folder is.
void syncFolderOf(const std::string& path) {
    const std::size_t slash = path.rfind('/');
    const std::string folder = slash == std::string::npos ? "." : path.substr(0, slash + 1);
    const int handle = ::open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    if (handle < 0) return;
    ::fsync(handle);
    ::close(handle);
}

} // namespace

void appendLines(const std::string& path, std::string_view lines) {
    constexpr int kFlags = O_RDWR | O_CREAT | O_APPEND | O_NONBLOCK | O_NOCTTY | O_CLOEXEC;
    const bool isNew = !fileExists(path);
    const Descriptor file(::open(path.c_str(), kFlags, 0666));

    struct stat about {};

    check(::fstat(file.Handle, &about));
    if (!S_ISREG(about.st_mode)) raiseSystemError(EINVAL);
    const std::string text = (isEnded(file.Handle, about.st_size) ? "" : "\n") + std::string(lines);
    try {
        writeAll(file.Handle, text);
        check(::fdatasync(file.Handle));
    } catch (const RuntimeError&) {
        const bool isUndone = ::ftruncate(file.Handle, about.st_size) == 0;
        if (isNew && isUndone) ::unlink(path.c_str());
        throw;
    }
    if (about.st_size == 0) syncFolderOf(path);
}

} // namespace kestrane

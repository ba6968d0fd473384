// A library to be preloaded into a program (LD_PRELOAD): it makes one system call on the files of one folder fail, or
// kills the program in front of it.
//     FAULT_FOLDER   the folder; calls on other files are left alone
//     FAULT_CALL     which calls are counted: open (to write, and of folders), write, fsync (also fdatasync), close,
//                    rename, or any
//     FAULT_NUMBER   the call that fails, counted from 1
//     FAULT_ERROR    the number of the error; 0 for a write of half the bytes, -1 for a kill
//     FAULT_WAITS    when set, nothing is counted before the program has called beginFaults()
// When the program ends by itself, it writes the number of calls that were counted to the file FAULT_COUNT, if set.
#include <cerrno>
#include <csignal>
#include <cstdarg>
#include <cstdio>
#include <cstdlib>
#include <cstring>

#include <atomic>
#include <fstream>

#include <dlfcn.h>
#include <fcntl.h>
#include <sys/types.h>
#include <unistd.h>

namespace {

constexpr int kShort = 0, kKill = -1;

template <class Function>
Function* next(Function*, const char* name) {
    return reinterpret_cast<Function*>(dlsym(RTLD_NEXT, name));
}

const char* valueOf(const char* name) {
    const char* const value = std::getenv(name);
    return value == nullptr ? "" : value;
}

std::atomic<bool> isCounting{*valueOf("FAULT_WAITS") == '\0'};
std::atomic<int> counted{0};

bool isInFolder(const char* path) {
    const char* const folder = valueOf("FAULT_FOLDER");
    return *folder != '\0' && std::strncmp(path, folder, std::strlen(folder)) == 0;
}

bool isInFolder(int file) {
    char link[64], path[4096];
    std::snprintf(link, sizeof link, "/proc/self/fd/%d", file);
    const ssize_t size = readlink(link, path, sizeof path - 1);
    if (size < 0) return false;
    path[size] = '\0';
    return isInFolder(path);
}

// Whether this call is the one. What it does is in error.
bool isTheOne(const char* call, int& error) {
    if (!isCounting) return false;
    const char* const wanted = valueOf("FAULT_CALL");
    if (std::strcmp(wanted, call) != 0 && std::strcmp(wanted, "any") != 0) return false;
    if (++counted != std::atoi(valueOf("FAULT_NUMBER"))) return false;
    error = std::atoi(valueOf("FAULT_ERROR"));
    if (error == kKill) std::raise(SIGKILL);
    return true;
}

template <class File>
bool fails(const char* call, File file) {
    int error = 0;
    if (!isInFolder(file) || !isTheOne(call, error)) return false;
    errno = error == kShort ? EIO : error;
    return true;
}

template <class Open>
int openOr(Open open, const char* path, int flags, va_list more) {
    const auto mode = (flags & (O_CREAT | O_TMPFILE)) != 0 ? va_arg(more, mode_t) : mode_t{0};
    const bool isToRead = (flags & (O_ACCMODE | O_DIRECTORY)) == O_RDONLY;
    return !isToRead && fails("open", path) ? -1 : open(path, flags, mode);
}

struct AtEnd {
    ~AtEnd() {
        const char* const path = valueOf("FAULT_COUNT");
        if (*path != '\0') std::ofstream(path) << counted.load() << '\n';
    }
} atEnd;

} // namespace

extern "C" {

void beginFaults() {
    isCounting = true;
}

int open(const char* path, int flags, ...) {
    va_list more;
    va_start(more, flags);
    const int file = openOr(next(&::open, "open"), path, flags, more);
    va_end(more);
    return file;
}

int open64(const char* path, int flags, ...) {
    va_list more;
    va_start(more, flags);
    const int file = openOr(next(&::open64, "open64"), path, flags, more);
    va_end(more);
    return file;
}

ssize_t write(int file, const void* data, size_t size) {
    static auto* const real = next(&::write, "write");
    int error = 0;
    if (size == 0 || !isInFolder(file) || !isTheOne("write", error)) return real(file, data, size);
    if (error == kShort) return real(file, data, (size + 1) / 2);
    errno = error;
    return -1;
}

int fsync(int file) {
    return fails("fsync", file) ? -1 : next(&::fsync, "fsync")(file);
}

int fdatasync(int file) {
    return fails("fsync", file) ? -1 : next(&::fdatasync, "fdatasync")(file);
}

int close(int file) {
    int error = 0;
    const bool isWatched = isInFolder(file) && isTheOne("close", error);
    const int result = next(&::close, "close")(file);
    if (!isWatched) return result;
    errno = error;
    return -1;
}

int rename(const char* from, const char* to) noexcept {
    return fails("rename", to) ? -1 : next(&::rename, "rename")(from, to);
}
}

#include "platform/Files.h"

#include "platform/RuntimeError.h"
#include "platform/StreamBytes.h"

#include <algorithm>
#include <cerrno>

#include <fcntl.h>
#include <sys/mman.h>
#include <sys/stat.h>
#include <unistd.h>

namespace kestrane {

namespace {

struct OpenFile {
    explicit OpenFile(int opened) : handle(opened) {
        if (handle < 0) raiseSystemError(errno);
    }

    ~OpenFile() { close(handle); }

    OpenFile(const OpenFile&) = delete;
    OpenFile& operator=(const OpenFile&) = delete;

    int handle;
};

struct stat aboutOpen(int handle) {
    struct stat about {};

    if (fstat(handle, &about) != 0) raiseSystemError(errno);
    return about;
}

// Reads into bytes from the offset from on, until they are full or the input ends. Returns the offset reached.
std::size_t fill(int handle, FileBytes& bytes, std::size_t from) {
    while (from < bytes.size()) {
        const ssize_t count = read(handle, bytes.data() + from, std::min(bytes.size() - from, kReadAtOnce));
        if (count < 0 && errno == EINTR) continue;
        if (count < 0) raiseSystemError(errno);
        if (count == 0) break;
        from += static_cast<std::size_t>(count);
    }
    return from;
}

} // namespace

bool fileExists(const std::string& path) {
    struct stat about {};

    return stat(path.c_str(), &about) == 0 && !S_ISDIR(about.st_mode);
}

bool canWriteTo(const std::string& folder) {
    return access(folder.c_str(), W_OK | X_OK) == 0;
}

FileBytes::FileBytes(std::size_t size) : size_(size), mapped_(size) {
    if (size == 0) return;
    void* const memory = mmap(nullptr, size, PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0);
    if (memory == MAP_FAILED) raiseSystemError(errno);
    madvise(memory, size, MADV_HUGEPAGE); // huge pages cut the time of the first touch to a third
    data_ = static_cast<char*>(memory);
}

FileBytes::~FileBytes() {
    if (data_ != nullptr) munmap(data_, mapped_);
}

void FileBytes::release(std::size_t from, std::size_t to) {
    const auto page = static_cast<std::size_t>(sysconf(_SC_PAGESIZE));
    const std::size_t first = (from + page - 1) / page * page;
    const std::size_t last = std::min(to, mapped_) / page * page;
    if (first < last && !isKept_) madvise(data_ + first, last - first, MADV_DONTNEED);
}

std::shared_ptr<FileBytes> readFile(const std::string& path, const std::function<void()>& between) {
    const OpenFile file(open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK));
    const struct stat about = aboutOpen(file.handle);
    if (S_ISDIR(about.st_mode)) raiseSystemError(EISDIR);
    const auto read = [&file](FileBytes& bytes, std::size_t from, std::size_t to) {
        while (from < to) {
            const ssize_t count = pread(file.handle, bytes.data() + from, to - from, static_cast<off_t>(from));
            if (count < 0 && errno == EINTR) continue;
            if (count < 0) raiseSystemError(errno);
            if (count == 0) break;
            from += static_cast<std::size_t>(count);
        }
        return from;
    };
    return readParts(static_cast<std::size_t>(about.st_size), read, between);
}

void readPieces(const std::string& path, const std::function<void(std::string_view piece)>& take) {
    constexpr std::size_t kPiece = 1U << 20U;
    const OpenFile file(open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK));
    if (S_ISDIR(aboutOpen(file.handle).st_mode)) raiseSystemError(EISDIR);
    FileBytes piece(kPiece);
    while (const std::size_t count = fill(file.handle, piece, 0))
        take(piece.view().substr(0, count));
}

std::shared_ptr<FileBytes> readInput(const std::string& path) {
    const auto number = openFileNumber(path);

    struct stat about {};

    const bool isThere = (number ? fstat(*number, &about) : stat(path.c_str(), &about)) == 0;
    const bool isStream = isThere && (S_ISFIFO(about.st_mode) || S_ISSOCK(about.st_mode));
    const bool isTerminal = isThere && S_ISCHR(about.st_mode) && number && isatty(*number) != 0;
    if (!isStream && !isTerminal) return readFile(path);

    const OpenFile input(number ? fcntl(*number, F_DUPFD_CLOEXEC, 0) : open(path.c_str(), O_RDONLY | O_CLOEXEC));
    return readStream([&](FileBytes& bytes, std::size_t from) { return fill(input.handle, bytes, from); });
}

} // namespace kestrane

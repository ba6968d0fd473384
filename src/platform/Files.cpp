#include "platform/Files.h"

#include "platform/RuntimeError.h"

#include <algorithm>
#include <cerrno>

#include <fcntl.h>
#include <sys/mman.h>
#include <sys/stat.h>
#include <unistd.h>

namespace kestrane {

namespace {

struct OpenFile {
    explicit OpenFile(const std::string& path) : handle(open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK)) {
        if (handle < 0) raiseSystemError(errno);
    }

    ~OpenFile() { close(handle); }

    OpenFile(const OpenFile&) = delete;
    OpenFile& operator=(const OpenFile&) = delete;

    int handle;
};

} // namespace

bool fileExists(const std::string& path) {
    struct stat about {};

    return stat(path.c_str(), &about) == 0 && !S_ISDIR(about.st_mode);
}

FileBytes::FileBytes(std::size_t size) : size_(size), mapped_(size) {
    if (size == 0) return;
    void* const memory = mmap(nullptr, size, PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0);
    if (memory == MAP_FAILED) raiseSystemError(errno);
    madvise(memory, size, MADV_HUGEPAGE); // first touch takes a third of the time
    data_ = static_cast<char*>(memory);
}

FileBytes::~FileBytes() {
    if (data_ != nullptr) munmap(data_, mapped_);
}

void FileBytes::release(std::size_t from, std::size_t to) {
    const auto page = static_cast<std::size_t>(sysconf(_SC_PAGESIZE));
    const std::size_t first = (from + page - 1) / page * page;
    const std::size_t last = std::min(to, mapped_) / page * page;
    if (first < last) madvise(data_ + first, last - first, MADV_DONTNEED);
}

std::shared_ptr<FileBytes> readFile(const std::string& path) {
    const OpenFile file(path);

    struct stat about {};

    if (fstat(file.handle, &about) != 0) raiseSystemError(errno);
    if (S_ISDIR(about.st_mode)) raiseSystemError(EISDIR);

    auto bytes = std::make_shared<FileBytes>(static_cast<std::size_t>(about.st_size));
    std::size_t size = 0;
    while (size < bytes->size()) {
        const ssize_t count = read(file.handle, bytes->data() + size, bytes->size() - size);
        if (count < 0 && errno == EINTR) continue;
        if (count < 0) raiseSystemError(errno);
        if (count == 0) break; // it was cut short meanwhile
        size += static_cast<std::size_t>(count);
    }
    bytes->shrink(size);
    return bytes;
}

} // namespace kestrane

#include "platform/Files.h"

#include "platform/RuntimeError.h"

#include <algorithm>
#include <cctype>
#include <cerrno>
#include <filesystem>
#include <system_error>

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

std::string resolved(const std::string& path) {
    std::error_code error;
    const auto name = std::filesystem::weakly_canonical(path, error);
    return error ? path : name.string();
}

bool equalIgnoringCase(const std::string& a, const std::string& b) {
    return std::equal(a.begin(), a.end(), b.begin(), b.end(),
                      [](unsigned char x, unsigned char y) { return std::tolower(x) == std::tolower(y); });
}

} // namespace

bool fileExists(const std::string& path) {
    struct stat about {};

    return stat(path.c_str(), &about) == 0 && !S_ISDIR(about.st_mode);
}

bool canWriteTo(const std::string& folder) {
    return access(folder.c_str(), W_OK | X_OK) == 0;
}

bool isSameFile(const std::string& a, const std::string& b) {
    const std::string nameA = resolved(a);
    const std::string nameB = resolved(b);
    if (nameA == nameB) return true;
    if (!equalIgnoringCase(nameA, nameB)) return false;
    std::error_code error; // where case is told apart, they are two files
    return !fileExists(a) || !fileExists(b) || std::filesystem::equivalent(a, b, error);
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

#include "platform/AtomicFile.h"

#include "platform/Files.h"
#include "platform/RuntimeError.h"

#include <cerrno>
#include <cstdint>
#include <cstdio>
#include <memory>
#include <optional>
#include <random>

#include <dirent.h>
#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

namespace kestrane {

namespace {

constexpr std::size_t kBufferSize = 256 * 1024;

// Raises errno when a system call says so.
template <class Result>
Result check(Result result) {
    if (result < 0) raiseSystemError(errno);
    return result;
}

std::string folderOf(const std::string& path) {
    const std::size_t slash = path.rfind('/');
    return slash == std::string::npos ? "." : path.substr(0, slash + 1);
}

std::optional<struct stat> aboutFile(const std::string& path, bool follow) {
    struct stat about {};

    if (fstatat(AT_FDCWD, path.c_str(), &about, follow ? 0 : AT_SYMLINK_NOFOLLOW) == 0) return about;
    if (errno == ENOENT) return std::nullopt;
    raiseSystemError(errno);
}

// Returns the file that a path stands for: symbolic links are followed, whether or not the last target exists.
std::string followLinks(std::string path) {
    constexpr int kMostLinks = 40;
    for (int i = 0; i < kMostLinks; ++i) {
        const auto about = aboutFile(path, false);
        if (!about || !S_ISLNK(about->st_mode)) return path;
        char link[4096];
        const auto size = check(readlink(path.c_str(), link, sizeof link));
        const std::string named(link, static_cast<std::size_t>(size));
        path = named.starts_with('/') ? named : folderOf(path).append("/").append(named);
    }
    raiseSystemError(ELOOP);
}

// An open descriptor, closed at the end.
class Descriptor {
public:
    Descriptor(const FileSystemCalls& calls, int handle) : calls_(calls), handle_(check(handle)) {}

    ~Descriptor() {
        if (handle_ >= 0) calls_.close(handle_);
    }

    Descriptor(const Descriptor&) = delete;
    Descriptor& operator=(const Descriptor&) = delete;

    int handle() const { return handle_; }

    void close() {
        const int handle = handle_;
        handle_ = -1; // it is closed even when closing reports an error
        check(calls_.close(handle));
    }

private:
    const FileSystemCalls& calls_;
    int handle_;
};

// The name of a temporary file. The file is removed at the end of the scope unless it has been renamed by then.
struct TemporaryName {
    ~TemporaryName() {
        if (isThere) calls.unlink(path.c_str());
    }

    const FileSystemCalls& calls;
    std::string path;
    bool isThere = false;
};

// A second descriptor of a locked file. The lock is held until this descriptor is closed, too.
struct Lock {
    ~Lock() {
        if (handle >= 0) ::close(handle);
    }

    int handle;
};

// Gathers pieces into large writes.
class Writer {
public:
    Writer(const FileSystemCalls& calls, int handle) : calls_(calls), handle_(handle) { buffer_.reserve(kBufferSize); }

    void append(std::string_view piece) {
        while (buffer_.size() + piece.size() >= kBufferSize) {
            const std::size_t part = kBufferSize - buffer_.size();
            buffer_.append(piece.substr(0, part));
            piece.remove_prefix(part);
            flush();
        }
        buffer_.append(piece);
    }

    void flush() {
        for (std::string_view rest = buffer_; !rest.empty();) {
            const long count = calls_.write(handle_, rest.data(), rest.size());
            if (count < 0 && errno == EINTR) continue;
            if (count == 0) raiseSystemError(EIO);
            rest.remove_prefix(static_cast<std::size_t>(check(count)));
        }
        buffer_.clear();
    }

private:
    const FileSystemCalls& calls_;
    int handle_;
    std::string buffer_;
};

// Writes the content to an open file and closes it.
void writeTo(const FileSystemCalls& calls, int handle, const std::function<void(const FileSink&)>& content) {
    Descriptor file(calls, handle);
    Writer writer(calls, file.handle());
    content([&](std::string_view piece) { writer.append(piece); });
    writer.flush();
    file.close();
}

constexpr std::string_view kTemporaryBegin = ".kestrane-";
constexpr std::string_view kTemporaryEnd = ".tmp";

// Locks a temporary file that has just been created. Returns false when another process that cleans up was quicker and
// has removed it. On a file system without locks it returns true: nobody can clean up there.
bool holdTemporary(int handle) {
    struct stat about {};

    if (flock(handle, LOCK_EX | LOCK_NB) != 0) return errno != EWOULDBLOCK;
    return fstat(handle, &about) == 0 && about.st_nlink > 0;
}

// Creates a file under a name that is not in use, locks it for as long as it is open, and stores its path in path.
int createUnique(const FileSystemCalls& calls, const std::string& folder, unsigned mode, std::string& path) {
    std::random_device random;
    constexpr int kTries = 100;
    for (int i = 0; i < kTries; ++i) {
        char digits[32];
        std::snprintf(digits, sizeof digits, "%08x%08x", random(), random());
        path = folder + "/" + std::string(kTemporaryBegin) + digits + std::string(kTemporaryEnd);
        const int handle = calls.open(path.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, mode);
        if (handle < 0 && errno != EEXIST) return handle;
        if (handle < 0) continue;
        if (holdTemporary(handle)) return handle;
        calls.close(handle);
    }
    errno = EEXIST;
    return -1;
}

// Removes temporary files that killed saves have left in the folder. The lock of a file that is still being written is
// held by the process that writes it, and ends with that process, so such a file stays. What cannot be removed stays,
// too.
void removeLeftTemporaries(const std::string& folder) {
    // Walked by system calls, because std::filesystem ends the program when it lacks memory in the middle of a folder.
    const std::unique_ptr<DIR, int (*)(DIR*)> at(opendir(folder.c_str()), closedir);
    if (at == nullptr) return;
    while (const dirent* const entry = readdir(at.get())) {
        const std::string_view name = entry->d_name;
        if (!name.starts_with(kTemporaryBegin) || !name.ends_with(kTemporaryEnd)) continue;
        const int handle = openat(dirfd(at.get()), entry->d_name, O_RDONLY | O_NOFOLLOW | O_NONBLOCK | O_CLOEXEC);
        if (handle < 0) continue;
        if (flock(handle, LOCK_EX | LOCK_NB) == 0) unlinkat(dirfd(at.get()), entry->d_name, 0);
        ::close(handle);
    }
}

// Gives the new file the owner and the permissions of the file that it replaces. The owner is kept where the system
// allows it.
void takeAttributes(const FileSystemCalls& calls, int handle, const struct stat& old) {
    const auto give = [&](uid_t owner) { return fchown(handle, owner, old.st_gid) == 0; };
    static_cast<void>(give(old.st_uid) || give(static_cast<uid_t>(-1)));
    check(calls.fchmod(handle, old.st_mode & 07777U));
}

} // namespace

const FileSystemCalls& systemCalls() {
    static const FileSystemCalls kCalls = {
        [](const char* path, int flags, unsigned mode) { return ::open(path, flags, mode); },
        [](int file, const void* data, unsigned long size) -> long { return ::write(file, data, size); },
        [](int file, unsigned mode) { return ::fchmod(file, mode); },
        ::fdatasync,
        ::close,
        ::rename,
        ::fsync,
        ::unlink,
    };
    return kCalls;
}

void writeFileAtomically(const std::string& path, const std::function<void(const FileSink&)>& content) {
    writeFileAtomically(path, content, systemCalls());
}

void writeFileAtomically(const std::string& path, const std::function<void(const FileSink&)>& content,
                         const FileSystemCalls& calls) {
    if (const auto number = openFileNumber(path)) return writeTo(calls, fcntl(*number, F_DUPFD_CLOEXEC, 0), content);
    const std::string target = followLinks(path);
    const std::string folderName = folderOf(target);
    const auto old = aboutFile(target, true);
    if (old && S_ISDIR(old->st_mode)) raiseSystemError(EISDIR);
    if (old && S_ISBLK(old->st_mode)) raiseSystemError(EINVAL);
    if (old && !S_ISREG(old->st_mode)) // a device is written to and must not be replaced by a renamed file
        return writeTo(calls, calls.open(target.c_str(), O_WRONLY | O_NOCTTY | O_CLOEXEC, 0), content);
    if (old) check(faccessat(AT_FDCWD, target.c_str(), W_OK, AT_EACCESS));

    const Descriptor folder(calls, calls.open(folderName.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC, 0));
    removeLeftTemporaries(folderName);
    TemporaryName temporary{calls, {}, false};
    Descriptor file(calls, createUnique(calls, folderName, old ? 0600 : 0666, temporary.path));
    temporary.isThere = true;
    Writer writer(calls, file.handle());
    content([&](std::string_view piece) { writer.append(piece); });
    writer.flush();
    if (old) takeAttributes(calls, file.handle(), *old);
    const Lock lock{fcntl(file.handle(), F_DUPFD_CLOEXEC, 0)};
    check(calls.fdatasync(file.handle()));
    file.close();
    check(calls.rename(temporary.path.c_str(), target.c_str()));
    temporary.isThere = false;
    // Some network file systems cannot sync a folder and answer EINVAL.
    if (calls.fsync(folder.handle()) != 0 && errno != EINVAL) raiseSystemError(errno);
}

} // namespace kestrane

#include "platform/AtomicFile.h"

#include "platform/Files.h"
#include "platform/Paths.h"
#include "platform/RuntimeError.h"
#include "platform/windows/Wide.h"

#include <cerrno>
#include <cstdint>
#include <cstdio>
#include <filesystem>
#include <random>

#include <io.h>

namespace kestrane {

namespace {

constexpr std::size_t kBufferSize = 256 * 1024;
constexpr std::string_view kTemporaryBegin = ".kestrane-";
constexpr std::string_view kTemporaryEnd = ".tmp";

// Gathers pieces into large writes.
class Writer {
public:
    explicit Writer(HANDLE file) : file_(file) { buffer_.reserve(kBufferSize); }

    void append(std::string_view piece) {
        if (buffer_.size() + piece.size() > kBufferSize) flush();
        if (piece.size() < kBufferSize) {
            buffer_.append(piece);
        } else {
            writeAll(file_, piece);
        }
    }

    void flush() {
        writeAll(file_, buffer_);
        buffer_.clear();
    }

private:
    HANDLE file_;
    std::string buffer_;
};

void writeTo(HANDLE file, const std::function<void(const FileSink&)>& content) {
    Writer writer(file);
    content([&](std::string_view piece) { writer.append(piece); });
    writer.flush();
}

std::string folderOf(const std::string& path) {
    const std::size_t slash = path.find_last_of("/\\");
    return slash == std::string::npos ? "./" : path.substr(0, slash + 1);
}

// Returns the file that a path stands for: symbolic links are followed, whether or not the last target exists.
std::string followLinks(const std::string& path) {
    namespace fs = std::filesystem;
    constexpr int kMostLinks = 40;
    std::error_code failed;
    fs::path name = pathOf(path);
    for (int i = 0; i < kMostLinks; ++i) {
        const fs::path named = fs::read_symlink(name, failed);
        if (failed) return name.generic_string(); // it is none
        name = named.is_absolute() ? named : name.parent_path() / named;
    }
    raiseSystemError(ELOOP);
}

// Whether a file is there; true when it cannot be told.
bool mayExist(const std::wstring& path) {
    return GetFileAttributesW(path.c_str()) != INVALID_FILE_ATTRIBUTES || GetLastError() != ERROR_FILE_NOT_FOUND;
}

// A new file that is open to nobody else, under a name that is not in use. It is removed at the end of the scope unless
// it has got another name by then, or is all that is left of what was saved.
class Temporary {
public:
    explicit Temporary(const std::string& folder) {
        std::random_device random;
        constexpr int kTries = 100;
        for (int i = 0; i < kTries; ++i) {
            char digits[32];
            std::snprintf(digits, sizeof digits, "%08x%08x", random(), random());
            path_ = widePath(folder + std::string(kTemporaryBegin) + digits + std::string(kTemporaryEnd));
            file_ = CreateFileW(path_.c_str(), GENERIC_WRITE | DELETE, 0, nullptr, CREATE_NEW, FILE_ATTRIBUTE_NORMAL,
                                nullptr);
            if (file_ != INVALID_HANDLE_VALUE) return;
            if (GetLastError() != ERROR_FILE_EXISTS) raiseLastError();
        }
        raiseSystemError(EEXIST);
    }

    ~Temporary() {
        close();
        if (!isNeeded_) DeleteFileW(path_.c_str());
    }

    Temporary(const Temporary&) = delete;
    Temporary& operator=(const Temporary&) = delete;

    HANDLE file() const { return file_; }

    // Waits until the bytes are on the disk. Takes the attributes of the file that is replaced, of which the calls that
    // replace do not all keep each.
    void finish(DWORD attributes) {
        if (FlushFileBuffers(file_) == 0) raiseLastError();
        close();
        SetFileAttributesW(path_.c_str(), attributes);
    }

    void rename(const std::wstring& target, bool hasOld) {
        const DWORD error = withPatience([&] { return hasOld ? replace(target) : move(target); }, isNameHeldByOther);
        if (error != 0 && hasOld && !mayExist(target)) keepBeside(target);
        if (isNameHeldByOther(error))
            throw RuntimeError(EACCES, "Another program has the file open and does not let it be replaced");
        if (error != 0) raiseLastError(error);
        isNeeded_ = true;
    }

private:
    void close() {
        if (file_ != INVALID_HANDLE_VALUE) CloseHandle(file_);
        file_ = INVALID_HANDLE_VALUE;
    }

    // The old file has lost its name and the new one could not take it: leaves the new one, under a name that no later
    // save cleans up, and says where it is.
    [[noreturn]] void keepBeside(const std::wstring& target) {
        isNeeded_ = true;
        const std::wstring kept = target + L".new";
        const bool isMoved = MoveFileExW(path_.c_str(), kept.c_str(), MOVEFILE_WRITE_THROUGH) != 0;
        throw RuntimeError(EIO, "The old file could not be replaced; what was saved is in " +
                                    portablePath(isMoved ? kept : path_));
    }

    // Keeps the rights and attributes of the old file. Some network drives cannot do that, and then it is moved. So it
    // is when the old file has gone but the new one did not get its name.
    bool replace(const std::wstring& target) const {
        constexpr DWORD kHow = REPLACEFILE_IGNORE_MERGE_ERRORS;
        if (ReplaceFileW(target.c_str(), path_.c_str(), nullptr, kHow, nullptr, nullptr) != 0) return true;
        const DWORD error = GetLastError();
        const bool isUnknown = error == ERROR_NOT_SUPPORTED || error == ERROR_INVALID_FUNCTION ||
                               error == ERROR_CALL_NOT_IMPLEMENTED || error == ERROR_INVALID_PARAMETER ||
                               error == ERROR_UNABLE_TO_MOVE_REPLACEMENT ||
                               error == ERROR_UNABLE_TO_MOVE_REPLACEMENT_2 || error == ERROR_FILE_NOT_FOUND;
        return isUnknown && move(target);
    }

    bool move(const std::wstring& target) const {
        return MoveFileExW(path_.c_str(), target.c_str(), MOVEFILE_REPLACE_EXISTING | MOVEFILE_WRITE_THROUGH) != 0;
    }

    std::wstring path_;
    HANDLE file_ = INVALID_HANDLE_VALUE;
    bool isNeeded_ = false;
};

// Whether a file was last written longer ago than any save waits for its name.
bool isLeft(const FILETIME& written) {
    constexpr std::uint64_t kLongest = 10ULL * 60 * 10'000'000; // in the system's units of 100 ns
    const auto units = [](const FILETIME& time) {
        return (static_cast<std::uint64_t>(time.dwHighDateTime) << 32U) + time.dwLowDateTime;
    };
    FILETIME now{};
    GetSystemTimeAsFileTime(&now);
    return units(now) > units(written) + kLongest;
}

// Removes temporary files that killed saves have left in the folder. One that is still being written is open to nobody
// else, so it stays; one that waits for its name is not open, and young.
void removeLeftTemporaries(const std::string& folder) {
    const std::wstring pattern = widePath(folder + std::string(kTemporaryBegin) + "*" + std::string(kTemporaryEnd));
    WIN32_FIND_DATAW found{};
    const HANDLE search = FindFirstFileW(pattern.c_str(), &found);
    if (search == INVALID_HANDLE_VALUE) return;
    do
        if (isLeft(found.ftLastWriteTime)) DeleteFileW(widePath(folder + narrow(found.cFileName)).c_str());
    while (FindNextFileW(search, &found) != 0);
    FindClose(search);
}

} // namespace

void writeFileAtomically(const std::string& path, const std::function<void(const FileSink&)>& content) {
    if (const auto number = openFileNumber(path))
        return writeTo(reinterpret_cast<HANDLE>(_get_osfhandle(*number)), content);
    if (path.empty()) raiseSystemError(ENOENT);
    const std::string name = followLinks(path);
    const std::wstring target = widePath(name);
    const DWORD old = GetFileAttributesW(target.c_str());
    const bool hasOld = old != INVALID_FILE_ATTRIBUTES;
    if (hasOld && (old & FILE_ATTRIBUTE_DIRECTORY) != 0) raiseSystemError(EISDIR);
    if (hasOld && (old & FILE_ATTRIBUTE_READONLY) != 0) raiseSystemError(EACCES);

    const std::string folder = folderOf(name);
    removeLeftTemporaries(folder);
    Temporary temporary(folder);
    writeTo(temporary.file(), content);
    temporary.finish(hasOld ? old : FILE_ATTRIBUTE_NORMAL);
    temporary.rename(target, hasOld);
}

} // namespace kestrane

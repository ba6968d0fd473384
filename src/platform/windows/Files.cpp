#include "platform/Files.h"

#include "platform/RuntimeError.h"
#include "platform/StreamBytes.h"
#include "platform/windows/Wide.h"

#include <algorithm>
#include <cerrno>

#include <io.h>

namespace kestrane {

namespace {

HANDLE handleOf(int number) {
    return reinterpret_cast<HANDLE>(_get_osfhandle(number));
}

// Reads into bytes from the offset from on, until they are full or the input ends. Returns the offset reached.
std::size_t fill(HANDLE file, FileBytes& bytes, std::size_t from) {
    while (from < bytes.size()) {
        const auto wanted = static_cast<DWORD>(std::min(bytes.size() - from, kReadAtOnce));
        DWORD count = 0;
        if (ReadFile(file, bytes.data() + from, wanted, &count, nullptr) == 0) {
            const DWORD error = GetLastError();
            if (error == ERROR_BROKEN_PIPE || error == ERROR_HANDLE_EOF) break;
            raiseLastError(error);
        }
        if (count == 0) break;
        from += count;
    }
    return from;
}

DWORD attributesOf(const std::string& path) {
    return GetFileAttributesW(widePath(path).c_str());
}

Handle openFile(const std::string& path, DWORD flags = FILE_ATTRIBUTE_NORMAL) {
    const DWORD attributes = attributesOf(path);
    if (attributes != INVALID_FILE_ATTRIBUTES && (attributes & FILE_ATTRIBUTE_DIRECTORY) != 0) raiseSystemError(EISDIR);
    HANDLE file = INVALID_HANDLE_VALUE;
    const DWORD error = withPatience([&] {
        constexpr DWORD kAll = FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE;
        file = CreateFileW(widePath(path).c_str(), GENERIC_READ, kAll, nullptr, OPEN_EXISTING, flags, nullptr);
        return file != INVALID_HANDLE_VALUE;
    });
    if (error != 0) raiseLastError(error);
    return Handle(file);
}

// Reads [from, to) of a file of the disk, wherever it stands. Returns the offset reached, which is less when the file
// ends before. Several threads can do so at once, and need not wait for each other when the file was opened as
// FILE_FLAG_OVERLAPPED.
std::size_t readPart(HANDLE file, FileBytes& bytes, std::size_t from, std::size_t to) {
    const Handle done(CreateEventW(nullptr, TRUE, FALSE, nullptr));
    if (!done.isOpen()) raiseLastError();
    while (from < to) {
        ULARGE_INTEGER offset{};
        offset.QuadPart = from;
        OVERLAPPED where{};
        where.Offset = offset.LowPart;
        where.OffsetHigh = offset.HighPart;
        where.hEvent = done.get();
        DWORD count = 0;
        if (ReadFile(file, bytes.data() + from, static_cast<DWORD>(to - from), nullptr, &where) == 0 &&
            GetLastError() != ERROR_IO_PENDING) {
            if (GetLastError() == ERROR_HANDLE_EOF) break;
            raiseLastError();
        }
        if (GetOverlappedResult(file, &where, &count, TRUE) == 0 && GetLastError() != ERROR_HANDLE_EOF)
            raiseLastError();
        if (count == 0) break;
        from += count;
    }
    return from;
}

// Reads a file of the disk from its beginning to its end.
std::shared_ptr<FileBytes> readWhole(HANDLE file, const std::function<void()>& between) {
    LARGE_INTEGER size{};
    if (GetFileType(file) != FILE_TYPE_DISK) return std::make_shared<FileBytes>(0);
    if (GetFileSizeEx(file, &size) == 0) raiseLastError();
    const auto read = [file](FileBytes& bytes, std::size_t from, std::size_t to) {
        return readPart(file, bytes, from, to);
    };
    return readParts(static_cast<std::size_t>(size.QuadPart), read, between);
}

} // namespace

bool fileExists(const std::string& path) {
    if (const auto number = openFileNumber(path)) return handleOf(*number) != INVALID_HANDLE_VALUE;
    const DWORD attributes = attributesOf(path);
    return attributes != INVALID_FILE_ATTRIBUTES && (attributes & FILE_ATTRIBUTE_DIRECTORY) == 0;
}

// The rights of a folder are many, so it is tried.
bool canWriteTo(const std::string& folder) {
    constexpr DWORD kHow = FILE_ATTRIBUTE_TEMPORARY | FILE_FLAG_DELETE_ON_CLOSE;
    const std::string path = folder + "/.kestrane-" + std::to_string(GetCurrentProcessId()) + ".try";
    return Handle(CreateFileW(widePath(path).c_str(), GENERIC_WRITE | DELETE, 0, nullptr, CREATE_NEW, kHow, nullptr))
        .isOpen();
}

FileBytes::FileBytes(std::size_t size) : size_(size), mapped_(size) {
    if (size == 0) return;
    data_ = static_cast<char*>(VirtualAlloc(nullptr, size, MEM_RESERVE | MEM_COMMIT, PAGE_READWRITE));
    if (data_ == nullptr) raiseSystemError(ENOMEM);
}

FileBytes::~FileBytes() {
    if (data_ != nullptr) VirtualFree(data_, 0, MEM_RELEASE);
}

// Pages that are taken again at once cost nothing until they are touched.
void FileBytes::release(std::size_t from, std::size_t to) {
    SYSTEM_INFO system{};
    GetSystemInfo(&system);
    const std::size_t page = system.dwPageSize;
    const std::size_t first = (from + page - 1) / page * page;
    const std::size_t last = std::min(to, mapped_) / page * page;
    if (isKept_ || first >= last || VirtualFree(data_ + first, last - first, MEM_DECOMMIT) == 0) return;
    if (VirtualAlloc(data_ + first, last - first, MEM_COMMIT, PAGE_READWRITE) == nullptr) raiseSystemError(ENOMEM);
}

std::shared_ptr<FileBytes> readFile(const std::string& path, const std::function<void()>& between) {
    if (const auto number = openFileNumber(path)) return readWhole(handleOf(*number), between);
    const Handle file = openFile(path, FILE_FLAG_OVERLAPPED);
    return readWhole(file.get(), between);
}

void readPieces(const std::string& path, const std::function<void(std::string_view piece)>& take) {
    constexpr std::size_t kPiece = 1U << 20U;
    const Handle file = openFile(path);
    FileBytes piece(kPiece);
    while (const std::size_t count = fill(file.get(), piece, 0))
        take(piece.view().substr(0, count));
}

std::shared_ptr<FileBytes> readInput(const std::string& path) {
    const auto number = openFileNumber(path);
    if (!number || GetFileType(handleOf(*number)) == FILE_TYPE_DISK) return readFile(path);
    return readStream([&](FileBytes& bytes, std::size_t from) { return fill(handleOf(*number), bytes, from); });
}

} // namespace kestrane

// Reads whole files and answers the few questions that the program asks of the file system.
#pragma once

#include <atomic>
#include <cstddef>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

namespace kestrane {

bool fileExists(const std::string& path); // a file (not a folder) of that name, readable or not

bool canWriteTo(const std::string& folder); // whether files can be created in it

// Creates the folder that the file is to be in, when there is none. Raises the system's error.
void makeFolderOf(const std::string& path);

// Whether both names stand for one file, through symbolic links and however they are spelled. Case makes no difference,
// except between two files that both exist.
bool isSameFile(const std::string& a, const std::string& b);

// The bytes of a file, copied into memory (never a mapping: a file that is cut short while it is open must not crash
// the program). release() gives back pages early that are no longer needed.
class FileBytes {
public:
    explicit FileBytes(std::size_t size);
    ~FileBytes();
    FileBytes(const FileBytes&) = delete;
    FileBytes& operator=(const FileBytes&) = delete;

    char* data() { return data_; }

    const char* data() const { return data_; }

    std::size_t size() const { return size_; }

    std::string_view view() const { return {data_, size_}; }

    void shrink(std::size_t size) { size_ = size < size_ ? size : size_; }

    // Gives the memory of [from, to) back to the system, but only the whole pages within it. Those bytes read as 0
    // afterwards. Does nothing while somebody else reads the bytes (Keep).
    void release(std::size_t from, std::size_t to);

    void Keep(bool isKept) { isKept_ = isKept; }

private:
    char* data_ = nullptr;
    std::size_t size_ = 0;
    std::size_t mapped_ = 0;
    std::atomic<bool> isKept_ = false;
};

// Raises errno and its text when the file cannot be read; a folder raises EISDIR. It never waits: a pipe or a device
// reads as empty. between is called in this thread between pieces of 8 MiB at most; what it raises ends the reading.
std::shared_ptr<FileBytes> readFile(const std::string& path, const std::function<void()>& between = {});

constexpr std::size_t kReadAtOnce = std::size_t{8} << 20;

// The same, but passes the bytes on piece by piece, so that a large file takes no memory.
void readPieces(const std::string& path, const std::function<void(std::string_view piece)>& take);

// As readFile, but a pipe, a socket or a terminal is read to its end, however long that takes. Raises EFBIG when more
// than 1 GiB comes.
std::shared_ptr<FileBytes> readInput(const std::string& path);

// The number of the open file that a path names ("/dev/stdin", "/dev/stdout", "/dev/stderr", "/dev/fd/N",
// "/proc/self/fd/N"), whatever it is open on; nothing for any other path.
std::optional<int> openFileNumber(std::string_view path);

// Whether a path names a file on the disk, which can be read again, and not a stream, a device or a folder.
bool isRegularFile(const std::string& path);

constexpr const char* kStandardInput = "/dev/stdin";
constexpr const char* kStandardOutput = "/dev/stdout";

} // namespace kestrane

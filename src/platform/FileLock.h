// A lock that running programs see of each other: a small file that is locked for as long as the object lives, and then
// removed. The system gives the lock up when the program ends, however it ends.
#pragma once

#include <memory>
#include <string>

namespace kestrane {

class FileLock {
public:
    // Creates the file when it is missing and locks it. Returns null when another program (or another object of this
    // one) holds it. Raises the system's error when it cannot be created or the file system knows no locks.
    static std::shared_ptr<FileLock> take(const std::string& path);

    ~FileLock();
    FileLock(const FileLock&) = delete;
    FileLock& operator=(const FileLock&) = delete;

private:
    FileLock(std::string path, int handle) : path_(std::move(path)), handle_(handle) {}

    std::string path_;
    int handle_;
};

} // namespace kestrane

// What can be seen of a file from outside: whether it has changed, and whether somebody is still writing it.
#pragma once

#include <cstdint>
#include <optional>
#include <string>

namespace kestrane {

// The state of a file, by which a change is noticed.
struct FileState {
    std::int64_t Size = 0;    // bytes
    std::int64_t Changed = 0; // nanoseconds since the beginning of 1970; of the content or the name, whichever is later

    bool operator==(const FileState&) const = default;
};

// The state of a regular file; nothing when there is none of that name.
std::optional<FileState> stateOfFile(const std::string& path);

// Whether a program on this machine has the file open for writing. False also when that cannot be found out.
bool isBeingWritten(const std::string& path);

} // namespace kestrane

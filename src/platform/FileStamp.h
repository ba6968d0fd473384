// Tells whether a file on the disk is still the one that was read or written.
#pragma once

#include <cstdint>
#include <string>

namespace kestrane {

struct FileStamp {
    std::int64_t Size = -1;    // bytes; -1 when there was no file
    std::int64_t Modified = 0; // nanoseconds since the beginning of 1970
    std::string Hash;          // SHA-256 of the content; empty when it was not computed

    bool IsKnown() const { return Size >= 0; }

    bool operator==(const FileStamp&) const = default;
};

// The size and time of a file, without its hash; not known when the file cannot be opened. The file is opened for that,
// because a network file system answers from its memory otherwise.
FileStamp stampOf(const std::string& path);
FileStamp hashedStampOf(const std::string& path); // the same with its hash; a file that cannot be read is not known

// Whether the file at path has another content than the one that was stamped. A file that is gone or cannot be read
// has not. Another time alone is no other content: with isThorough, or when the size or the time differs, the content
// is hashed. Takes as long as reading the file.
bool hasOtherContent(const std::string& path, const FileStamp& stamp, bool isThorough);

} // namespace kestrane

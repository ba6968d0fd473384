// Writes a file so that a whole one exists at every moment: the old one until the new one is complete and on disk, then
// the new one.
#pragma once

#include <functional>
#include <string>
#include <string_view>

namespace kestrane {

// Takes the content piece by piece. The pieces may have any size; they are gathered into large writes.
using FileSink = std::function<void(std::string_view)>;

// Calls content with a sink that writes to a temporary file in the folder of path. Then sets its permissions (those of
// the old file; 0666 less the umask for a new one) and, where possible, its owner, calls fdatasync, renames the
// temporary file to path and calls fsync on the folder. A symbolic link is followed: the file that it names is replaced
// or created, and the link stays.
//
// Every return value is checked. A failure removes the temporary file, leaves the old file as it was and raises errno
// with its text; only when the last fsync fails, the new file is there already, whole. An exception thrown by content
// passes through and leaves the old file as it was. Temporary files that killed saves have left in the folder are
// removed. Raises before anything is written: EISDIR for a folder, EACCES for a file that the user may not write,
// EINVAL for a block device.
//
// Pipes, terminals and the like, and what is open already ("/dev/stdout", "/dev/fd/3"), are written to directly.
void writeFileAtomically(const std::string& path, const std::function<void(const FileSink&)>& content);

// The system calls that writing goes through, as one table, so that a test can make each of them fail in turn.
struct FileSystemCalls {
    int (*open)(const char* path, int flags, unsigned mode);
    long (*write)(int file, const void* data, unsigned long size);
    int (*fchmod)(int file, unsigned mode);
    int (*fdatasync)(int file);
    int (*close)(int file);
    int (*rename)(const char* from, const char* to);
    int (*fsync)(int file);
    int (*unlink)(const char* path);
};

// Those of the system.
const FileSystemCalls& systemCalls();

void writeFileAtomically(const std::string& path, const std::function<void(const FileSink&)>& content,
                         const FileSystemCalls& calls);

} // namespace kestrane

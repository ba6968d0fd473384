// Writing a file so that there is always a whole one: the old until the new is complete and on disk, then the new.
#pragma once

#include <functional>
#include <string>
#include <string_view>

namespace kestrane {

// Where the content goes, piece by piece. Pieces of any size; they are gathered into large writes.
using FileSink = std::function<void(std::string_view)>;

// Calls content with a sink that writes to a temporary file in the folder of path, then permissions (those of the old
// file; 0666 less the umask for a new one) and where possible owner, fdatasync, rename over path, fsync of the folder.
// A symbolic link is followed: the file it names is replaced or created, the link stays. Every return value is checked;
// a failure removes the temporary file and raises errno and its text, with the old file as it stood (except that a
// failure of the last fsync leaves the new one, whole). What content throws passes through, with the old file as it
// stood. What a save that was killed has left in the folder is removed. Raises before anything is written: EISDIR for a
// folder, EACCES for a file that the user may not write, EINVAL for a disk.
//
// A pipe, a terminal and the like, and what is open already ("/dev/stdout", "/dev/fd/3"), are written to as they stand.
void writeFileAtomically(const std::string& path, const std::function<void(const FileSink&)>& content);

// The system calls that writing goes through, one table, so that a test can fail each in turn.
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

extern const FileSystemCalls kSystemCalls;
void writeFileAtomically(const std::string& path, const std::function<void(const FileSink&)>& content,
                         const FileSystemCalls& calls);

} // namespace kestrane

// Reads into memory what a call of the system reads: a file of a known size by several threads, or a stream, whose
// length nobody knows beforehand, into memory that grows as it comes.
#pragma once

#include "platform/Files.h"

namespace kestrane {

// Reads into bytes from the offset from on, until they are full or the input ends. Returns the offset reached.
using FillBytes = std::function<std::size_t(FileBytes& bytes, std::size_t from)>;

// Returns all that fill reads until its input ends. Raises EFBIG when more than 1 GiB comes.
std::shared_ptr<FileBytes> readStream(const FillBytes& fill);

// Reads [from, to) of a file into bytes. Returns the offset reached, which is less only when the file ends before.
// Called by several threads at once.
using ReadPart = std::function<std::size_t(FileBytes& bytes, std::size_t from, std::size_t to)>;

// Returns the first `size` bytes of a file, or fewer when it has been cut short meanwhile. between is that of readFile.
std::shared_ptr<FileBytes> readParts(std::size_t size, const ReadPart& read, const std::function<void()>& between);

} // namespace kestrane

// Reads a stream, whose length nobody knows beforehand, into memory that grows as it comes. What reads from it is of
// the system's.
#pragma once

#include "platform/Files.h"

namespace kestrane {

// Reads into bytes from the offset from on, until they are full or the input ends. Returns the offset reached.
using FillBytes = std::function<std::size_t(FileBytes& bytes, std::size_t from)>;

// Returns all that fill reads until its input ends. Raises EFBIG when more than 1 GiB comes.
std::shared_ptr<FileBytes> readStream(const FillBytes& fill);

} // namespace kestrane

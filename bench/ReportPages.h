// A long report written as PDF.
#pragma once

#include <cstddef>
#include <string>

namespace kestrane::bench {

// Seconds from the log to the whole file of this name, with all its intervals. Makes the toolkit's application object:
// once in a process.
double reportSeconds(std::size_t rows, const std::string& name);

} // namespace kestrane::bench

// Adds lines to the end of a file, for records that are never rewritten.
#pragma once

#include <string>
#include <string_view>

namespace kestrane {

// Adds whole lines (each ends with a line break) to a file, which is created when there is none, and waits until they
// are on disk. A last line that a power cut has left without its end is ended first. When the lines cannot be written
// whole, what was written of them is taken back, and a new file removed. Raises errno with its text; EINVAL for what is
// no regular file.
void appendLines(const std::string& path, std::string_view lines);

} // namespace kestrane

// The SHA-256 of a file, which tells whether its contents are still the same.
#pragma once

#include <string>

namespace kestrane {

// 64 lower-case hexadecimal digits. Raises errno and its text when the file cannot be read.
std::string sha256OfFile(const std::string& path);

} // namespace kestrane

// The SHA-256 of a file, which tells whether its contents are still the same.
#pragma once

#include <string>
#include <string_view>

namespace kestrane {

// 64 lower-case hexadecimal digits.
std::string sha256Of(std::string_view bytes);
std::string sha256OfFile(const std::string& path); // raises errno and its text when it cannot be read

} // namespace kestrane

// A path of the program (UTF-8, "/" between folders) as one of the standard library, which takes the bytes of a plain
// text for letters of another encoding on some systems. generic_string() is the way back.
#pragma once

#include <filesystem>
#include <string>
#include <string_view>

namespace kestrane {

inline std::filesystem::path pathOf(std::string_view utf8) {
    return std::u8string(utf8.begin(), utf8.end());
}

} // namespace kestrane

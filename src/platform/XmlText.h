// What the check of XML and the walk through it both ask of a text.
#pragma once

#include <cstddef>
#include <cstring>
#include <optional>
#include <string_view>

namespace kestrane::xml {

inline bool startsWith(const char* at, const char* end, std::string_view text) {
    return static_cast<std::size_t>(end - at) >= text.size() && std::memcmp(at, text.data(), text.size()) == 0;
}

// Where the text stands first; null when it does not.
inline const char* find(const char* at, const char* end, std::string_view text) {
    const std::size_t found = std::string_view(at, static_cast<std::size_t>(end - at)).find(text);
    return found == std::string_view::npos ? nullptr : at + found;
}

// Returns the character of the reference that begins with the "&" at at, and moves at behind its ";". Returns nothing
// when it is no valid reference.
std::optional<char32_t> reference(const char*& at, const char* end);

} // namespace kestrane::xml

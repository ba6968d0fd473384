// What the check of XML and the walk through it both ask of a text.
#pragma once

#include <optional>
#include <string_view>

namespace kestrane::xml {

bool startsWith(const char* at, const char* end, std::string_view text);

// Where the text stands first; null when it does not.
const char* find(const char* at, const char* end, std::string_view text);

// Returns the character of the reference that begins with the "&" at at, and moves at behind its ";". Returns nothing
// when it is no valid reference.
std::optional<char32_t> reference(const char*& at, const char* end);

} // namespace kestrane::xml

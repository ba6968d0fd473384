// Whole numbers as words of a call.
#pragma once

#include <cstdint>
#include <optional>
#include <string_view>

namespace kestrane {

// Reads decimal digits with a sign before and blanks around; leading zeros count for nothing. Returns nothing for any
// other text, and past the type.
std::optional<std::int32_t> wholeNumber(std::string_view text);

} // namespace kestrane

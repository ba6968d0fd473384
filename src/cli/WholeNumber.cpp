#include "cli/WholeNumber.h"

#include "platform/Trimmed.h"

#include <charconv>
#include <system_error>

namespace kestrane {

std::optional<std::int32_t> wholeNumber(std::string_view text) {
    std::string_view digits = trimmed(text);
    if (digits.starts_with('+') && !digits.starts_with("+-")) digits.remove_prefix(1);
    std::int32_t number = 0;
    const auto [end, error] = std::from_chars(digits.data(), digits.data() + digits.size(), number);
    if (error != std::errc() || end != digits.data() + digits.size()) return std::nullopt;
    return number;
}

} // namespace kestrane

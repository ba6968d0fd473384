// Text without the white space at its ends.
#pragma once

#include <string_view>

namespace kestrane {

// Returns text without the blanks, tabs and line ends at both ends, as a view into it; empty when there is nothing
// else.
constexpr std::string_view trimmed(std::string_view text) {
    constexpr std::string_view kWhite = " \t\r\n";
    const std::size_t first = text.find_first_not_of(kWhite);
    return first == std::string_view::npos ? std::string_view()
                                           : text.substr(first, text.find_last_not_of(kWhite) - first + 1);
}

} // namespace kestrane

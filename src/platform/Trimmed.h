// Text without what is blank at its ends.
#pragma once

#include <string_view>

namespace kestrane {

// Without the blanks, tabs and line ends at both ends; a view into text.
constexpr std::string_view trimmed(std::string_view text) {
    constexpr std::string_view kWhite = " \t\r\n";
    const std::size_t first = text.find_first_not_of(kWhite);
    return first == std::string_view::npos ? std::string_view()
                                           : text.substr(first, text.find_last_not_of(kWhite) - first + 1);
}

} // namespace kestrane

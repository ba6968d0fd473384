// Finds what a wrong word of a call was probably meant to be.
#pragma once

#include <span>
#include <string>
#include <string_view>

namespace kestrane {

// The candidate that takes the fewest changes (a letter more, less or different, or two exchanged), the first one of
// several. Empty when every candidate takes more changes than half the letters of the word.
std::string nearest(std::string_view word, std::span<const std::string> candidates);

// The nearest candidate as the end of a message: "; did you mean 'show'?". Empty when there is none.
std::string meant(std::string_view word, std::span<const std::string> candidates);

} // namespace kestrane

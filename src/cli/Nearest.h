// What the wrong word of a call was meant to be.
#pragma once

#include <span>
#include <string>
#include <string_view>

namespace kestrane {

// The candidate that takes the fewest changes (a letter more, less or other, two exchanged), the first of several;
// empty when none is at all like the word.
std::string nearest(std::string_view word, std::span<const std::string> candidates);

} // namespace kestrane

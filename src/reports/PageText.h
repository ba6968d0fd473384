// Makes a text fit a width on the page.
#pragma once

#include "reports/PageDevice.h"

#include <string>
#include <string_view>
#include <vector>

namespace kestrane {

// The text, or as much of its beginning as fits, followed by an ellipsis.
std::string fittedText(const PageMetrics& metrics, std::string_view text, double width, const PageFont& font);

// The text in lines, broken at blanks, or within a word that is longer than a line. There are at most most lines: what
// is left over ends in an ellipsis. An empty text gives one empty line. A text that is too long and ends in kept is cut
// in front of that, as long as kept itself has room.
std::vector<std::string> wrappedText(const PageMetrics& metrics, std::string_view text, double width,
                                     const PageFont& font, std::size_t most, std::string_view kept = {});

// The text on one line: line breaks, tabs and other characters that cannot be printed become blanks.
std::string printableText(std::string_view text);

// The lines of a text that a user has typed, printable; what follows the last of so many is an ellipsis.
std::vector<std::string> paragraphsOf(std::string_view text, std::size_t most);

} // namespace kestrane

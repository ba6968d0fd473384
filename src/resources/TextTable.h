#pragma once
// The numbered text table: every word that a user sees, in UK English, with its tokens unexpanded. It is constant data
// in the program image and knows neither brands nor versions; Texts puts those in.

#include <optional>
#include <span>
#include <string_view>

#include "resources/TextNames.h"

namespace kestrane {

// Tokens in a text: "~" line break, "{{}}" company, "{}" firm, "$$$" product title, "$$" product name, "$" application
// title, "%.%" version. "^" and "*" are filled by the caller. Menu and button captions carry "&" before their mnemonic.
struct TextEntry {
    Text::Id Id;
    std::string_view Text;
};

// All texts, by rising id.
std::span<const TextEntry> TextTable();

// The raw text of an id, or nothing when the table has no such id.
std::optional<std::string_view> FindText(Text::Id id);

} // namespace kestrane

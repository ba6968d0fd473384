#pragma once
// The numbered text table: every word that a user sees, in UK English, with its tokens unexpanded, and what each text
// is for. It is constant data in the program image and knows neither brands nor versions; Texts puts those in.

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

// What a text is for decides in which language it is given.
enum class TextUse {
    Shown,   // in windows and reports, in the language of these; English in what the command line prints
    Message, // told to the user, on the command line, too, in the user's language
    Data     // stands in files, settings or addresses, and is read back: never translated
};

// All texts, by rising id.
std::span<const TextEntry> TextTable();

// The raw text of an id, or nothing when the table has no such id.
std::optional<std::string_view> FindText(Text::Id id);

// The same in a table of translations, which must rise by id.
std::optional<std::string_view> FindText(std::span<const TextEntry> table, Text::Id id);

TextUse UseOf(Text::Id id);

} // namespace kestrane

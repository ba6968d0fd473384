#pragma once
// The languages that the texts can be in. The table is made from the PO files of translations/ when the program is
// built.

#include <span>
#include <string_view>

#include "resources/TextTable.h"

namespace kestrane {

struct Language {
    std::string_view Code = "en";          // two letters
    std::string_view Name = "English";     // in the language itself
    std::span<const TextEntry> Words = {}; // the raw texts by rising id; a text that is not there is given in English
};

// English, whose Words are empty, and the others by their codes.
std::span<const Language> Languages();

// The language of a code, or English when there is none of it.
const Language& LanguageOf(std::string_view code);

// The languages of what is shown and of what is told.
struct Wording {
    Language Shown, Messages;
};

} // namespace kestrane

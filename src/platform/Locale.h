// The language and the two separators of the user's locale. Nothing else of the locale is used: the program's patterns
// fix the rest.
#pragma once

#include <string>

namespace kestrane {

struct Locale {
    std::string DecimalSeparator = "."; // one UTF-8 character
    std::string DateSeparator = "/";    // one UTF-8 character
};

// The language of the environment as two letters ("de"), from the first of LC_ALL, LC_MESSAGES and LANG that is set; it
// need not be installed. Empty for the locales C and POSIX, and when none is set.
std::string systemLanguage();

// The separators of the environment's locale (LC_ALL, LC_NUMERIC, LC_TIME, LANG); the defaults where it names none.
Locale systemLocale();

} // namespace kestrane

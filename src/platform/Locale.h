// The two separators of the user's locale. Nothing else of the locale is used: the program's patterns fix the rest.
#pragma once

#include <string>

namespace kestrane {

struct Locale {
    std::string DecimalSeparator = "."; // one UTF-8 character
    std::string DateSeparator = "/";    // one UTF-8 character
};

// The separators of the environment's locale (LC_ALL, LC_NUMERIC, LC_TIME, LANG); the defaults where it names none.
Locale systemLocale();

} // namespace kestrane

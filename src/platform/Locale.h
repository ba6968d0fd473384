// The two separators of the user's locale. Everything else of the locale is fixed: the program's patterns say the rest.
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

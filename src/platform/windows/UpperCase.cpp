#include "platform/Utf8.h"

#include <windows.h>

namespace kestrane {

namespace {

// Letters that the system counts as two of its characters are few and dead, and stay as they are.
char32_t upperLetter(char32_t letter) {
    if (letter > 0xFFFF) return letter;
    const auto character = static_cast<wchar_t>(letter);
    wchar_t upper = 0;
    const int count =
        LCMapStringEx(LOCALE_NAME_INVARIANT, LCMAP_UPPERCASE, &character, 1, &upper, 1, nullptr, nullptr, 0);
    return count == 1 ? char32_t{upper} : letter;
}

} // namespace

std::string upperCase(std::string_view utf8) {
    std::string upper;
    upper.reserve(utf8.size());
    for (std::size_t at = 0; at < utf8.size();)
        appendUtf8(upper, upperLetter(nextCodePoint(utf8, at)));
    return upper;
}

} // namespace kestrane

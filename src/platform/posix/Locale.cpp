#include "platform/Locale.h"

#include <langinfo.h>
#include <locale.h>

#include <cstdlib>
#include <string_view>

namespace kestrane {

namespace {

// The first character of a UTF-8 text; empty for an empty text or one in another encoding.
std::string firstCharacter(std::string_view text, bool isUtf8) {
    const auto isTail = [&](std::size_t at) { return at < text.size() && (text[at] & 0xC0) == 0x80; };
    std::size_t length = text.empty() ? 0 : 1;
    while (isTail(length))
        ++length;
    return isUtf8 || (length == 1 && (text[0] & 0x80) == 0) ? std::string(text.substr(0, length)) : std::string();
}

// The text between the first two fields of a date format as strftime writes it.
std::string_view behindFirstField(std::string_view format) {
    const std::size_t field = format.find('%');
    if (field == std::string_view::npos) return {};
    const std::size_t letter = format.find_first_not_of("-_0^#EO", field + 1);
    if (letter == std::string_view::npos) return {};
    if (format[letter] == 'D') return "/";
    if (format[letter] == 'F') return "-";
    const std::string_view rest = format.substr(letter + 1);
    return rest.substr(0, rest.find('%'));
}

} // namespace

std::string systemLanguage() {
    for (const char* name : {"LC_ALL", "LC_MESSAGES", "LANG"}) {
        const char* const value = std::getenv(name);
        if (value == nullptr || *value == '\0') continue;
        const std::string_view locale(value);
        const std::string_view language = locale.substr(0, locale.find_first_of("_.@-"));
        return language.size() == 2 ? std::string(language) : std::string();
    }
    return {};
}

Locale systemLocale() {
    Locale result;
    const locale_t locale = newlocale(LC_ALL_MASK, "", nullptr);
    if (locale == nullptr) return result;
    const bool isUtf8 = std::string_view(nl_langinfo_l(CODESET, locale)) == "UTF-8";
    const auto take = [&](std::string& separator, std::string_view text) {
        if (const std::string character = firstCharacter(text, isUtf8); !character.empty() && character != " ")
            separator = character;
    };
    take(result.DecimalSeparator, nl_langinfo_l(RADIXCHAR, locale));
    take(result.DateSeparator, behindFirstField(nl_langinfo_l(D_FMT, locale)));
    freelocale(locale);
    return result;
}

} // namespace kestrane

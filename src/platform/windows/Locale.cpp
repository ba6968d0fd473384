#include "platform/Locale.h"

#include "platform/windows/Wide.h"

#include <array>

namespace kestrane {

namespace {

// A text of the user's locale; empty when the system has none.
std::string textOf(LCTYPE kind) {
    std::array<wchar_t, 100> text{};
    const int size = GetLocaleInfoEx(LOCALE_NAME_USER_DEFAULT, kind, text.data(), static_cast<int>(text.size()));
    return size < 2 ? std::string() : narrow({text.data(), static_cast<std::size_t>(size) - 1});
}

std::string firstCharacter(const std::string& text) {
    std::size_t length = text.empty() ? 0 : 1;
    while (length < text.size() && (text[length] & 0xC0) == 0x80)
        ++length;
    return text.substr(0, length);
}

// The text between the first two fields of a pattern such as "dd.MM.yyyy".
std::string behindFirstField(const std::string& pattern) {
    constexpr const char* kFields = "dMyg";
    const std::size_t field = pattern.find_first_of(kFields);
    const std::size_t end = pattern.find_first_not_of(kFields, field);
    return field == std::string::npos || end == std::string::npos ? std::string() : pattern.substr(end);
}

} // namespace

std::string systemLanguage() {
    ULONG count = 0;
    ULONG size = 0;
    // The language of the system's own words, which need not be that of the formats.
    if (GetUserPreferredUILanguages(MUI_LANGUAGE_NAME, &count, nullptr, &size) == 0 || size == 0) return {};
    std::wstring names(size, L'\0');
    if (GetUserPreferredUILanguages(MUI_LANGUAGE_NAME, &count, names.data(), &size) == 0) return {};
    const std::string first = narrow(names.c_str());
    const std::string language = first.substr(0, first.find_first_of("-_"));
    return language.size() == 2 ? language : std::string();
}

Locale systemLocale() {
    Locale result;
    const auto take = [](std::string& separator, const std::string& text) {
        if (const std::string character = firstCharacter(text); !character.empty() && character != " ")
            separator = character;
    };
    take(result.DecimalSeparator, textOf(LOCALE_SDECIMAL));
    take(result.DateSeparator, behindFirstField(textOf(LOCALE_SSHORTDATE)));
    return result;
}

} // namespace kestrane

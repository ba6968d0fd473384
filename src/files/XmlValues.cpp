#include "files/XmlValues.h"

#include "platform/Numbers.h"
#include "resources/Texts.h"

#include <algorithm>
#include <cctype>
#include <string>

namespace kestrane {

std::int16_t readInteger(std::string_view text, const Locale& locale) {
    return isNumeric(text, locale) ? toInteger(text, locale) : std::int16_t{0};
}

std::int32_t readLong(std::string_view text, const Locale& locale) {
    return isNumeric(text, locale) ? toLong(text, locale) : 0;
}

float readLevel(std::string_view text, const Locale& locale) {
    float level = 0;
    if (locale.DecimalSeparator == "." || text.find(locale.DecimalSeparator) == std::string_view::npos) {
        return readSingle(text, level) ? level : 0;
    }
    if (text.find('.') != std::string_view::npos) return 0; // a second kind of separator
    const std::string point = ReplaceText(std::string(text), locale.DecimalSeparator, ".");
    return readSingle(point, level) ? level : 0;
}

bool readFlag(std::string_view text, const Locale& locale) {
    if (isNumeric(text, locale)) return toDouble(text, locale) != 0;
    constexpr std::string_view kTrue = "TRUE";
    return std::equal(text.begin(), text.end(), kTrue.begin(), kTrue.end(),
                      [](unsigned char a, char b) { return std::toupper(a) == b; });
}

} // namespace kestrane

#include "model/SettingsText.h"

#include <algorithm>
#include <cctype>

namespace kestrane {

namespace {

bool equalsIgnoringCase(std::string_view a, std::string_view b) {
    return std::equal(a.begin(), a.end(), b.begin(), b.end(),
                      [](unsigned char x, unsigned char y) { return std::tolower(x) == std::tolower(y); });
}

const Locale kStoreLocale{};

} // namespace

void fromSettingsText(std::string_view text, bool& value) {
    if (equalsIgnoringCase(text, "true") || equalsIgnoringCase(text, "yes")) {
        value = true;
    } else if (equalsIgnoringCase(text, "false") || equalsIgnoringCase(text, "no")) {
        value = false;
    } else {
        value = toDouble(text, kStoreLocale) != 0;
    }
}

void fromSettingsText(std::string_view text, std::int16_t& value) {
    value = toInteger(text, kStoreLocale);
}

void fromSettingsText(std::string_view text, float& value) {
    value = toSingle(text, kStoreLocale);
}

void fromSettingsText(std::string_view text, std::string& value) {
    value = text;
}

} // namespace kestrane

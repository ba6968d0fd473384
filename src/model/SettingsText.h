// Values as the settings store keeps them: Booleans as True and False, numbers with a point.
#pragma once

#include "platform/Numbers.h"
#include "platform/RuntimeError.h"
#include "platform/Settings.h"

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace kestrane {

inline constexpr std::string_view kPreferences = "Preferences";

inline std::string settingsText(bool value) {
    return value ? "True" : "False";
}

inline std::string settingsText(std::int16_t value) {
    return std::to_string(value);
}

inline std::string settingsText(float value) {
    return singleText(value);
}

inline std::string settingsText(const std::string& value) {
    return value;
}

// These convert a text of the store; they raise 13 or 6 when it is no value of the type.
void fromSettingsText(std::string_view text, bool& value); // True, False, Yes, No, or a number
void fromSettingsText(std::string_view text, std::int16_t& value);
void fromSettingsText(std::string_view text, float& value);
void fromSettingsText(std::string_view text, std::string& value);

template <class T>
void readSetting(const SettingsStore& store, std::string_view key, T& value, std::vector<std::string>& badKeys) {
    const std::string text = store.read(kPreferences, key, settingsText(value));
    try {
        fromSettingsText(text, value);
    } catch (const RuntimeError&) {
        badKeys.emplace_back(key);
    }
}

template <class T>
void writeSetting(SettingsStore& store, std::string_view key, const T& value) {
    store.write(kPreferences, key, settingsText(value));
}

} // namespace kestrane

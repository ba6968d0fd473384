#include "platform/Settings.h"

namespace kestrane {

std::string MemorySettings::read(std::string_view section, std::string_view key, std::string_view defaultText) const {
    const auto found = Values.find({std::string(section), std::string(key)});
    return found == Values.end() ? std::string(defaultText) : found->second;
}

void MemorySettings::write(std::string_view section, std::string_view key, std::string_view text) {
    Values[{std::string(section), std::string(key)}] = text;
}

void MemorySettings::remove(std::string_view section, std::string_view key) {
    Values.erase({std::string(section), std::string(key)});
}

void moveSetting(SettingsStore& from, SettingsStore& to, std::string_view section, std::string_view key) {
    const std::string text = from.read(section, key, {});
    if (text.empty()) return;
    if (to.read(section, key, {}).empty()) to.write(section, key, text);
    from.remove(section, key);
}

} // namespace kestrane

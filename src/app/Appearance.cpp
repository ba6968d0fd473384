#include "app/Appearance.h"

#include <algorithm>
#include <array>
#include <string>

namespace kestrane {

namespace {

constexpr std::string_view kSection = "Settings";
constexpr std::string_view kKey = "Appearance";
constexpr std::array<const char*, 4> kNames = {"System", "Light", "Dark", "HighContrast"};

} // namespace

Appearance readAppearance(const SettingsStore& store) {
    const std::string name = store.read(kSection, kKey, kNames.front());
    const auto* const found = std::ranges::find(kNames, name);
    return found == kNames.end() ? Appearance::AsSystem : static_cast<Appearance>(found - kNames.begin());
}

void storeAppearance(SettingsStore& store, Appearance appearance) {
    store.write(kSection, kKey, kNames.at(static_cast<std::size_t>(appearance)));
}

} // namespace kestrane

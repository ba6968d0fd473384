#include "platform/Settings.h"

namespace kestrane {

std::string MemorySettings::read(std::string_view section, std::string_view key, std::string_view defaultText) const {
    const auto found = Values.find({std::string(section), std::string(key)});
    return found == Values.end() ? std::string(defaultText) : found->second;
}

void MemorySettings::write(std::string_view section, std::string_view key, std::string_view text) {
    Values[{std::string(section), std::string(key)}] = text;
}

} // namespace kestrane

#include "files/FaultPlace.h"

#include "platform/Utf8.h"

#include <cstddef>

namespace kestrane {

std::string quoted(std::string_view content) {
    constexpr std::size_t kShown = 40;
    const std::string text = toUtf8(content);
    const std::string_view shown = firstBytes(text, kShown);
    return '"' + std::string(shown) + (shown.size() < text.size() ? "...\"" : "\"");
}

std::string placeIn(const Session& session, std::string_view text, std::string_view part) {
    if (part.data() == nullptr) return {};
    const std::string_view before = text.substr(0, static_cast<std::size_t>(part.data() - text.data()));
    int line = 1;
    for (std::size_t i = 0; i < before.size(); ++i)
        if (before[i] == '\n' || (before[i] == '\r' && !before.substr(i + 1).starts_with('\n'))) ++line;
    return ReplaceText(session.LoadText(Text::AtLine), "^", std::to_string(line)) + " " + quoted(part);
}

} // namespace kestrane

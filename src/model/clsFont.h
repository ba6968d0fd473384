// A font of a chart or report, by name and point size.
#pragma once

#include <string>

namespace kestrane {

class clsFont {
public:
    std::string Name;
    float Size = 8; // points

    void Copy(const clsFont& objFont) { *this = objFont; }

    bool operator==(const clsFont&) const = default;
};

} // namespace kestrane

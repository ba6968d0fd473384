// A colour by its parts, red, green and blue, each 0 to 255; and the colours of marked cells.
#pragma once

namespace kestrane {

struct Colour {
    int red, green, blue;

    bool operator==(const Colour&) const = default;
};

constexpr Colour HighlightColour = {255, 100, 100};
constexpr Colour SelectColour = {185, 228, 255};

} // namespace kestrane

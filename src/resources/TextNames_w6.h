#pragma once

#include "resources/TextNames.h"

namespace kestrane::Text {
inline constexpr Id OtherSelectionInZoom = Id(9481);
inline constexpr Id EndZoomFirst = Id(9482);
} // namespace kestrane::Text

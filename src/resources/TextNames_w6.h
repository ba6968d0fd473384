#pragma once

#include "resources/TextNames.h"

namespace kestrane::Text {
inline constexpr Id OtherSelectionInZoom = Id(9481);
inline constexpr Id EndZoomFirst = Id(9482);
inline constexpr Id RankNotTogether = Id(9483);
} // namespace kestrane::Text

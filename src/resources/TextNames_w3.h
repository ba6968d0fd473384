// The names of the texts of figures that are not what their names say.
#pragma once

#include "resources/TextNames.h"

namespace kestrane::Text {

inline constexpr Id IntervalsNotConverted = Id(9440);
inline constexpr Id BasisUnknownBands = Id(9441);

} // namespace kestrane::Text

#pragma once

#include "resources/TextNames.h"

namespace kestrane::Text {

inline constexpr Id RenameOpenElsewhere = Id(9400);

} // namespace kestrane::Text

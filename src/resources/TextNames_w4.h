#pragma once

#include "resources/TextNames.h"

namespace kestrane::Text {
inline constexpr Id EveryIntervalExcluded = Id(9461);
inline constexpr Id LogNotRecalculated = Id(9499);
}

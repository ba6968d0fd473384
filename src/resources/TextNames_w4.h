#pragma once

#include "resources/TextNames.h"

namespace kestrane::Text {
inline constexpr Id NotUpToDate = Id(9460);
}

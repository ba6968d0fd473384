#pragma once

#include "resources/TextNames.h"

namespace kestrane::Text {
inline constexpr Id OpeningFile = Id(9390);
}

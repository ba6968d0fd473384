#pragma once

#include "resources/TextNames.h"

namespace kestrane::Text {
inline constexpr Id Interrupted = Id(9600);
}

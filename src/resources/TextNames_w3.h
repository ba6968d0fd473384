#pragma once
// Names of texts about downloads, other programs and the history.

#include "resources/TextNames.h"

namespace kestrane::Text {

inline constexpr Id LengthOfLog = Id(9201);
inline constexpr Id OtherLogsOnInstrument = Id(9202);

} // namespace kestrane::Text

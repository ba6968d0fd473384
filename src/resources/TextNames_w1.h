// The names of the texts of what is left open, left out or refused.
#pragma once

#include "resources/TextNames.h"

namespace kestrane::Text {

inline constexpr Id StateUndecided = Id(9401);
inline constexpr Id WarnHoursOutOfRange = Id(9402);
inline constexpr Id WarnRowsTwice = Id(9403);
inline constexpr Id NoPercentages = Id(9404);
inline constexpr Id NotComparedByBand = Id(9405);
inline constexpr Id AssessmentWithoutGroup = Id(9406);

} // namespace kestrane::Text

// Times of day and durations as users type and read them.
#pragma once

#include <string>
#include <string_view>

namespace kestrane {

// Converts "h:m:s", three whole numbers, to hours. Raises 13 for any other text.
double TimeTextToHours(std::string_view text);

// "hh:mm:ss". The seconds are rounded and not carried, so that 1.99999 gives "01:59:60"; that is meant.
std::string HoursToTimeText(float hours);

// "hh:mm:ss" from what a user typed, hours first ("130", "8:30", "08:30:5"); empty when it is no time. The largest time
// of day is 23:59:59. A duration may be up to 24:00:00, and its hours may stand alone ("8").
std::string NormaliseTimeText(std::string_view text, bool AsDuration);

} // namespace kestrane

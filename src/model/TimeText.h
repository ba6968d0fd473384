// Times of day and durations as users type and read them.
#pragma once

#include <string>
#include <string_view>

namespace kestrane {

// "h:m:s" with three integer parts to hours. Raises 13 for any other text.
double TimeTextToHours(std::string_view text);

// "hh:mm:ss". The seconds are rounded and not carried: 1.99999 gives "01:59:60".
std::string HoursToTimeText(float hours);

// "hh:mm:ss" from what a user typed ("130", "8:30", "08:30:5"), or empty when it is no good. As a duration, short forms
// read from the right ("8:30" is 8 minutes 30) and 24:00:00 is allowed; else they read from the left, up to 23:59:59.
std::string NormaliseTimeText(std::string_view text, bool AsDuration);

} // namespace kestrane

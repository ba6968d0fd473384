// The exposure time of a log: the length of the working day, in hours, that its figures marked "(ET)" refer to. What
// may be entered for it, and what changing it does to a log.
#pragma once

#include "model/clsLog.h"
#include "platform/Locale.h"
#include "resources/TextNames.h"

#include <optional>
#include <string>
#include <string_view>

namespace kestrane {

std::string exposureTimeText(float hours); // such as "07:30:00", rounded to the second

// The text beside the figures of a log. Meters of the Brevik family go by the log's own exposure time, so it is that
// time. For the others it is 8 hours, followed by the time that their figures are made with when that is another:
// "08:00:00 (figures: 12:00:00)".
std::string exposureTimeLabel(const clsLog& log);

// The hours of a typed duration: hours and minutes ("7:30"), with seconds ("7:30:00"), or hours ("7", "7.5", "7,5").
// Nothing when the text is none of these or not from 0 to 24.
std::optional<float> durationHours(std::string_view entry, const Locale& locale);

float exposureTimeHours(std::string_view entry, const Locale& locale); // the same; 0 in place of nothing

// The text shown beside an entry while it is typed: the time that it is understood as ("= 7 hours 30 mins"), or what an
// entry must be.
std::string understoodExposureTime(const Session& session, std::string_view entry);

// The text that replaces an entry once it has been typed: that of exposureTimeText; an entry that is no exposure time
// stays as it is, trimmed.
std::string shownExposureTime(std::string_view entry, const Locale& locale);

bool isExposureTime(float hours); // above 0 and at most 24

// The text that says what is wrong with an exposure time of a log that was measured for measuredHours (0 when not
// known); None when nothing is wrong. Times are compared to the second.
Text::Id exposureTimeFault(float hours, float measuredHours);

// Stores the exposure time, also in the first row of the exposure calculator, and recalculates what follows from it.
// While a full recalculation is in progress, the end of that does the recalculating.
void SetLogExposureTime(clsLog& log, float hours);

// Changes the exposure time for the user. For a Brevik meter all derived figures are derived again; for any other meter
// the user is asked first. Returns false when the user declines, and then the log stays as it is.
bool changeExposureTime(clsLog& log, float hours);

} // namespace kestrane

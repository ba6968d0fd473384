// The exposure time of a log: the length of the working day, in hours, that its figures "(ET)" stand for. What an entry
// of it must be, and what a change of it does to a log.
#pragma once

#include "model/clsLog.h"
#include "platform/Locale.h"
#include "resources/TextNames.h"

#include <optional>
#include <string>
#include <string_view>

namespace kestrane {

std::string exposureTimeText(float hours); // "07:30:00", to the second

// What stands beside the figures of a log. Meters of the Brevik family go by the log's own exposure time; the others
// name 8 hours, and the time that their figures are made with where it is another: "08:00:00 (figures: 12:00:00)".
std::string exposureTimeLabel(const clsLog& log);

// The hours of a duration as typed: hours and minutes ("7:30"), with seconds ("7:30:00"), or hours ("7", "7.5", "7,5").
// From 0 to 24; nothing when it is none of these.
std::optional<float> durationHours(std::string_view entry, const Locale& locale);

float exposureTimeHours(std::string_view entry, const Locale& locale); // the same; 0 for nothing

// What to show beside an entry while it is typed: the time that it is taken for ("= 7 hours 30 mins"), or what an entry
// must be.
std::string understoodExposureTime(const Session& session, std::string_view entry);

// How an entry is shown once it has been typed: as exposureTimeText; one that is no exposure time as it is, trimmed.
std::string shownExposureTime(std::string_view entry, const Locale& locale);

bool isExposureTime(float hours); // above 0, at most 24

// What is wrong with an exposure time of a log that was measured for so many hours (0: not known): the
// text that says so, None when nothing is. To the second.
Text::Id exposureTimeFault(float hours, float measuredHours);

// Stores the exposure time, in the first row of the exposure calculator, too, and recalculates what follows from it.
// While a full recalculation is under way its end does the latter.
void SetLogExposureTime(clsLog& log, float hours);

// A user's change of the time: SetLogExposureTime; of a Brevik meter everything else is derived again, of any other the
// user is asked first. False when the user would rather not, and the log stays as it is.
bool changeExposureTime(clsLog& log, float hours);

} // namespace kestrane

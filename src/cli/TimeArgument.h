// A time that a call gives in place of the computer's.
#pragma once

#include "platform/Calendar.h"

#include <optional>
#include <string>

namespace kestrane {

// Reads "2024-11-26T16:18:53". Returns what is wrong with the text, or an empty text.
std::string readTime(const std::string& text, std::optional<CalendarTime>& time);

} // namespace kestrane

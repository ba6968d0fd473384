// The value forms of the XML data file, read: what a text means as an integer, level, flag, date or time.
#pragma once

#include "platform/Locale.h"

#include <cstdint>
#include <string_view>

namespace kestrane {

// 0 for a text that is not numeric. Raise 6 when a number does not fit.
std::int16_t readInteger(std::string_view text, const Locale& locale);
std::int32_t readLong(std::string_view text, const Locale& locale);
float readLevel(std::string_view text, const Locale& locale); // "." or the locale's decimal separator

// A number other than 0, or "TRUE" in any case.
bool readFlag(std::string_view text, const Locale& locale);

} // namespace kestrane

// Reads the value forms of the XML data file: what a text means as an integer, level or flag.
#pragma once

#include "platform/Locale.h"

#include <cstdint>
#include <string_view>

namespace kestrane {

// 0 for a text that is not numeric. They raise 6 when a number does not fit the type.
std::int16_t readInteger(std::string_view text, const Locale& locale);
std::int32_t readLong(std::string_view text, const Locale& locale);
float readLevel(std::string_view text, const Locale& locale); // "." or the locale's decimal separator

// True for a number other than 0, and for "TRUE" in any case.
bool readFlag(std::string_view text, const Locale& locale);

} // namespace kestrane

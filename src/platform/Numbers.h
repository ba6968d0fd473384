// Numbers as text: what counts as numeric, conversion to the storage types (16- and 32-bit integers, single precision),
// and the shortest text of a single. The rules are the program's own and do not depend on the C library's locale.
#pragma once

#include "platform/Locale.h"

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace kestrane {

// Numeric text: optional blanks, sign, digits, one decimal separator, optional exponent, optional blanks. At least one
// digit. "inf", "nan", hexadecimal and grouping are not numeric.
bool isNumeric(std::string_view text, const Locale& locale);

// Conversions of numeric text. Raise 13 when the text is not numeric, 6 when the value does not fit the type.
double toDouble(std::string_view text, const Locale& locale);
float toSingle(std::string_view text, const Locale& locale);
std::int16_t toInteger(std::string_view text, const Locale& locale); // halves round to even
std::int32_t toLong(std::string_view text, const Locale& locale);    // halves round to even

// Reads a number that was typed or pasted. Its decimal separator may be the locale's, "." or ",", tried in this order.
// Returns nothing when the text is not numeric or the value does not fit the type.
std::optional<double> typedNumber(std::string_view text, const Locale& locale);

// The nearest whole number, halves to even. Both raise 6 when it does not fit the type or value is not a number.
std::int16_t roundToInteger(double value);
std::int32_t roundToLong(double value);

// The nearest whole number, halves away from zero: this is how figures are rounded to be shown or compared. A value
// that falls short of a half only by the error of binary arithmetic counts as a half.
double roundHalfAway(double value);

// The smallest of 1, 2 and 5 times a power of ten that is not below atLeast (which is above 0).
double roundStep(double atLeast);

// Raise 6 when the value does not fit.
std::int16_t checkedInteger(std::int64_t value);
std::int32_t checkedLong(std::int64_t value);
float checkedSingle(double value); // rounds to single; raises 6 past the largest single or for NaN

// Writes the fewest digits that read back as the same single, with "." as the separator: plain notation from 0.0001 up
// to 9999999, else with an exponent ("1E-05", "1.5E+10"). 0 is "0". Writes at most kSingleTextSize characters and
// returns the end. The common case, a level with at most three decimals, has a fast path, because the speed of saving
// depends on this function.
constexpr int kSingleTextSize = 24;
char* writeSingle(char* out, float value);
std::string singleText(float value);

// Reads a decimal number ("61.2", "-3", "1E-05"; separator ".") as the nearest single. Returns false unless the whole
// text is numeric as defined above; raises 6 past the largest single. The speed of loading intervals depends on this
// function.
bool readSingle(std::string_view text, float& value);

} // namespace kestrane

#include "platform/Numbers.h"

#include "platform/RuntimeError.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <cstring>
#include <limits>
#include <optional>

namespace kestrane {

namespace {

constexpr std::uint32_t kExactSingle = 1U << 24; // every whole number up to this one is a single

// Powers of ten that are exact singles. A quotient of two exact singles is rounded only once, so the result is the
// correct single.
constexpr std::array<float, 9> kPowers = {1e0F, 1e1F, 1e2F, 1e3F, 1e4F, 1e5F, 1e6F, 1e7F, 1e8F};

struct Decimal {
    const char* begin = nullptr; // the number without blanks and plus sign
    const char* end = nullptr;
    std::int64_t digits = 0;   // significant digits, leading zeros not counted
    std::int64_t decimals = 0; // digits behind the point
    std::int64_t exponent = 0; // as written
};

bool isBlank(char c) {
    return c == ' ' || c == '\t' || c == '\r' || c == '\n';
}

// The value of a decimal digit, above 9 for any other character.
unsigned digitOf(char c) {
    return static_cast<unsigned char>(c) - unsigned{'0'};
}

// Steps over digits and counts the significant ones; returns false when there is no digit.
bool takeDigits(const char*& p, const char* end, std::int64_t& significant) {
    const char* const begin = p;
    for (; p < end && digitOf(*p) <= 9; ++p)
        if (significant > 0 || *p != '0') ++significant;
    return p != begin;
}

// Fills number from text with the separator "."; false when text is not numeric.
bool scan(std::string_view text, Decimal& number) {
    const char* p = text.data();
    const char* end = p + text.size();
    while (p < end && isBlank(*p))
        ++p;
    while (p < end && isBlank(end[-1]))
        --end;
    const bool isNegative = p < end && *p == '-';
    if (p < end && (*p == '+' || *p == '-')) ++p;
    number.begin = isNegative ? p - 1 : p;
    number.end = end;

    bool hasDigit = takeDigits(p, end, number.digits);
    if (p < end && *p == '.') {
        const char* const fraction = ++p;
        hasDigit |= takeDigits(p, end, number.digits);
        number.decimals = p - fraction;
    }
    if (!hasDigit) return false;
    if (p == end) return true;

    if (*p != 'E' && *p != 'e') return false;
    ++p;
    const bool isDown = p < end && *p == '-';
    if (p < end && (*p == '-' || *p == '+')) ++p;
    if (p == end) return false;
    constexpr std::int64_t kEndless = 1'000'000'000'000; // more than any text has digits
    for (; p < end && digitOf(*p) <= 9; ++p)
        if (number.exponent < kEndless) number.exponent = number.exponent * 10 + digitOf(*p);
    if (isDown) number.exponent = -number.exponent;
    return p == end;
}

// The nearest Real, 0 on underflow. Raises 6 on overflow.
template <class Real>
Real convert(const Decimal& number) {
    Real value = 0;
    const auto result = std::from_chars(number.begin, number.end, value);
    const bool isOut = result.ec == std::errc::result_out_of_range || std::isinf(value);
    if (!isOut) return value;
    if (number.digits - number.decimals + number.exponent > 0) raiseOverflow();
    return 0;
}

// The text with "." as its separator; nothing when the locale has another separator and the text contains a ".".
std::optional<std::string> withPoint(std::string_view text, const Locale& locale) {
    std::string result(text);
    const std::string& separator = locale.DecimalSeparator;
    if (separator == "." || separator.empty()) return result;
    if (result.find('.') != std::string::npos) return std::nullopt;
    if (const auto at = result.find(separator); at != std::string::npos) {
        result.erase(at, separator.size() - 1);
        result[at] = '.';
    }
    return result;
}

template <class Real>
Real toReal(std::string_view text, const Locale& locale) {
    const auto plain = withPoint(text, locale);
    Decimal number;
    if (!plain || !scan(*plain, number)) raiseTypeMismatch();
    return convert<Real>(number);
}

template <class Whole>
Whole roundTo(double value) {
    const double whole = std::nearbyint(value);
    if (!(whole >= std::numeric_limits<Whole>::min() && whole <= std::numeric_limits<Whole>::max())) raiseOverflow();
    return static_cast<Whole>(whole);
}

template <class Whole>
Whole checked(std::int64_t value) {
    if (value < std::numeric_limits<Whole>::min() || value > std::numeric_limits<Whole>::max()) raiseOverflow();
    return static_cast<Whole>(value);
}

// "000001002...999", with room behind it so that three characters can be copied from anywhere.
constexpr auto kThreeDigits = [] {
    std::array<char, 3002> table{};
    for (std::size_t i = 0; i < 1000; ++i) {
        table[3 * i] = static_cast<char>('0' + i / 100);
        table[3 * i + 1] = static_cast<char>('0' + i / 10 % 10);
        table[3 * i + 2] = static_cast<char>('0' + i % 10);
    }
    return table;
}();

// Writes count of the three digits of number (0..999), beginning with digit first, and returns the end. It may
// overwrite up to three characters.
inline char* putDigits(char* out, unsigned number, int first, int count) {
    std::memcpy(out, kThreeDigits.data() + 3 * number + first, 3);
    return out + count;
}

} // namespace

bool isNumeric(std::string_view text, const Locale& locale) {
    const auto plain = withPoint(text, locale);
    Decimal number;
    return plain && scan(*plain, number);
}

double toDouble(std::string_view text, const Locale& locale) {
    return toReal<double>(text, locale);
}

float toSingle(std::string_view text, const Locale& locale) {
    return toReal<float>(text, locale);
}

std::optional<double> typedNumber(std::string_view text, const Locale& locale) {
    for (const std::string& separator : {locale.DecimalSeparator, std::string("."), std::string(",")}) {
        const Locale typed{separator, locale.DateSeparator};
        if (!isNumeric(text, typed)) continue;
        try {
            return toDouble(text, typed);
        } catch (const RuntimeError&) { // the number does not fit the type
            return std::nullopt;
        }
    }
    return std::nullopt;
}

std::int16_t toInteger(std::string_view text, const Locale& locale) {
    return roundToInteger(toDouble(text, locale));
}

std::int32_t toLong(std::string_view text, const Locale& locale) {
    return roundToLong(toDouble(text, locale));
}

std::int16_t roundToInteger(double value) {
    return roundTo<std::int16_t>(value);
}

std::int32_t roundToLong(double value) {
    return roundTo<std::int32_t>(value);
}

double roundHalfAway(double value) {
    constexpr double kTolerance = 1e-9, kMost = 1e6;
    const double magnitude = std::abs(value);
    // In the usual range a conversion does what floor would do, without a function call.
    const double whole = magnitude < kMost ? static_cast<std::int32_t>(magnitude) : std::floor(magnitude);
    const bool isUp = magnitude - whole >= 0.5 - std::min(magnitude, kMost) * kTolerance;
    return std::copysign(isUp ? whole + 1 : whole, value);
}

double roundStep(double atLeast) {
    const double decade = std::pow(10, std::floor(std::log10(atLeast)));
    for (const double step : {1.0, 2.0, 5.0}) {
        if (atLeast <= step * decade * (1 + 1e-9)) return step * decade;
    }
    return 10 * decade;
}

std::int16_t checkedInteger(std::int64_t value) {
    return checked<std::int16_t>(value);
}

std::int32_t checkedLong(std::int64_t value) {
    return checked<std::int32_t>(value);
}

float checkedSingle(double value) {
    const auto single = static_cast<float>(value);
    if (!std::isfinite(single)) raiseOverflow();
    return single;
}

char* writeSingle(char* out, float value) {
    float magnitude = value;
    if (value < 0) {
        *out++ = '-';
        magnitude = -value;
    }
    // Below 8192 singles lie closer together than thousandths. So at most one number of thousandths reads back as this
    // single, and without its trailing zeros it is the shortest such text.
    if (magnitude < 8192) {
        // NOLINTNEXTLINE(bugprone-incorrect-roundings): a wrong one fails the test below
        const auto thousandths = static_cast<unsigned>(static_cast<double>(magnitude) * 1000 + 0.5);
        if (static_cast<float>(thousandths) / 1000.0F == magnitude) {
            const unsigned whole = thousandths / 1000;
            const unsigned part = thousandths % 1000;
            if (whole >= 1000) *out++ = static_cast<char>('0' + whole / 1000);
            const int wholeDigits = whole >= 100 ? 3 : whole >= 10 ? 2 : 1;
            out = putDigits(out, whole % 1000, 3 - wholeDigits, wholeDigits);
            if (part == 0) return out;
            *out++ = '.';
            return putDigits(out, part, 0, part % 100 == 0 ? 1 : part % 10 == 0 ? 2 : 3);
        }
    }
    const bool isPlain = magnitude >= 0.0001F && magnitude < 1e7F;
    const auto result = std::to_chars(out, out + kSingleTextSize - 1, magnitude,
                                      isPlain ? std::chars_format::fixed : std::chars_format::scientific);
    if (!isPlain) {
        if (auto* const e = static_cast<char*>(std::memchr(out, 'e', static_cast<std::size_t>(result.ptr - out))))
            *e = 'E';
    }
    return result.ptr;
}

std::string singleText(float value) {
    char text[kSingleTextSize];
    return std::string(text, writeSingle(text, value));
}

bool readSingle(std::string_view text, float& value) {
    // The fast path: a level as the program writes it, with at most a sign and so few digits that they are an exact
    // single before the division.
    constexpr std::size_t kShort = 9;
    if (text.size() <= kShort) {
        const char* p = text.data();
        const char* const end = p + text.size();
        const bool isNegative = p < end && *p == '-';
        if (isNegative) ++p;
        const char* const begin = p;
        std::uint32_t mantissa = 0;
        const auto take = [&] {
            for (; p < end && digitOf(*p) <= 9; ++p)
                mantissa = mantissa * 10 + digitOf(*p);
        };
        take();
        const char* const point = p;
        if (p > begin && p < end && *p == '.') {
            ++p;
            take();
        }
        if (p == end && p > begin && mantissa <= kExactSingle) {
            const auto decimals = static_cast<std::size_t>(p > point ? p - point - 1 : 0);
            const float magnitude = static_cast<float>(mantissa) / kPowers[decimals];
            value = isNegative ? -magnitude : magnitude;
            return true;
        }
    }
    Decimal number;
    if (!scan(text, number)) return false;
    value = convert<float>(number);
    return true;
}

} // namespace kestrane

#include "platform/Numbers.h"

#include "ErrorOf.h"

#include <gtest/gtest.h>

#include <charconv>
#include <cmath>
#include <cstdlib>
#include <cstring>
#include <limits>
#include <random>
#include <vector>

namespace kestrane {
namespace {

const Locale kPoint;
const Locale kComma = {",", "."};
const Locale kArabic = {"\u066B", "/"};

TEST(Numeric, AcceptsOneSignOneSeparatorOneExponent) {
    for (const char* text : {"0", " 12 ", "+1.5", "-.5", "5.", "1E5", "1e-05", "-1.5E+10", "\t7\r\n", "1E999"}) {
        float ignored = 0;
        EXPECT_TRUE(isNumeric(text, kPoint)) << text;
        EXPECT_TRUE(std::string_view(text) == "1E999" || readSingle(text, ignored)) << text;
    }
    for (const char* text : {"",    " ",  "-",     ".",   "+-1", "--1",  "- 1",   "1 2", "1,5",    "1.2.3",     "1E",
                             "1E+", "E5", "1E5.0", "inf", "nan", "0x10", "1e5e5", "1-",  "61.2dB", "123456789x"}) {
        float ignored = 0;
        EXPECT_FALSE(isNumeric(text, kPoint)) << text;
        EXPECT_FALSE(readSingle(text, ignored)) << text;
    }
}

TEST(Numeric, FollowsTheDecimalSeparator) {
    EXPECT_EQ(toDouble("61,25", kComma), 61.25);
    EXPECT_EQ(toSingle("-61\u066B5", kArabic), -61.5F);
    for (const char* text : {"61.25", "6,1,2", "1.234,5"})
        EXPECT_FALSE(isNumeric(text, kComma)) << text;
    EXPECT_EQ(toLong("61", kComma), 61);
}

TEST(Conversion, RoundsHalvesToEvenAndChecksTheRange) {
    EXPECT_EQ(toInteger("2.5", kPoint), 2);
    EXPECT_EQ(toInteger("3.5", kPoint), 4);
    EXPECT_EQ(toInteger("-2.5", kPoint), -2);
    EXPECT_EQ(toInteger("32767.4", kPoint), 32767);
    EXPECT_EQ(toInteger("-32768.5", kPoint), -32768);
    EXPECT_EQ(toLong("2147483647.4", kPoint), 2147483647);
    EXPECT_EQ(toLong("-2147483648.5", kPoint), std::numeric_limits<std::int32_t>::min());
    EXPECT_EQ(toLong("1E-999", kPoint), 0);
    EXPECT_EQ(toSingle("3.4028234E38", kPoint), std::numeric_limits<float>::max());

    EXPECT_EQ(errorOf([] { toInteger("32767.5", kPoint); }), kErrorOverflow);
    EXPECT_EQ(errorOf([] { toLong("2147483647.5", kPoint); }), kErrorOverflow);
    EXPECT_EQ(errorOf([] { toSingle("3.5E38", kPoint); }), kErrorOverflow);
    EXPECT_EQ(errorOf([] { toDouble("1E309", kPoint); }), kErrorOverflow);
    EXPECT_EQ(errorOf([] { toLong("12a", kPoint); }), kErrorTypeMismatch);
    EXPECT_EQ(errorOf([] { roundToLong(std::nan("")); }), kErrorOverflow);
    EXPECT_EQ(errorOf([] { roundToInteger(-INFINITY); }), kErrorOverflow);
    EXPECT_EQ(errorOf([] { checkedInteger(-32769); }), kErrorOverflow);
    EXPECT_EQ(errorOf([] { checkedLong(2147483648); }), kErrorOverflow);
    EXPECT_EQ(errorOf([] { checkedSingle(1e39); }), kErrorOverflow);
    EXPECT_EQ(errorOf([] { checkedSingle(std::nan("")); }), kErrorOverflow);
}

TEST(RoundHalfAway, TakesHalvesAwayFromZeroAndWhatIsJustShortOfThem) {
    const std::pair<double, double> cases[] = {{0.5, 1},           {-0.5, -1},       {2.5, 3},      {-2.49, -2},
                                               {1.005 * 100, 101}, {1e9 + 0.4, 1e9}, {1e300, 1e300}};
    for (const auto& [value, whole] : cases)
        EXPECT_EQ(roundHalfAway(value), whole) << value;
}

// The significant digits of a number's text.
std::string digitsOf(std::string_view text) {
    std::string digits;
    for (const char c : text.substr(0, text.find_first_of("eE")))
        if (c >= '0' && c <= '9' && !(digits.empty() && c == '0')) digits += c;
    digits.erase(digits.find_last_not_of('0') + 1);
    return digits;
}

// Asserts that the text has the fewest digits possible, reads back to the same bits, and stands in the notation told.
void expectShortest(float value) {
    const std::string text = singleText(value);
    char shortest[64];
    const auto end = std::to_chars(shortest, shortest + sizeof shortest, value, std::chars_format::scientific).ptr;
    ASSERT_EQ(digitsOf(text), digitsOf({shortest, static_cast<std::size_t>(end - shortest)})) << text;
    ASSERT_EQ(std::strtof(text.c_str(), nullptr), value) << text;
    float readBack = 0;
    ASSERT_TRUE(readSingle(text, readBack) && readBack == value) << text;
    const float magnitude = std::abs(value);
    const bool isPlain = magnitude == 0 || (magnitude >= 0.0001F && magnitude <= 9999999.0F);
    ASSERT_EQ(text.find('E') == std::string::npos, isPlain) << text;
    ASSERT_LT(text.size(), std::size_t{kSingleTextSize});
}

TEST(SingleText, IsTheShortestThatReadsBack) {
    for (int k = 0; k <= 2000; ++k)
        expectShortest(static_cast<float>(k) / 10.0F);
    for (int k = -20000; k <= 20000; ++k)
        expectShortest(static_cast<float>(k) / 100.0F);
    for (int k = 0; k <= 8'200'000; k += 7) // past the end of the quick path
        expectShortest(static_cast<float>(k) / 1000.0F);
    std::mt19937 random(20190603);
    for (int i = 0; i < 1'000'000; ++i) {
        const std::uint32_t bits = random();
        float value = 0;
        std::memcpy(&value, &bits, sizeof value);
        if (std::isfinite(value)) expectShortest(value);
    }
}

TEST(SingleText, ChoosesItsNotation) {
    const std::pair<float, const char*> cases[] = {
        {0.0F, "0"},         {-0.0F, "0"},         {61.2F, "61.2"},
        {-3.0F, "-3"},       {100.05F, "100.05"},  {1234.567F, "1234.567"},
        {0.0001F, "0.0001"}, {0.00001F, "1E-05"},  {9999999, "9999999"},
        {10000000, "1E+07"}, {1.5e10F, "1.5E+10"}, {3.4028235e38F, "3.4028235E+38"},
        {1e-45F, "1E-45"},   {-0.123F, "-0.123"},  {8191.999F, "8191.999"},
        {1e-30F, "1E-30"}};
    for (const auto& [value, text] : cases)
        EXPECT_EQ(singleText(value), text);
}

TEST(ReadSingle, RoundsCorrectly) {
    std::mt19937 random(42);
    const auto below = [&](unsigned end) { return static_cast<unsigned>(random() % end); };
    char text[100];
    for (int i = 0; i < 600'000; ++i) {
        switch (i % 4) {
        case 0: // short ones of every shape
            std::snprintf(text, sizeof text, "%s%u.%u", below(2) != 0 ? "-" : "", below(100000), below(10000));
            break;
        case 1: // many digits
            std::snprintf(text, sizeof text, "%u.%09u%09uE%d", below(100), below(1000000000), below(1000000000),
                          static_cast<int>(below(88)) - 48);
            break;
        case 2: { // ties between neighbours, and what lies just beside them
            const std::uint32_t bits = below(0x7F000000);
            float low = 0;
            std::memcpy(&low, &bits, sizeof low);
            const double middle = (static_cast<double>(low) + std::nextafter(low, INFINITY)) / 2;
            std::snprintf(text, sizeof text, "%.*g", below(2) != 0 ? 60 : 20, middle);
            break;
        }
        default:
            std::snprintf(text, sizeof text, "0.%u", below(4294967295U));
        }
        const float expected = std::strtof(text, nullptr);
        float value = 0;
        if (std::isinf(expected)) {
            ASSERT_EQ(errorOf([&] { readSingle(text, value); }), kErrorOverflow) << text;
        } else {
            ASSERT_TRUE(readSingle(text, value) && value == expected) << text;
        }
    }
}

TEST(ReadSingle, UnderflowsToZeroAndRaisesOnOverflow) {
    float value = 1;
    for (const char* text :
         {"1E-46", "-1E-99999999999999999999", "0E99999999", "0.00000000000000000000000000000000000000000000000001"}) {
        value = 1;
        EXPECT_TRUE(readSingle(text, value)) << text;
        EXPECT_EQ(value, 0) << text;
    }
    for (const char* text :
         {"3.4028236E38", "-1E39", "1E99999999999999999999", "1000000000000000000000000000000000000000"})
        EXPECT_EQ(errorOf([&] { readSingle(text, value); }), kErrorOverflow) << text;
    EXPECT_TRUE(readSingle("0." + std::string(200, '0') + "1E201", value));
    EXPECT_EQ(value, 1);
}

} // namespace
} // namespace kestrane

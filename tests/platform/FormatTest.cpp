#include "platform/Format.h"

#include <gtest/gtest.h>

#include <limits>

namespace kestrane {
namespace {

TEST(FormatNumber, FollowsThePattern) {
    struct Case {
        double value;
        const char* pattern;
        const char* text;
    };

    const Case cases[] = {
        {0, "##0.0", "0.0"},
        {61.25, "##0.0", "61.3"}, // halves away from zero
        {-61.25, "##0.0", "-61.3"},
        {1234.5, "##0.0", "1234.5"}, // more digits than places
        {1234.5, "####", "1235"},
        {0, "####", ""},
        {0.4, "####", ""},
        {0.5, "####", "1"},
        {-0.04, "##0.0", "0.0"}, // no sign on zero
        {-0.05, "##0.0", "-0.1"},
        {61.2, "##0.0 dB", "61.2 dB"},
        {0.5, "##0.0 %", "50.0 %"},
        {50.25 / 100, "##0.0 %", "50.3 %"}, // the product is just short of a half
        {0.1 + 0.2 + 0.05, "0.0", "0.4"},
        {50.2499, "##0.0", "50.2"},
        {7, "00", "07"},
        {100, "00", "100"},
        {5, "##00", "05"},
        {2019, "##00", "2019"},
        {1.5, "#0.0##", "1.5"},
        {1.2345, "#0.0##", "1.235"},
        {2, "#0.0##", "2.0"},
        {0.25, "#0.0##", "0.25"},
        {1.1005, "#0.0##", "1.101"},
        {0.0005, "0.000", "0.001"},
        {0.012, "0.000", "0.012"},
        {99.96, "##0.0", "100.0"}, // the carry adds a digit
        {1e15, "##0", "1000000000000000"},
        {1e9 + 0.4, "0", "1000000000"}, // nearly a half only as far as singles are concerned
        {std::numeric_limits<double>::infinity(), "##0.0", "0.0"},
        {std::numeric_limits<double>::quiet_NaN(), "##0.0", "0.0"},
    };
    for (const Case& c : cases)
        EXPECT_EQ(formatNumber(c.value, c.pattern, {}), c.text) << c.value << ' ' << c.pattern;
    EXPECT_EQ(formatNumber(-61.25, "##0.0 dB", {",", "."}), "-61,3 dB");
}

TEST(FormatDate, FollowsThePattern) {
    const CalendarTime time = fromCivil({2019, 6, 3}, 9 * 3600 + 5 * 60 + 7); // a Monday
    const std::pair<const char*, const char*> cases[] = {
        {"dd/mm/yyyy", "03/06/2019"},
        {"d/m/yy", "3/6/19"},
        {"mmm", "Jun"},
        {"ddd dddd", "Mon Monday"},
        {"hh:nn:ss", "09:05:07"},
        {"h:n:s", "9:5:7"},
        {"mmmm", "June"},
        {"long date", "Monday 3 June 2019"},
        {"", ""},
    };
    for (const auto& [pattern, text] : cases)
        EXPECT_EQ(formatDate(time, pattern), text);
    EXPECT_EQ(formatDate(fromCivil({2000, 2, 29}), "long date"), "Tuesday 29 February 2000");
    EXPECT_EQ(formatDate(fromCivil({1899, 1, 1}), "dddd yyyy"), "Sunday 1899");
    EXPECT_EQ(formatDate(0, "dd/mm/yyyy"), "30/12/1899");

    DateWords german;
    german.Months[2] = "M\u00E4rz";
    german.Weekdays[4] = "Freitag";
    german.LongDate = "dddd, d. mmmm yyyy";
    const CalendarTime march = fromCivil({2024, 3, 1});
    EXPECT_EQ(formatDate(march, "long date", german), "Freitag, 1. M\u00E4rz 2024");
    EXPECT_EQ(formatDate(march, "d mmm", german), "1 M\u00E4r"); // letters, not bytes
}

} // namespace
} // namespace kestrane

#include "platform/Calendar.h"

#include "platform/RuntimeError.h"

#include <gtest/gtest.h>

#include <cmath>

namespace kestrane {
namespace {

TEST(Calendar, KnowsWhichDaysThereAre) {
    EXPECT_TRUE(isCivilDate(2000, 2, 29));
    EXPECT_TRUE(isCivilDate(1, 1, 1));
    EXPECT_TRUE(isCivilDate(9999, 12, 31));
    const int none[][3] = {{1900, 2, 29}, {2019, 4, 31}, {2019, 0, 1},  {2019, 13, 1}, {2019, 1, 0},
                           {2019, 1, 32}, {0, 1, 1},     {10000, 1, 1}, {2019, -1, 1}, {2019, 257, 1}};
    for (const auto& date : none)
        EXPECT_FALSE(isCivilDate(date[0], date[1], date[2])) << date[0] << '-' << date[1] << '-' << date[2];
}

TEST(Calendar, CountsDaysFromTheEpoch) {
    EXPECT_EQ(fromCivil({1899, 12, 30}), 0);
    EXPECT_EQ(fromCivil({1900, 1, 1}), 2);
    EXPECT_EQ(fromCivil({2019, 6, 3}, 43200), 43619.5);
    EXPECT_EQ(toCivil(43619.5), (CivilDate{2019, 6, 3}));
    EXPECT_EQ(toCivil(-1.25), (CivilDate{1899, 12, 28}));
    EXPECT_EQ(secondsOfDay(-1.25), 64800);
    for (int day = -693593; day <= 2958465; day += 13)
        ASSERT_EQ(fromCivil(toCivil(day)), day);
}

TEST(Calendar, RoundsToSecondsForDateAndTimeAlike) {
    const CalendarTime midnight = fromCivil({2019, 6, 4});
    for (const CalendarTime time :
         {std::nextafter(midnight, 0.0), midnight, midnight - 0.4 / 86400, midnight + 0.4 / 86400}) {
        EXPECT_EQ(toCivil(time), (CivilDate{2019, 6, 4}));
        EXPECT_EQ(secondsOfDay(time), 0);
    }
    for (int second = 0; second < 86400; ++second)
        ASSERT_EQ(secondsOfDay(fromCivil({2019, 6, 3}, second)), second);
    for (const CalendarTime time : {2958466.0, -693594.0, 1e300, std::nan("")})
        EXPECT_THROW(toCivil(time), RuntimeError);
}

TEST(Calendar, ExpandsTwoDigitYears) {
    const std::pair<int, int> cases[] = {{0, 2000},  {29, 2029},   {30, 1930}, {99, 1999},
                                         {100, 100}, {2019, 2019}, {-1, -1}};
    for (const auto& [year, expanded] : cases)
        EXPECT_EQ(expandTwoDigitYear(year), expanded);
}

} // namespace
} // namespace kestrane

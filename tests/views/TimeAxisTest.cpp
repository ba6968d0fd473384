#include "views/TimeAxis.h"

#include <gtest/gtest.h>

namespace kestrane {
namespace {

constexpr std::int64_t kThirdOfJune = 45446 * std::int64_t{86400}; // 2024, from 30 December 1899

std::vector<std::int64_t> rowsFrom(std::int64_t first, std::int64_t length, std::size_t count) {
    std::vector<std::int64_t> begins;
    for (std::size_t row = 0; row < count; ++row)
        begins.push_back(first + static_cast<std::int64_t>(row) * length);
    return begins;
}

std::string textOf(const std::vector<TimeMark>& marks) {
    std::string text;
    for (const TimeMark& mark : marks) {
        std::string place = std::to_string(mark.Position);
        text += place.substr(0, place.find('.') + 2) + "=" + mark.Label + " ";
    }
    return text;
}

TEST(TimeAxis, HasRoundTimesAndTheDateWhereItIsNew) {
    const auto night = rowsFrom(kThirdOfJune + 22 * 3600 + 30 * 60, 60, 240);
    EXPECT_EQ(textOf(timeMarks(night, 0, 239, 5)),
              "30.0=23:00\n03/06/24 90.0=00:00\n04/06/24 150.0=01:00 210.0=02:00 ");
    EXPECT_EQ(textOf(timeMarks(night, 100, 104, 4)), "100.0=00:10\n04/06/24 102.0=00:12 104.0=00:14 ");
    const auto seconds = rowsFrom(9 * 3600, 1, 100); // without a date
    EXPECT_EQ(textOf(timeMarks(seconds, 20, 55, 4)), "20.0=09:00:20 30.0=09:00:30 40.0=09:00:40 50.0=09:00:50 ");
    const auto days = rowsFrom(kThirdOfJune, 3600, 24 * 10);
    EXPECT_EQ(
        textOf(timeMarks(days, 0, 239, 5)),
        "0.0=00:00\n03/06/24 48.0=00:00\n05/06/24 96.0=00:00\n07/06/24 144.0=00:00\n09/06/24 192.0=00:00\n11/06/24 ");
}

TEST(TimeAxis, StandsBetweenRowsThatBeginAtOddTimesAndLeavesGapsOut) {
    auto rows = rowsFrom(9 * 3600 + 30, 60, 30); // 09:00:30, 09:01:30 ...
    EXPECT_EQ(textOf(timeMarks(rows, 0, 29, 3)), "9.5=09:10 19.5=09:20 ");
    for (std::size_t row = 10; row < rows.size(); ++row)
        rows[row] += 2 * 3600; // 09:09:30 is followed by 11:10:30
    EXPECT_EQ(textOf(timeMarks(rows, 0, 29, 40)).find("10:"), std::string::npos);
    EXPECT_TRUE(timeMarks({}, 0, 1, 5).empty());
    EXPECT_EQ(textOf(timeMarks(std::vector<std::int64_t>{9 * 3600}, -0.5, 0.5, 5)), "0.0=09:00:00 ");
}

} // namespace
} // namespace kestrane

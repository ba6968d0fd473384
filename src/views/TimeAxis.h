// Where the marks of a time axis are, and what is written there: round times of day, with the date where it is new.
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <vector>

namespace kestrane {

struct TimeMark {
    double Position;   // on the axis of rows: row r is at r
    std::string Label; // "09:15", "09:15:30" with seconds between marks, and on a second line "03/06/24"; may be empty
};

// The marks for the rows from lower to upper of those that begin at begins (seconds as in model/RowClock.h), at most
// about most of them. They are one of 1, 2, 5, 10, 15 or 30 seconds or minutes, 1, 2, 3, 6 or 12 hours, or whole days
// apart. There is none inside a gap between rows. A mark too close to the one before has no label.
std::vector<TimeMark> timeMarks(std::span<const std::int64_t> begins, double lower, double upper, std::size_t most);

} // namespace kestrane

// When the rows of a log began and how long they lasted, as numbers to calculate with. Rows are counted from 0.
#pragma once

#include "model/IntervalColumns.h"

#include <cstdint>
#include <string>

namespace kestrane {

// Seconds: the row's own length, else the log's interval; 0 when neither is known.
std::int32_t rowSeconds(const IntervalColumns& rows, std::size_t row, std::int32_t interval);

// Seconds from 30 December 1899; of a row without a date, from midnight.
std::int64_t rowBegin(const IntervalColumns& rows, std::size_t row);

// Such a time as ISO 8601 local time: "2024-11-26T16:18:53", without a date "16:18:53". Empty past the calendar.
std::string isoTime(std::int64_t seconds);

} // namespace kestrane

// When the rows of a log began and how long they lasted, as numbers to calculate with. Rows are counted from 0.
#pragma once

#include "model/IntervalColumns.h"

#include <cstdint>
#include <string>

namespace kestrane {

// The length of a row in seconds: its own when it has one, else the log's interval; 0 when neither is known.
std::int32_t rowSeconds(const IntervalColumns& rows, std::size_t row, std::int32_t interval);

// Seconds from 30 December 1899; from midnight when the row has no date.
std::int64_t rowBegin(const IntervalColumns& rows, std::size_t row);

// A time of rowBegin as ISO 8601 local time: "2024-11-26T16:18:53", or "16:18:53" without a date. Empty for a negative
// time and past the end of the calendar.
std::string isoTime(std::int64_t seconds);

} // namespace kestrane

// Narrowing a log to a part of its rows: a zoomed copy of a range, or ranges cut out of the calculations.
#pragma once

#include "model/clsLog.h"

#include <memory>
#include <string_view>
#include <vector>

namespace kestrane {

// A log of rows from..to (counted from 1) of the opened log. Raises 9 for rows that are not there or run backwards.
std::unique_ptr<clsLog> makeZoom(const clsLog& log, std::int64_t from, std::int64_t to);

// Ranges "A-B,C-D" or single rows "A". Nothing when the text is no such list.
std::vector<RowRange> parseRowRanges(std::string_view text);

// A range runs forwards, within rows 1..rows.
bool isRangeOf(const RowRange& range, std::int64_t rows);

// Sets what is included in, or excluded from, the calculations. The figures follow with the next recalculation.
void setIntervalSelection(clsLog& log, const std::vector<RowRange>& ranges, bool toBeIncluded);

} // namespace kestrane

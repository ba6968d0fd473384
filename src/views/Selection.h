// Reducing a log to a part of its rows: a zoomed copy of a range, or ranges cut out of the calculations.
#pragma once

#include "model/clsLog.h"

#include <memory>
#include <string_view>
#include <vector>

namespace kestrane {

// A log with rows from to to of the opened log, both included and counted from 1. Raises 9 for rows that do not exist
// and when to is below from.
std::unique_ptr<clsLog> makeZoom(const clsLog& log, std::int64_t from, std::int64_t to);

// The ranges of a text such as "A-B,C-D"; a single row "A" is a range, too. Empty when the text has any other form.
std::vector<RowRange> parseRowRanges(std::string_view text);

// Whether a range is not empty and lies within rows 1..rows.
bool isRangeOf(const RowRange& range, std::int64_t rows);

// Each of these sets what is included in, or excluded from, the calculations, and returns false when that changes
// nothing. The figures change only at the next recalculation.
bool setIntervalSelection(clsLog& log, const std::vector<RowRange>& ranges, bool toBeIncluded);
bool excludeRows(clsLog& log, const RowRange& range); // besides those that are left out already
bool includeOnly(clsLog& log, const RowRange& range); // as the one before, it takes the reason of the log away

} // namespace kestrane

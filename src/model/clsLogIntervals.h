// The rows of a log and the interval selection. Rows are counted from 1 and kept by column (IntervalColumns); a row
// object is made on demand. Owned by a log; worker threads read it through the columns.
#pragma once

#include "model/IntervalColumns.h"
#include "model/clsLogInterval.h"
#include "model/tLogInterval.h"

#include <memory>
#include <string>
#include <utility>
#include <vector>

namespace kestrane {

// A range of rows, both ends included, counted from 1.
struct RowRange {
    std::int64_t From;
    std::int64_t To;
};

class clsLogIntervals {
public:
    std::vector<std::string> CutIntervals; // ranges "from~to", rows counted from 1
    bool IntervalsToBeIncluded = false;    // the ranges say what to include; else what to exclude

    void Initialize(std::shared_ptr<clsLogShared> shared) { shared_ = std::move(shared); }

    void setArraySize(std::int64_t size); // exactly size rows, all 0
    void Add(const clsLogInterval& objInterval);
    void Commit(const clsLogInterval& objInterval, std::int64_t index); // raises 9 outside 1..Count
    clsLogInterval Item(std::int64_t index) const;                      // raises 9 outside 1..Count

    std::int64_t Count() const { return static_cast<std::int64_t>(columns_.count()); }

    std::int64_t Capacity() const { return static_cast<std::int64_t>(columns_.capacity()); }

    void Clear() { columns_.clear(); } // the memory is kept

    // Copies rows intStart to intEnd, both included (all when intStart is 0), and their part of the selection. A copy
    // of all rows shares its columns until one of the two is written to. Raises 9 when rows are out of range.
    void Copy(const clsLogIntervals& objPrev, std::int64_t intStart, std::int64_t intEnd);

    // Puts a range of columns, as the background server delivers it, into rows from to to, both included. When from is
    // 0, the range replaces all rows. Raises 9 when it does not fit.
    void copyData(const IntervalColumns& range, std::int64_t from, std::int64_t to);

    // All rows as flat records, and flat records back into rows. No rule of the program uses them, like the record
    // itself (tLogInterval.h).
    void GetData(std::vector<tLogInterval>& records) const;
    void copyData(const std::vector<tLogInterval>& records, std::int64_t from, std::int64_t to);

    const IntervalColumns& Columns() const { return columns_; }

    IntervalColumns& Columns() { return columns_; }

    // Sets isExcluded of every row according to the selection; without ranges no row is excluded.
    void ApplySelection();
    std::int64_t IncludedCount() const;

private:
    std::size_t row(std::int64_t index) const;

    std::shared_ptr<clsLogShared> shared_;
    IntervalColumns columns_;
};

// The ranges of a selection in their order; texts that are no range are skipped.
std::vector<RowRange> selectionRanges(const std::vector<std::string>& CutIntervals);
std::string selectionText(const RowRange& range); // "from~to"

// For each of count rows 1 when the selection leaves the row out, else 0. Empty when there are no ranges.
std::vector<std::uint8_t> excludedRows(const std::vector<RowRange>& ranges, bool toBeIncluded, std::size_t count);

} // namespace kestrane

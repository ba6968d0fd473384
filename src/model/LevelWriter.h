// Puts the levels of one column into rows that are 0 so far, without looking the column up for each of them. While it
// is in use the number of rows must not change and they must not be shared with a copy; they must outlive it.
#pragma once

#include "model/IntervalColumns.h"

namespace kestrane {

class LevelWriter {
public:
    LevelWriter(IntervalColumns& rows, Quantity quantity, int band) : rows_(&rows), quantity_(quantity), band_(band) {}

    void put(std::size_t row, Level level) {
        if (level == Level()) return;
        if (row < begin_ || row >= end_) turnTo(row, level);
        cells_[row] = level;
    }

private:
    // The first value on a page is set through the rows object, which counts the pages that hold a value.
    void turnTo(std::size_t row, Level level) {
        constexpr std::size_t kCells = kPage / sizeof(Level);
        rows_->setLevel(quantity_, band_, row, level);
        cells_ = rows_->writeLevels(quantity_, band_);
        begin_ = row / kCells * kCells;
        end_ = begin_ + kCells;
    }

    IntervalColumns* rows_;
    Quantity quantity_;
    int band_;
    std::span<Level> cells_;
    std::size_t begin_ = 0, end_ = 0; // the rows of the current page; end_ is excluded
};

} // namespace kestrane

// Puts the levels of one column into rows that are 0 so far, without looking the column up for each of them. The rows
// must stay as many as they are, and unshared, while it is in use; they must outlive it.
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
    // The first value on a page goes in by way of the rows, which count the pages that have one.
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
    std::size_t begin_ = 0, end_ = 0; // rows of the page under way
};

} // namespace kestrane

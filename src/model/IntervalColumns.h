// The rows of a log by column. A column comes into being with the first value other than 0 that is put into it, is
// contiguous, and is shared between copies of a log until one of them writes to it. Made for walking one or a few
// quantities over all rows (recalculation, charts, tables); a row at a time is what clsLogIntervals is for.
// Knows nothing of modes, selections or files.
#pragma once

#include <algorithm>
#include <array>
#include <atomic>
#include <cstdint>
#include <cstdlib>
#include <memory>
#include <new>
#include <span>

namespace kestrane {

// The two numbers of a clsValue in a column.
struct Level {
    float CalcValue = 0;
    float Value = 0;

    bool operator==(const Level&) const = default;
};

// Rows counted from 0. An absent column reads as 0 in every row.
template <class T>
class Column {
public:
    bool isAbsent() const { return !cells_; }

    T at(std::size_t row) const { return cells_ ? cells_.get()[row] : T{}; }

    // The first rows cells; empty when the column is absent.
    std::span<const T> cells(std::size_t rows) const { return {cells_.get(), cells_ ? rows : 0}; }

    // The cells to write to, none of them shared with a copy; makes the column, all 0, when it is absent.
    std::span<T> write(std::size_t rows, std::size_t capacity) {
        if (!cells_ || cells_.use_count() > 1) resize(rows, capacity);
        std::atomic_thread_fence(std::memory_order_acquire); // a worker may just have let go of its share
        return {cells_.get(), rows};
    }

    // Takes storage for capacity cells, of which the first rows keep their values and the others are 0.
    void resize(std::size_t rows, std::size_t capacity) {
        std::shared_ptr<T> cells(static_cast<T*>(std::calloc(capacity > 0 ? capacity : 1, sizeof(T))),
                                 [](T* p) { std::free(p); }); // calloc: untouched pages cost nothing
        if (!cells) throw std::bad_alloc();
        if (cells_) std::copy_n(cells_.get(), rows, cells.get());
        cells_ = std::move(cells);
    }

    void drop() { cells_.reset(); }

private:
    std::shared_ptr<T> cells_;
};

// The level quantities of a row. Those up to the last LnA have a column for each band.
enum class Quantity : int {
    LeqA,
    LminA,
    LmaxA,
    LnA, // the first of ten
    PeakA = LnA + 10,
    DoseA,
    LepdA,
    SELA,
    Ltm3A,
    Ltm5A,
    Pa2hA,
    LeqB,
    LminB,
    LmaxB,
    PeakB,
    SELB,
    LepdB,
    DoseB,
    Pa2hB,
    End
};

constexpr Quantity lnQuantity(int ln) {
    return static_cast<Quantity>(static_cast<int>(Quantity::LnA) + ln - 1);
} // 1..10

constexpr bool hasBands(Quantity quantity) {
    return quantity < Quantity::PeakA;
}

class IntervalColumns {
public:
    std::size_t count() const { return count_; }

    std::size_t capacity() const { return capacity_; }

    // Room for capacity rows, of which count are in use; rows beyond the old count are 0. Columns keep their values.
    void resize(std::size_t count, std::size_t capacity);

    void clear() { count_ = 0; } // keeps the room; rows taken into use later are 0 again

    void setCount(std::size_t count);

    // band 0..33; single quantities have band 0 only.
    Level level(Quantity quantity, int band, std::size_t row) const { return slot(quantity, band).at(row); }

    std::span<const Level> levels(Quantity quantity, int band) const { return slot(quantity, band).cells(count_); }

    void setLevel(Quantity quantity, int band, std::size_t row, Level level);

    std::span<Level> writeLevels(Quantity quantity, int band) { return slot(quantity, band).write(count_, capacity_); }

    void dropLevels(Quantity quantity, int band) { slot(quantity, band).drop(); }

    // The columns that are not levels. start dates are calendar numbers, times are seconds since midnight.
    Column<std::int32_t> IntervalLength, StartTime, LminTimeA, LmaxTimeA, PeakTimeA;
    Column<std::int16_t> Criterion, Exchange;
    Column<double> StartDate;
    Column<std::uint8_t> OverloadedA, OverloadedB, isExcluded;

    template <class T>
    void set(Column<T>& column, std::size_t row, T value) {
        if (value == T{} && column.isAbsent()) return;
        column.write(count_, capacity_)[row] = value;
    }

    template <class T>
    std::span<const T> cells(const Column<T>& column) const {
        return column.cells(count_);
    }

    // Puts all rows of range at the rows from first on, column by column. They must lie within count.
    void moveIn(const IntervalColumns& range, std::size_t first);

    // The rows first to first + count as columns of their own; the whole range shares its columns.
    IntervalColumns part(std::size_t first, std::size_t count) const;

    std::size_t bytes() const; // memory of the columns that exist

private:
    static constexpr int kBands = 34;
    static constexpr int kBanded = static_cast<int>(Quantity::PeakA);
    static constexpr int kSlots = kBanded * kBands + static_cast<int>(Quantity::End) - kBanded;

    static std::size_t index(Quantity quantity, int band) {
        const int q = static_cast<int>(quantity);
        return static_cast<std::size_t>(hasBands(quantity) ? q * kBands + band : kBanded * kBands + q - kBanded);
    }

    Column<Level>& slot(Quantity quantity, int band) { return levels_[index(quantity, band)]; }

    const Column<Level>& slot(Quantity quantity, int band) const { return levels_[index(quantity, band)]; }

    // Calls visit(column of self, the same column of other) for every column.
    template <class Self, class Other, class Visit>
    static void forEachColumn(Self& self, Other& other, Visit visit);

    std::array<Column<Level>, kSlots> levels_;
    std::size_t count_ = 0;
    std::size_t capacity_ = 0;
};

} // namespace kestrane

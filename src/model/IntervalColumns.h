// The rows of a log by column. A column is created by the first value other than 0 that is put into it, is contiguous,
// and is shared between copies of a log until one of them writes to it. Memory pages of a column that hold nothing but
// zeros take no memory. This form is made for walking one or a few quantities over all rows (recalculation, charts,
// tables); use clsLogIntervals for one row at a time. It knows nothing of modes, selections or files.
#pragma once

#include <algorithm>
#include <array>
#include <atomic>
#include <cstdint>
#include <cstdlib>
#include <new>
#include <span>
#include <utility>
#include <vector>

namespace kestrane {

// The two numbers of a clsValue in a column.
struct Level {
    float CalcValue = 0;
    float Value = 0;

    bool operator==(const Level&) const = default;
};

constexpr std::size_t kPage = 4096; // bytes of memory that the system provides at once

// A column of cells, with rows counted from 0. An absent column reads as 0 in every row.
template <class T>
class Column {
public:
    static constexpr std::size_t kOverhead = 40; // bytes beside the cells

    Column() = default;

    Column(const Column& other) : block_(other.block_) {
        if (block_) block_->shares.fetch_add(1, std::memory_order_relaxed);
    }

    Column(Column&& other) noexcept : block_(std::exchange(other.block_, nullptr)) {}

    Column& operator=(Column other) noexcept {
        std::swap(block_, other.block_);
        return *this;
    }

    ~Column() {
        if (block_ && block_->shares.fetch_sub(1, std::memory_order_acq_rel) == 1) std::free(block_);
    }

    bool isAbsent() const { return !block_; }

    T at(std::size_t row) const { return block_ ? first()[row] : T{}; }

    // The first rows cells; an empty span when the column is absent.
    std::span<const T> cells(std::size_t rows) const { return {block_ ? first() : nullptr, block_ ? rows : 0}; }

    // The cells for writing, which no copy shares. Creates the column, filled with 0, when it is absent.
    std::span<T> write(std::size_t rows, std::size_t capacity) {
        // A worker thread may just have released its share: acquire makes its reads happen before the writes that
        // follow.
        if (!block_ || block_->shares.load(std::memory_order_acquire) > 1) resize(rows, capacity);
        return {first(), rows};
    }

    // Takes storage for capacity cells. The first rows cells keep their values and the others are 0.
    void resize(std::size_t rows, std::size_t capacity) {
        void* const memory = std::calloc(1, sizeof(Block) + capacity * sizeof(T)); // untouched pages cost nothing
        if (!memory) throw std::bad_alloc();
        Column sized;
        sized.block_ = new (memory) Block;
        copyCells(cells(rows), {sized.first(), rows});
        *this = std::move(sized);
    }

    // Copies cells. A page that would receive only zeros is not touched where it holds zeros already.
    static void copyCells(std::span<const T> from, std::span<T> to) {
        constexpr std::size_t kStep = kPage / sizeof(T);
        const auto isSet = [](const T& cell) { return cell != T{}; };
        for (std::size_t at = 0; at < from.size(); at += kStep) {
            const auto source = from.subspan(at, std::min(kStep, from.size() - at));
            const auto target = to.subspan(at, source.size());
            if (std::any_of(source.begin(), source.end(), isSet)) {
                std::copy(source.begin(), source.end(), target.begin());
            } else {
                std::replace_if(target.begin(), target.end(), isSet, T{});
            }
        }
    }

    // Returns whether the row is on another page than the row of the previous call.
    bool turnsPage(std::size_t row) {
        const auto page = static_cast<std::uint32_t>(row * sizeof(T) / kPage + 1);
        if (block_->page == page) return false;
        block_->page = page;
        return true;
    }

    void drop() { *this = Column(); }

private:
    // Stands in front of the cells.
    struct alignas(8) Block {
        std::atomic<std::uint32_t> shares = 1;
        std::uint32_t page = 0; // counted from 1
    };

    T* first() const { return reinterpret_cast<T*>(block_ + 1); }

    Block* block_ = nullptr;
};

// The level quantities of a row. Those before PeakA have a column for each band.
enum class Quantity : int {
    LeqA,
    LminA,
    LmaxA,
    LnA, // Ln 1; the other nine follow
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
} // ln 1..10

constexpr bool hasBands(Quantity quantity) {
    return quantity < Quantity::PeakA;
}

class IntervalColumns {
public:
    std::size_t count() const { return count_; }

    std::size_t capacity() const { return capacity_; }

    // Makes room for capacity rows, of which count are in use. Rows up to the old count keep their values; rows beyond
    // it are 0.
    void resize(std::size_t count, std::size_t capacity);

    void clear() { count_ = 0; } // keeps the room; rows that are taken into use later are 0 again

    void setCount(std::size_t count);

    // band is 0..33; quantities without bands have band 0 only. A column that is absent reads as 0, or as an empty
    // span.
    Level level(Quantity quantity, int band, std::size_t row) const {
        const Column<Level>* const column = find(quantity, band);
        return column != nullptr ? column->at(row) : Level();
    }

    std::span<const Level> levels(Quantity quantity, int band) const {
        const Column<Level>* const column = find(quantity, band);
        return column != nullptr ? column->cells(count_) : std::span<const Level>();
    }

    void setLevel(Quantity quantity, int band, std::size_t row, Level level);

    std::span<Level> writeLevels(Quantity quantity, int band) { return slot(quantity, band).write(count_, capacity_); }

    // The columns that are not levels. StartDate holds calendar numbers (Calendar.h); times are seconds since midnight,
    // lengths seconds, Criterion and Exchange dB.
    Column<std::int32_t> IntervalLength, StartTime, LminTimeA, LmaxTimeA, PeakTimeA;
    Column<std::int16_t> Criterion, Exchange;
    Column<double> StartDate;
    Column<std::uint8_t> OverloadedA, OverloadedB, isExcluded;

    template <class T>
    void set(Column<T>& column, std::size_t row, T value) {
        if (value != T{} || column.at(row) != value) put(column, row, value);
    }

    template <class T>
    std::span<const T> cells(const Column<T>& column) const {
        return column.cells(count_);
    }

    // Copies all rows of range to this object's rows from first on, column by column. They must lie within count.
    void moveIn(const IntervalColumns& range, std::size_t first);

    // The count rows from first on as columns of their own. When that is all rows, the columns are shared.
    IntervalColumns part(std::size_t first, std::size_t count) const;

    std::size_t bytes() const; // memory of all columns that exist

    // Memory of the columns that were filled row by row with set and setLevel, counting only pages that hold a value.
    std::size_t touchedBytes() const { return touched_; }

private:
    static constexpr std::size_t kQuantities = static_cast<std::size_t>(Quantity::End);

    struct BandColumn {
        int band;
        Column<Level> column;
    };

    // Looks at the place where the band is when the bands have no gaps, which is the usual case, before it searches.
    const Column<Level>* find(Quantity quantity, int band) const {
        const auto q = static_cast<std::size_t>(quantity);
        std::size_t at = begins_[q] + static_cast<std::size_t>(band);
        const std::size_t end = begins_[q + 1];
        if (at < end && levels_[at].band == band) return &levels_[at].column;
        for (at = begins_[q]; at < end; ++at) {
            if (levels_[at].band == band) return &levels_[at].column;
        }
        return nullptr;
    }

    Column<Level>& slot(Quantity quantity, int band); // creates the column when it is absent

    void addSlotsOf(const IntervalColumns& other);

    template <class T>
    void put(Column<T>& column, std::size_t row, T value) {
        if (column.isAbsent()) touched_ += Column<T>::kOverhead;
        column.write(count_, capacity_).data()[row] = value;
        if (column.turnsPage(row)) touched_ += std::min(kPage, capacity_ * sizeof(T));
    }

    // Calls visit(column of self, the same column of other) for every column of self.
    template <class Self, class Other, class Visit>
    static void forEachColumn(Self& self, Other& other, Visit visit);

    std::vector<BandColumn> levels_;                      // by quantity and band
    std::array<std::uint16_t, kQuantities + 1> begins_{}; // where each quantity begins in levels_
    std::size_t touched_ = 0;
    std::size_t count_ = 0;
    std::size_t capacity_ = 0;
};

} // namespace kestrane

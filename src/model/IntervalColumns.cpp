#include "model/IntervalColumns.h"

#include <type_traits>

namespace kestrane {

Column<Level>& IntervalColumns::slot(Quantity quantity, int band) {
    if (const Column<Level>* const column = find(quantity, band)) return const_cast<Column<Level>&>(*column);
    const auto q = static_cast<std::size_t>(quantity);
    std::size_t at = begins_[q];
    while (at < begins_[q + 1] && levels_[at].band < band)
        ++at;
    const auto made = levels_.insert(levels_.begin() + static_cast<std::ptrdiff_t>(at), {band, {}});
    for (std::size_t next = q + 1; next < begins_.size(); ++next) // when there is memory for it
        ++begins_[next];
    return made->column;
}

void IntervalColumns::addSlotsOf(const IntervalColumns& other) {
    for (std::size_t q = 0; q < kQuantities; ++q) {
        for (std::size_t at = other.begins_[q]; at < other.begins_[q + 1]; ++at)
            slot(static_cast<Quantity>(q), other.levels_[at].band);
    }
}

template <class Self, class Other, class Visit>
void IntervalColumns::forEachColumn(Self& self, Other& other, Visit visit) {
    const Column<Level> absent;
    for (std::size_t q = 0; q < kQuantities; ++q) {
        for (std::size_t at = self.begins_[q]; at < self.begins_[q + 1]; ++at) {
            const auto* const same = other.find(static_cast<Quantity>(q), self.levels_[at].band);
            visit(self.levels_[at].column, same != nullptr ? *same : absent);
        }
    }
    visit(self.IntervalLength, other.IntervalLength);
    visit(self.StartTime, other.StartTime);
    visit(self.LminTimeA, other.LminTimeA);
    visit(self.LmaxTimeA, other.LmaxTimeA);
    visit(self.PeakTimeA, other.PeakTimeA);
    visit(self.Criterion, other.Criterion);
    visit(self.Exchange, other.Exchange);
    visit(self.StartDate, other.StartDate);
    visit(self.OverloadedA, other.OverloadedA);
    visit(self.OverloadedB, other.OverloadedB);
    visit(self.isExcluded, other.isExcluded);
}

void IntervalColumns::resize(std::size_t count, std::size_t capacity) {
    const std::size_t kept = std::min(count_, count);
    forEachColumn(*this, *this, [&](auto& column, const auto&) {
        if (!column.isAbsent()) column.resize(kept, capacity);
    });
    count_ = count;
    capacity_ = capacity;
}

void IntervalColumns::setCount(std::size_t count) {
    if (count > count_) {
        forEachColumn(*this, *this, [&](auto& column, const auto&) {
            if (column.isAbsent()) return;
            const auto cells = column.write(count, capacity_);
            std::fill(cells.begin() + static_cast<std::ptrdiff_t>(count_), cells.end(),
                      std::remove_cvref_t<decltype(cells[0])>{});
        });
    }
    count_ = count;
}

void IntervalColumns::setLevel(Quantity quantity, int band, std::size_t row, Level level) {
    if (const Column<Level>* const column = find(quantity, band)) {
        set(const_cast<Column<Level>&>(*column), row, level);
    } else if (level != Level()) {
        put(slot(quantity, band), row, level);
    }
}

void IntervalColumns::moveIn(const IntervalColumns& range, std::size_t first) {
    addSlotsOf(range);
    forEachColumn(*this, range, [&](auto& column, const auto& from) {
        if (from.isAbsent() && column.isAbsent()) return;
        const auto cells = column.write(count_, capacity_).subspan(first, range.count_);
        using Cell = std::remove_cvref_t<decltype(cells[0])>;
        if (from.isAbsent()) {
            std::replace_if(
                cells.begin(), cells.end(), [](const Cell& cell) { return cell != Cell{}; }, Cell{});
        } else {
            column.copyCells(from.cells(range.count_), cells);
        }
    });
}

IntervalColumns IntervalColumns::part(std::size_t first, std::size_t count) const {
    if (first == 0 && count == count_) return *this;
    IntervalColumns rows;
    rows.count_ = rows.capacity_ = count;
    rows.addSlotsOf(*this);
    forEachColumn(rows, *this, [&](auto& column, const auto& from) {
        if (from.isAbsent()) return;
        column.copyCells(from.cells(count_).subspan(first, count), column.write(count, count));
    });
    return rows;
}

std::size_t IntervalColumns::bytes() const {
    std::size_t total = 0;
    forEachColumn(*this, *this, [&](const auto& column, const auto&) {
        if (!column.isAbsent()) total += capacity_ * sizeof(column.at(0));
    });
    return total;
}

} // namespace kestrane

#include "model/IntervalColumns.h"

#include <type_traits>

namespace kestrane {

template <class Self, class Other, class Visit>
void IntervalColumns::forEachColumn(Self& self, Other& other, Visit visit) {
    for (std::size_t i = 0; i < self.levels_.size(); ++i)
        visit(self.levels_[i], other.levels_[i]);
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
    forEachColumn(*this, *this, [&](auto& column, auto&) {
        if (!column.isAbsent()) column.resize(kept, capacity);
    });
    count_ = count;
    capacity_ = capacity;
}

void IntervalColumns::setCount(std::size_t count) {
    if (count > count_) {
        forEachColumn(*this, *this, [&](auto& column, auto&) {
            if (column.isAbsent()) return;
            const auto cells = column.write(count, capacity_);
            std::fill(cells.begin() + static_cast<std::ptrdiff_t>(count_), cells.end(),
                      std::remove_cvref_t<decltype(cells[0])>{});
        });
    }
    count_ = count;
}

void IntervalColumns::setLevel(Quantity quantity, int band, std::size_t row, Level level) {
    Column<Level>& column = slot(quantity, band);
    if (column.isAbsent() && level.CalcValue == 0 && level.Value == 0) return;
    column.write(count_, capacity_)[row] = level;
}

void IntervalColumns::moveIn(const IntervalColumns& range, std::size_t first) {
    forEachColumn(*this, range, [&](auto& column, const auto& from) {
        if (from.isAbsent() && column.isAbsent()) return;
        const auto cells = column.write(count_, capacity_).subspan(first, range.count_);
        const auto source = from.cells(range.count_);
        if (source.empty()) {
            // Pages that have never been written to cost nothing, so zeros are left alone.
            using Cell = std::remove_cvref_t<decltype(cells[0])>;
            std::replace_if(
                cells.begin(), cells.end(), [](const Cell& cell) { return cell != Cell{}; }, Cell{});
        } else {
            std::copy(source.begin(), source.end(), cells.begin());
        }
    });
}

IntervalColumns IntervalColumns::part(std::size_t first, std::size_t count) const {
    if (first == 0 && count == count_) return *this;
    IntervalColumns rows;
    rows.count_ = rows.capacity_ = count;
    forEachColumn(rows, *this, [&](auto& column, const auto& from) {
        if (from.isAbsent()) return;
        const auto source = from.cells(count_).subspan(first, count);
        std::copy(source.begin(), source.end(), column.write(count, count).begin());
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

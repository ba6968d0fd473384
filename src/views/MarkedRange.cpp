#include "views/MarkedRange.h"

#include <algorithm>
#include <cmath>

namespace kestrane {

std::optional<std::pair<std::size_t, std::size_t>> MarkedRange::rows() const {
    if (!cursors_) return std::nullopt;
    return std::minmax(cursors_->fixed, cursors_->moving);
}

std::optional<std::size_t> MarkedRange::movingRow() const {
    return cursors_ ? std::optional(cursors_->moving) : std::nullopt;
}

std::size_t MarkedRange::rowAt(double place) const {
    return static_cast<std::size_t>(std::clamp(std::round(place), 0.0, static_cast<double>(rowCount_) - 1));
}

void MarkedRange::takeAt(const Grip& grip) {
    if (rowCount_ == 0) return;
    if (const auto marked = rows()) {
        const auto [first, last] = *marked;
        const double fromFirst = std::abs(grip.Place - (static_cast<double>(first) - 0.5));
        const double fromLast = std::abs(grip.Place - (static_cast<double>(last) + 0.5));
        if (std::min(fromFirst, fromLast) <= grip.Reach) {
            cursors_ = fromFirst < fromLast ? Cursors{last, first} : Cursors{first, last};
            return;
        }
    }
    cursors_ = {rowAt(grip.Place), rowAt(grip.Place)};
}

void MarkedRange::moveTo(double place) {
    if (cursors_) cursors_->moving = rowAt(place);
}

void MarkedRange::step(std::int64_t rows, std::size_t start) {
    if (rowCount_ == 0) return;
    if (!cursors_) cursors_ = {rowAt(static_cast<double>(start)), rowAt(static_cast<double>(start))};
    moveTo(static_cast<double>(cursors_->moving) + static_cast<double>(rows));
}

void MarkedRange::mark(std::size_t first, std::size_t last) {
    cursors_.reset();
    if (first < rowCount_) cursors_ = {first, std::min(last, rowCount_ - 1)};
}

void MarkedRange::exchange() {
    if (cursors_) std::swap(cursors_->fixed, cursors_->moving);
}

} // namespace kestrane

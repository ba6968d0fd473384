// The range of rows that a user has marked on a time chart: two cursors on rows, one of which moves. Rows are counted
// from 0; a place on the axis of rows is a number, and row r reaches from r - 0.5 to r + 0.5. It knows neither pixels
// nor keys.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <utility>

namespace kestrane {

class MarkedRange {
public:
    // Nothing is marked on a chart of so many rows.
    explicit MarkedRange(std::size_t rowCount = 0) : rowCount_(rowCount) {}

    // The first and the last row that are marked.
    std::optional<std::pair<std::size_t, std::size_t>> rows() const;

    std::optional<std::size_t> movingRow() const; // the row of the cursor that moves

    struct Grip {
        double Place, Reach;
    };

    // Puts a cursor on the row at a place. When an end of the range is not further than its reach from there, that end
    // moves and the other stays; else both cursors are put there.
    void takeAt(const Grip& grip);
    void moveTo(double place); // of the cursor that moves; nothing without rows

    // Moves the cursor by a number of rows, at most to the first or last row. When nothing is marked, both cursors are
    // put on the row start first.
    void step(std::int64_t rows, std::size_t start);

    void mark(std::size_t first, std::size_t last); // rows that do not exist are left out; first is at most last

    void exchange(); // the other cursor moves from now on

    void clear() { cursors_.reset(); }

private:
    struct Cursors {
        std::size_t fixed, moving;
    };

    std::size_t rowAt(double place) const;

    std::size_t rowCount_;
    std::optional<Cursors> cursors_;
};

} // namespace kestrane

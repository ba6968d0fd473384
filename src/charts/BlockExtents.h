// The lowest and the highest of any run of a series' values, found in a time that hardly depends on the length of the
// run, because the extents of blocks of values are known. It refers to the values and must not outlive them.
#pragma once

#include <algorithm>
#include <cstddef>
#include <limits>
#include <span>
#include <vector>

namespace kestrane {

struct Extent {
    float Lowest = std::numeric_limits<float>::infinity();
    float Highest = -std::numeric_limits<float>::infinity();

    bool isEmpty() const { return Lowest > Highest; }

    void include(float value) { // a missing value changes nothing
        if (value < Lowest) Lowest = value;
        if (value > Highest) Highest = value;
    }

    void include(const Extent& other) {
        Lowest = std::min(Lowest, other.Lowest);
        Highest = std::max(Highest, other.Highest);
    }
};

class BlockExtents {
public:
    explicit BlockExtents(std::span<const float> values);

    // The extent of the values from begin to end, end not included. Missing values are left out; the extent is empty
    // when there are no others.
    Extent of(std::size_t begin, std::size_t end) const;

    Extent ofAll() const { return of(0, values_.size()); }

private:
    std::span<const float> values_;
    std::vector<Extent> blocks_;
};

} // namespace kestrane

// The passes over one column of levels. excluded and weights are spans with a cell for each row, or empty: then no row
// is excluded and every row has weight 1.
#pragma once

#include "model/IntervalColumns.h"

#include <cstdint>
#include <span>

namespace kestrane {

struct EnergySum {
    double energy = 0; // sum of weight times 10^(L/10)
    double weight = 0; // sum of the weights of the levels that took part
};

// The energy of the CalcValues that are not 0, in rows that are not excluded. Both sums are 0 when there is none.
EnergySum sumEnergy(std::span<const Level> levels, std::span<const std::uint8_t> excluded,
                    std::span<const std::int32_t> weights);

// The smallest and the largest CalcValue that is not 0, in rows that are not excluded; 0 when there is none.
float smallestLevel(std::span<const Level> levels, std::span<const std::uint8_t> excluded);
float largestLevel(std::span<const Level> levels, std::span<const std::uint8_t> excluded);

} // namespace kestrane

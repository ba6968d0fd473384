// The passes over one column of levels.
#pragma once

#include "model/IntervalColumns.h"

#include <cstdint>
#include <span>

namespace kestrane {

struct EnergySum {
    double energy = 0; // sum of weight times 10^(L/10)
    double weight = 0; // of the levels that took part
};

// Of the CalcValues that are not 0, in rows that are not excluded. excluded and weights have a cell a row, or none at
// all (nothing is left out; every row weighs 1).
EnergySum sumEnergy(std::span<const Level> levels, std::span<const std::uint8_t> excluded,
                    std::span<const std::int32_t> weights);

// The smallest and the largest of the same; 0 when there is none.
float smallestLevel(std::span<const Level> levels, std::span<const std::uint8_t> excluded);
float largestLevel(std::span<const Level> levels, std::span<const std::uint8_t> excluded);

} // namespace kestrane

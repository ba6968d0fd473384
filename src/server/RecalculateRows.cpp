#include "model/Acoustics.h"
#include "platform/Numbers.h"
#include "server/EnergyMean.h"
#include "server/KestraneThread.h"

#include <algorithm>

namespace kestrane {

namespace {

// The length of each row in seconds, as its weight in the mean; empty when all rows are equally long.
std::vector<std::int32_t> rowWeights(const RecalcRequest& request) {
    const auto lengths = request.rows.cells(request.rows.IntervalLength);
    std::vector<std::int32_t> weights;
    for (const std::int32_t length : lengths)
        weights.push_back(length > 0 ? length : std::max(request.Interval, 0));
    const bool isEven = std::adjacent_find(weights.begin(), weights.end(), std::not_equal_to<>()) == weights.end();
    return isEven ? std::vector<std::int32_t>() : weights;
}

} // namespace

RecalcResults recalculateRows(const RecalcRequest& request) {
    const IntervalColumns& rows = request.rows;
    RecalcResults results;
    results.isExcluded = excludedRows(request.CutIntervals, request.IntervalsToBeIncluded, rows.count());
    const std::vector<std::int32_t> weights = rowWeights(request);

    const auto leq = [&](Quantity quantity, int band) -> float {
        const EnergySum sum = sumEnergy(rows.levels(quantity, band), results.isExcluded, weights);
        return sum.weight > 0 ? checkedSingle(levelOf(sum.energy / sum.weight)) : 0;
    };
    const auto smallest = [&](Quantity quantity, int band) {
        return smallestLevel(rows.levels(quantity, band), results.isExcluded);
    };
    const auto largest = [&](Quantity quantity, int band) {
        return largestLevel(rows.levels(quantity, band), results.isExcluded);
    };

    for (int band = 0; band <= lastBand(request.Mode); ++band) {
        results.zLeqCumA.push_back(leq(Quantity::LeqA, band));
        results.zLminCumA.push_back(smallest(Quantity::LminA, band));
        results.zLmaxCumA.push_back(largest(Quantity::LmaxA, band));
    }
    results.zPeakCumA = largest(Quantity::PeakA, 0);
    if (request.IsChannelBOn) {
        results.zLeqCumB = leq(Quantity::LeqB, 0);
        results.zLminCumB = smallest(Quantity::LminB, 0);
        results.zLmaxCumB = largest(Quantity::LmaxB, 0);
        results.zPeakCumB = largest(Quantity::PeakB, 0);
    }
    return results;
}

} // namespace kestrane

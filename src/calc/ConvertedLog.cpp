#include "calc/ConvertedLog.h"

#include "calc/BandLevels.h"
#include "calc/FreqWeight.h"
#include "calc/Recalculation.h"

#include <cstdint>
#include <functional>
#include <span>
#include <vector>

namespace kestrane {

namespace {

// Makes the overall Lmin and Lmax those of a row that counts, as a pass over the rows does: the extremes of the bands
// stand at different times.
void takeExtremesOfRows(clsLog& log) {
    const IntervalColumns& rows = log.LogIntervals.Columns();
    const std::span<const std::uint8_t> excluded = rows.cells(rows.isExcluded);
    const auto extreme = [&](Quantity quantity, clsValue& figure, auto isBeyond) {
        float found = 0;
        const std::span<const Level> levels = rows.levels(quantity, 0);
        for (std::size_t row = 0; row < levels.size(); ++row) {
            const float level = levels[row].CalcValue;
            const bool counts = level != 0 && (row >= excluded.size() || excluded[row] == 0);
            if (counts && (found == 0 || isBeyond(level, found))) found = level;
        }
        if (found != 0) figure.CalcValue(found);
    };
    extreme(Quantity::LminA, log.LminCumA(0), std::less<>());
    extreme(Quantity::LmaxA, log.LmaxCumA(0), std::greater<>());
}

} // namespace

void convertLog(clsLog& log, std::string_view newWeight) {
    const std::string before = log.FreqWeightA();
    AdjustFreqWeight(log, newWeight, true);
    const std::string after = log.FreqWeightA();
    if (after == before || !log.IsOctaveLog()) return;
    IntervalColumns& rows = log.LogIntervals.Columns();
    for (const Quantity quantity : {Quantity::LeqA, Quantity::LminA, Quantity::LmaxA}) {
        const std::vector<float> levels = levelsOfRowsFromBands(log, quantity, after);
        if (levels.empty()) continue;
        const std::span<Level> overall = rows.writeLevels(quantity, 0);
        for (std::size_t row = 0; row < levels.size(); ++row)
            if (levels[row] != 0) overall[row].CalcValue = levels[row];
    }
    RecalcFromBands(log);
    takeExtremesOfRows(log);
}

} // namespace kestrane

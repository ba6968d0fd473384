#include "calc/ConvertedLog.h"

#include "calc/BandLevels.h"
#include "calc/FreqWeight.h"
#include "calc/Recalculation.h"

namespace kestrane {

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
}

} // namespace kestrane

#include "assessment/LogLevels.h"

#include "model/Acoustics.h"
#include "model/RowClock.h"
#include "server/EnergyMean.h"

#include <algorithm>
#include <array>

namespace kestrane {

namespace {

constexpr double kSecondsOfAnHour = 3600;
constexpr std::string_view kKinds = "LOT"; // the letters of node keys, indexed by mode

// The A-weighted level of each row of a span, in dB; 0 for a row without a level.
std::vector<double> levelsOfSpan(const clsLog& log, LevelsFrom origin, std::size_t first, std::size_t count) {
    const IntervalColumns& rows = log.LogIntervals.Columns();
    std::vector<double> levels(count, 0);
    if (origin != LevelsFrom::Bands) {
        const Quantity quantity = origin == LevelsFrom::ChannelA ? Quantity::LeqA : Quantity::LeqB;
        const auto cells = rows.levels(quantity, 0);
        for (std::size_t row = 0; row < count && !cells.empty() && origin != LevelsFrom::Nowhere; ++row)
            levels[row] = cells[first + row].CalcValue;
        return levels;
    }
    for (int band = 1; band <= lastBand(log.Mode()); ++band) { // levels holds energies until the loop below
        const auto cells = rows.levels(Quantity::LeqA, band);
        const double change = toWeighting(log, "A", band);
        for (std::size_t row = 0; row < count && !cells.empty(); ++row) {
            const float level = cells[first + row].CalcValue;
            if (level != 0) levels[row] += energyOf(level + change);
        }
    }
    for (double& level : levels)
        level = level > 0 ? levelOf(level) : 0;
    return levels;
}

void takeRows(LogLevels& out, const clsLog& log, std::size_t first, std::size_t count) {
    const IntervalColumns& rows = log.LogIntervals.Columns();
    const std::vector<double> levels = levelsOfSpan(log, out.Origin, first, count);
    double energy = 0;
    double evenEnergy = 0;
    double seconds = 0;
    for (std::size_t row = 0; row < count; ++row) {
        if (levels[row] == 0 || rows.isExcluded.at(first + row) != 0) continue;
        const double length = rowSeconds(rows, first + row, log.Interval);
        out.Rows.push_back({levels[row], length});
        out.LongestRow = std::max(out.LongestRow, length);
        seconds += length;
        energy += length * energyOf(levels[row]);
        evenEnergy += energyOf(levels[row]);
    }
    out.Hours = seconds / kSecondsOfAnHour;
    if (out.Rows.empty()) return;
    out.Leq = levelOf(seconds > 0 ? energy / seconds : evenEnergy / static_cast<double>(out.Rows.size()));
}

void raise(std::optional<double>& highest, float level) {
    if (level != 0 && (!highest || level > *highest)) highest = level;
}

void takePeaks(LogLevels& out, const clsLog& log, std::size_t first, std::size_t count, bool isWhole) {
    const IntervalColumns& rows = log.LogIntervals.Columns();
    const auto excluded = rows.cells(rows.isExcluded);
    const bool isHeaderValid = isWhole && std::all_of(excluded.begin(), excluded.end(), [](auto x) { return x == 0; });
    const auto take = [&](const std::string& weight, Quantity quantity, const clsValue& header) {
        std::optional<double>& highest = weight == "C" ? out.CPeak : out.OtherPeak;
        const auto cells = rows.levels(quantity, 0);
        if (!cells.empty())
            raise(highest, largestLevel(cells.subspan(first, count),
                                        excluded.empty() ? excluded : excluded.subspan(first, count)));
        if (isHeaderValid) raise(highest, header.CalcValue());
    };
    take(log.FreqWeightA(), Quantity::PeakA, log.PeakCumA);
    if (log.IsChannelBOn) take(log.FreqWeightB(), Quantity::PeakB, log.PeakCumB);
}

// Calls visit(log, key without the file's part) for each log, in the order in which keys are numbered.
template <class Visit>
void forEachKey(const clsFile& file, Visit visit) {
    std::array<int, kLogModes.size()> logs{};
    int datas = 0;
    for (const auto& data : file.InstrumentDatas) {
        ++datas;
        forEachLog(*data, [&](const clsLog& log) {
            const auto at = static_cast<std::size_t>(log.Mode());
            visit(log, kKinds[at] + std::to_string(++logs[at]) + "I" + std::to_string(datas) + "F1");
        });
    }
}

} // namespace

LogLevels levelsOfRows(const clsLog& log, const std::optional<RowRange>& range,
                       const std::optional<LevelsFrom>& origin) {
    LogLevels levels;
    levels.Origin = origin.value_or(aWeightedLevels(log));
    const RowRange rows = range.value_or(RowRange{1, log.LogIntervals.Count()});
    const auto first = static_cast<std::size_t>(rows.From - 1);
    const auto count = static_cast<std::size_t>(rows.To - rows.From + 1);
    takeRows(levels, log, first, count);
    takePeaks(levels, log, first, count, !range);
    return levels;
}

const clsLog* logOfKey(const clsFile& file, std::string_view key) {
    const clsLog* found = nullptr;
    forEachKey(file, [&](const clsLog& log, const std::string& own) {
        if (found == nullptr && (key.empty() || key == own)) found = &log;
    });
    return found;
}

std::string keyOfLog(const clsFile& file, const clsLog& log) {
    std::string key;
    forEachKey(file, [&](const clsLog& item, const std::string& own) {
        if (&item == &log) key = own;
    });
    return key;
}

} // namespace kestrane

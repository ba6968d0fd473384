#include "sim/Holdings.h"

#include <array>
#include <utility>

namespace kestrane {

namespace {

void loadRows(clsLog& log) {
    if (log.IntervalNodes == nullptr) return;
    log.LogIntervals.setArraySize(log.IntervalNodes->Count());
    for (const RowRange& range : log.LoadRanges) {
        log.LogIntervals.copyData(log.IntervalNodes->load(log.Mode(), log.IsChannelBOn, range.From, range.To),
                                  range.From, range.To);
    }
    log.IntervalsToLoad = false;
}

} // namespace

Holdings holdingsOf(clsFile& file, std::string model) {
    Holdings holdings;
    holdings.Model = std::move(model);
    if (!file.InstrumentDatas.empty()) holdings.Serial = file.InstrumentDatas.front()->InsSerial;
    const std::array logs = {&holdings.Locations, &holdings.Octaves, &holdings.ThirdOctaves};
    forEachLog(file, [&logs](clsLog& log) {
        loadRows(log);
        logs[static_cast<std::size_t>(log.Mode())]->push_back(&log);
    });
    return holdings;
}

} // namespace kestrane

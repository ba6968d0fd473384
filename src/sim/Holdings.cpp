#include "sim/Holdings.h"

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
    for (const auto& data : file.InstrumentDatas) {
        for (const auto& [from, to] :
             {std::pair(&data->Locations, &holdings.Locations), std::pair(&data->Octaves, &holdings.Octaves),
              std::pair(&data->ThirdOctaves, &holdings.ThirdOctaves)}) {
            for (const auto& log : *from) {
                loadRows(*log);
                to->push_back(log.get());
            }
        }
    }
    return holdings;
}

} // namespace kestrane

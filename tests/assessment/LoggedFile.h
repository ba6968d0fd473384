// A document in memory with one log of rows of a minute.
#pragma once

#include "TestSession.h"
#include "model/clsFile.h"
#include "platform/TemporaryFolder.h"

#include <initializer_list>
#include <memory>

namespace kestrane {

struct LoggedFile : TestSession {
    TemporaryFolder folder;
    clsFile file{session, folder.file("a.xml")};
    clsLog* log;

    explicit LoggedFile(std::initializer_list<float> levels = {}, LogMode mode = modeBroadband) {
        auto& data = file.InstrumentDatas.emplace_back(std::make_unique<clsInsData>(session));
        log = data->logsOf(mode).emplace_back(std::make_unique<clsLog>(session)).get();
        log->Mode(mode);
        log->FreqWeightA("A");
        log->TimeWeightA("Slow");
        log->Interval = 60;
        log->LogIntervals.setArraySize(static_cast<std::int64_t>(levels.size()));
        std::size_t row = 0;
        for (const float level : levels)
            set(Quantity::LeqA, row++, level);
    }

    void set(Quantity quantity, std::size_t row, float level, int band = 0) {
        log->LogIntervals.Columns().setLevel(quantity, band, row, {level, level});
    }

    void exclude(std::size_t row) {
        auto& columns = log->LogIntervals.Columns();
        columns.set(columns.isExcluded, row, std::uint8_t{1});
    }
};

} // namespace kestrane

#include "TestLogs.h"

#include "model/LogParameters.h"
#include "platform/Calendar.h"
#include "server/LogLoading.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <random>

namespace kestrane::bench {

BenchSession::BenchSession() :
    server_(pump_), session("Ordwyn Acoustics", Locale(), settings_, messages_, pump_, clock_) {
    session.server = &server_;
}

void BenchSession::finishWork() {
    session.pump.runUntil([&] { return noLogIsBusy(session); });
}

IntervalColumns walkingRows(LogMode mode, std::size_t count) {
    constexpr std::int32_t kDay = 24 * 3600;
    IntervalColumns rows;
    rows.resize(count, count);
    std::minstd_rand random(1);
    const auto spread = [&](int most) { return static_cast<int>(random() % static_cast<unsigned>(most + 1)); };
    const auto put = [&](Quantity quantity, int band, std::size_t row, int tenths) {
        const float level = static_cast<float>(tenths) / 10.0F;
        rows.setLevel(quantity, band, row, {level, level});
    };
    std::array<int, kBandCount> tenths{};
    for (int band = 0; band <= lastBand(mode); ++band)
        tenths[static_cast<std::size_t>(band)] = 450 + spread(400);
    const CalendarTime firstDay = fromCivil({2025, 3, 20});
    for (std::size_t row = 0; row < count; ++row) {
        const auto seconds = static_cast<std::int32_t>(row);
        rows.set(rows.StartDate, row, firstDay + seconds / kDay);
        for (auto* times : {&rows.StartTime, &rows.LminTimeA, &rows.LmaxTimeA, &rows.PeakTimeA})
            rows.set(*times, row, seconds % kDay);
        for (int band = 0; band <= lastBand(mode); ++band) {
            int& level = tenths[static_cast<std::size_t>(band)];
            level = std::clamp(level + spread(20) - 10, 150, 1250);
            put(Quantity::LeqA, band, row, level);
            put(Quantity::LminA, band, row, level - spread(60));
            put(Quantity::LmaxA, band, row, level + spread(60));
        }
        put(Quantity::PeakA, 0, row, tenths[0] + 100 + spread(60));
    }
    return rows;
}

clsFile& addDocument(Session& session, const std::string& name, LogMode mode, std::size_t rows) {
    auto log = std::make_unique<clsLog>(session);
    log->Mode(mode);
    log->Name = "Log 1";
    log->Interval = 1;
    log->StartDate = {20, 3, 2025};
    log->FreqWeightA("A");
    log->LogIntervals.Columns() = walkingRows(mode, rows);
    auto data = std::make_unique<clsInsData>(session);
    data->NameX = "Bench";
    data->InsName("Corvane 5");
    data->logsOf(mode).push_back(std::move(log));
    auto file = std::make_unique<clsFile>(session, name);
    file->InstrumentDatas.push_back(std::move(data));
    session.OpenFiles.push_back(std::move(file));
    return *session.OpenFiles.back();
}

} // namespace kestrane::bench

#include "download/DownloadedLog.h"

#include "calc/Recalculation.h"
#include "model/LogParameters.h"

namespace kestrane {

std::unique_ptr<clsLog> newLog(const clsInsData& data, LogMode mode) {
    auto log = std::make_unique<clsLog>(data.session());
    log->Mode(mode);
    log->InsName = data.InsName();
    log->FirmwareVersion = data.FirmwareVersion;
    return log;
}

void setRows(clsLog& log, std::int64_t count) {
    constexpr std::int64_t kDay = 24 * 60 * 60;
    log.LogIntervals.setArraySize(count);
    IntervalColumns& rows = log.LogIntervals.Columns();
    const bool hasDate = log.StartDate.IsDate() && log.StartDate != clsDate();
    const std::int64_t start = log.StartTime.getTimeAsSeconds();
    const CalendarTime day = log.StartDate.getDate();
    const auto dayOf = [&](std::int64_t seconds) {
        const std::int64_t days = seconds / kDay;
        return day + static_cast<double>(days);
    };
    if (hasDate && count > 0) toCivil(dayOf(start + (count - 1) * log.Interval));
    for (std::int64_t i = 0; i < count; ++i) {
        const auto row = static_cast<std::size_t>(i);
        const std::int64_t seconds = start + i * log.Interval;
        if (hasDate) rows.set(rows.StartDate, row, dayOf(seconds));
        rows.set(rows.StartTime, row, static_cast<std::int32_t>(seconds % kDay));
    }
}

void finishLog(Transport& line, clsLog& log) {
    RecalcValues(log, kCalcFull);
    line.WaitUntil([&log] { return !log.IntervalsRecalculating; });
    SetPlottableValues(log);
}

} // namespace kestrane

#include "download/TallixLogs.h"

#include "download/DownloadedLog.h"
#include "download/TextFrame.h"
#include "model/Acoustics.h"
#include "platform/Numbers.h"
#include "platform/Trimmed.h"

#include <vector>

namespace kestrane {

namespace {

constexpr std::size_t kDigits = 4;

LogCollection readList(Transport& line, const clsInsData& data) {
    constexpr std::size_t kEntry = 13;
    const std::string payload = askLogList(line);
    const TextFields list(payload);
    LogCollection logs;
    for (std::size_t i = 0; i < entryCount(payload, kEntry); ++i) {
        const std::int32_t number = list.hex(1 + i * kEntry, kDigits);
        logs.push_back(newLog(data, modeBroadband));
        logs.back()->Number = number;
        logs.back()->Name = line.session().LoadText(Text::FileWordBroadband) + " " + std::to_string(number);
    }
    return logs;
}

// A decimal number; 0 for a blank text, which means that the instrument has none.
float decimalValue(std::string_view text) {
    if (trimmed(text).empty()) return 0;
    return toSingle(text, Locale{});
}

struct ValueField {
    std::size_t position;
    clsValue LogData::*target;
};

constexpr ValueField kValues[] = {
    {5, &LogData::DoseETCumA},  {9, &LogData::LepdETCumA}, {13, &LogData::DoseMTCumA},
    {17, &LogData::LepdMTCumA}, {31, &LogData::DoseHourA},
};

// Returns the number of rows.
std::int32_t decodeCumulative(clsLog& log, const TextFields& reply) {
    constexpr std::int32_t kMinute = 60;
    const std::int32_t rows = reply.hex(1, kDigits);
    if (rows == 0) return 0;
    for (const ValueField& field : kValues)
        (log.*field.target).Value(reply.value(field.position));
    log.IsLoggingOverLoaded = decimalValue(reply.text(27, 2)) > 0;
    log.Interval = reply.hex(29, 2) * kMinute;
    log.LeqCumA(0).Value(reply.value(47));
    log.Pa2hCumA.Value(decimalValue(reply.text(51, 5)));
    log.Criterion = static_cast<unsigned char>(reply.text(56, 1).front());
    log.StartTime = reply.time(57);
    log.StartDate = reply.date(63);
    log.FreqWeightA("A");
    return rows;
}

void decodeSeries(clsLog& log, Quantity quantity, const TextFields& reply) {
    IntervalColumns& rows = log.LogIntervals.Columns();
    for (std::size_t row = 0; row < rows.count(); ++row) {
        const float value = reply.value(1 + row * kDigits);
        rows.setLevel(quantity, 0, row, {value, value});
    }
}

// The level that gives a dose within a row; 0 for no dose. Where the formula has hours, the minutes of the row are
// used; that is meant, and so are the factors, which are instrument convention: these instruments count 10 dB for ten
// times the dose at an exchange rate of 3 dB, and 5 dB at every other rate.
float levelOfRow(const clsLog& log, float dose) {
    constexpr double kMinute = 60;
    constexpr std::int16_t kEqualEnergy = 3;
    if (dose <= 0) return 0;
    const double perDecade = log.Exchange == kEqualEnergy ? 10 : 5;
    return checkedSingle(levelOfDose(doseIn8Hours(dose, log.Interval / kMinute), log.Criterion, perDecade));
}

void levelsFromDoses(clsLog& log) {
    IntervalColumns& rows = log.LogIntervals.Columns();
    for (std::size_t row = 0; row < rows.count(); ++row) {
        const float level = levelOfRow(log, rows.level(Quantity::DoseA, 0, row).CalcValue);
        rows.setLevel(Quantity::LeqA, 0, row, {level, level});
    }
}

void setEnd(clsLog& log) {
    const clsLogInterval last = log.LogIntervals.Item(log.LogIntervals.Count());
    log.EndDate = last.StartDate;
    log.EndTime = last.StartTime;
}

void readRows(Transport& line, clsLog& log) {
    decodeSeries(log, Quantity::DoseA, TextFields(askLog(line, log.Number, LogPart::Intervals)));
    if (log.has(Trait::ReportsDoseOnly)) {
        levelsFromDoses(log);
    } else {
        decodeSeries(log, Quantity::LeqA, TextFields(askLog(line, log.Number, LogPart::Levels)));
    }
    setEnd(log);
}

} // namespace

void DownloadOldTallixLogs(Transport& line, clsInsData& data) {
    data.InsSerial = askSerialNumber(line);
    LogCollection logs = readList(line, data);
    AcquireList list{data.InsName(), data.InsSerial, {}, false, false, {}};
    for (const auto& log : logs)
        list.Rows.push_back(log->Name);
    const AcquireChoice choice = line.ChooseLogs(list);
    std::vector<std::size_t> filled; // rows of the list
    for (std::size_t i = 0; i < logs.size(); ++i) {
        if (!choice.Selected[i]) continue;
        clsLog& log = *logs[i];
        line.BeginLog(line.session().LoadText(Text::DownloadingIntervals) + " " + std::to_string(log.Number) + ".", 0);
        const std::string reply = askLog(line, log.Number, LogPart::Cumulative);
        const std::int32_t rows = decodeCumulative(log, TextFields(reply));
        if (rows == 0) {
            line.EndLog(i);
            continue;
        }
        setRows(log, rows);
        filled.push_back(i);
    }
    for (const std::size_t i : filled) {
        readRows(line, *logs[i]);
        finishLog(line, *logs[i]);
        data.Locations.push_back(std::move(logs[i]));
        line.EndLog(i);
    }
}

} // namespace kestrane

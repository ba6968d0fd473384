#include "download/MerrowanLogs.h"

#include "download/DownloadedLog.h"
#include "download/Hex.h"
#include "download/LogFigures.h"
#include "download/TextFrame.h"
#include "model/InstrumentFamilies.h"
#include "model/LogTime.h"
#include "platform/Numbers.h"
#include "platform/RuntimeError.h"

#include <algorithm>
#include <array>
#include <span>

namespace kestrane {

namespace {

constexpr std::array<std::string_view, 3> kOctaveModels = {"TR322", "TR326", "TR352"};

template <class Meaning>
struct Code {
    std::string_view code;
    Meaning meaning;
};

constexpr Code<std::string_view> kFreqWeights[] = {{"00", "A"}, {"01", "Z"}, {"02", "C"}};
constexpr Code<std::string_view> kTimeWeights[] = {{"00", "Slow"}, {"01", "Fast"}, {"02", "Impulse"}};
constexpr Code<std::string_view> kOctaveTypes[] = {{"01", ManualOctave}, {"02", LeqOctave}};
constexpr Code<std::int16_t> kCriteria[] = {{"0", 90}, {"1", 85}};
constexpr Code<std::int16_t> kExchanges[] = {{"0", 3}, {"1", 5}};

// Calls use(meaning) with what the code means; does nothing for a code that is not in the table.
template <class Meaning, std::size_t N, class Use>
void withMeaning(const Code<Meaning> (&table)[N], std::string_view code, Use use) {
    for (const Code<Meaning>& c : table) {
        if (c.code == code) use(c.meaning);
    }
}

void setWeightings(clsLog& log, std::string_view freq, std::string_view time) {
    withMeaning(kFreqWeights, freq, [&](std::string_view text) { log.FreqWeightA(text); });
    withMeaning(kTimeWeights, time, [&](std::string_view text) { log.TimeWeightA(text); });
}

struct ValueField {
    std::size_t position;
    LogFigure target;
};

struct MomentField {
    std::size_t position; // of the time; the date is 6 characters further on
    clsTime LogData::*time;
    clsDate LogData::*date;
};

struct RowValueField {
    std::size_t position;
    Quantity quantity;
};

struct RowTimeField {
    std::size_t position;
    Column<std::int32_t> IntervalColumns::*column;
};

// A kind of location, and what its logs have behind the header of the cumulative reply and in a row.
struct LocationKind {
    std::string_view code; // the code in the list
    std::string_view locationType;
    Text::Id textId;
    bool hasLns;
    std::span<const ValueField> values;
    std::span<const MomentField> moments;
    std::size_t rowSize;
    std::span<const RowValueField> rowValues;
    std::span<const RowTimeField> rowTimes;
};

constexpr ValueField kWorkValues[] = {
    {1, overall<&LogData::LeqCumA>},   {5, single<&LogData::DoseETCumA>}, {9, single<&LogData::SELCumA>},
    {13, overall<&LogData::LmaxCumA>}, {29, single<&LogData::PeakCumA>},
};
constexpr MomentField kWorkMoments[] = {
    {17, &LogData::LmaxCumTimeA, &LogData::LmaxCumDateA},
    {33, &LogData::PeakCumTimeA, &LogData::PeakCumDateA},
};
constexpr RowValueField kWorkRow[] = {
    {5, Quantity::DoseA}, {9, Quantity::LeqA}, {13, Quantity::LmaxA}, {23, Quantity::PeakA}};
constexpr RowTimeField kWorkRowTimes[] = {{17, &IntervalColumns::LmaxTimeA}, {27, &IntervalColumns::PeakTimeA}};

constexpr ValueField kEnvironmentValues[] = {
    {1, overall<&LogData::LeqCumA>},
    {5, overall<&LogData::LmaxCumA>},
    {21, overall<&LogData::LminCumA>},
    {37, ln<1>},
    {45, ln<2>},
    {59, single<&LogData::SELCumA>},
};
constexpr MomentField kEnvironmentMoments[] = {
    {9, &LogData::LmaxCumTimeA, &LogData::LmaxCumDateA},
    {25, &LogData::LminCumTimeA, &LogData::LminCumDateA},
};
constexpr RowValueField kEnvironmentRow[] = {
    {5, Quantity::LeqA}, {9, Quantity::LmaxA}, {19, Quantity::LminA}, {29, lnQuantity(1)}, {37, lnQuantity(2)}};
constexpr RowTimeField kEnvironmentRowTimes[] = {{13, &IntervalColumns::LmaxTimeA}, {23, &IntervalColumns::LminTimeA}};

constexpr LocationKind kKinds[] = {
    {"01", NoiseAtWorkLocation, Text::NoiseAtWork, false, kWorkValues, kWorkMoments, 34, kWorkRow, kWorkRowTimes},
    {"02", EnvironmentLocation, Text::Environmental, true, kEnvironmentValues, kEnvironmentMoments, 42, kEnvironmentRow,
     kEnvironmentRowTimes},
};

// A log in the list that the instrument sends.
struct Entry {
    int number;               // its place in the list, counted from 1
    const LocationKind* kind; // null when the kind is not known
    std::string text;         // of its row in the dialog
};

std::string hexPairs(const TextFields& entry, std::initializer_list<std::size_t> positions) {
    std::string pairs;
    for (const std::size_t position : positions)
        pairs += entry.text(position, 2);
    return pairs;
}

Entry decodeEntry(const Session& session, const TextFields& fields, int number) {
    constexpr std::size_t kKind = 3;
    const auto* const kind = std::find_if(std::begin(kKinds), std::end(kKinds), [&](const LocationKind& k) {
        return k.code == fields.text(kKind, k.code.size());
    });
    Entry entry{number, kind == std::end(kKinds) ? nullptr : kind, {}};
    clsTime time;
    time.AcquireTime(hexPairs(fields, {5, 7}));
    clsDate date;
    date.CalcDate(hexPairs(fields, {13, 15, 17}));
    entry.text = session.LoadText(Text::BroadbandMode) + " " + std::to_string(number) + "\t" + date.Format() + "   " +
                 "\t" + time.hh_mm() + "\t" + (entry.kind == nullptr ? "" : session.LoadText(entry.kind->textId));
    return entry;
}

std::vector<Entry> readList(Transport& line) {
    constexpr std::size_t kEntry = 18;
    const std::string payload = askLogList(line);
    std::vector<Entry> entries;
    for (std::size_t i = 0; i < entryCount(payload, kEntry); ++i) {
        const TextFields fields = TextFields(payload).from(1 + i * kEntry);
        entries.push_back(decodeEntry(line.session(), fields, static_cast<int>(i) + 1));
    }
    return entries;
}

// Returns the number of rows.
std::int32_t decodeHeader(clsLog& log, const TextFields& reply) {
    log.StartTime = reply.time(11);
    log.StartDate = reply.date(17);
    log.EndTime = reply.time(23);
    log.EndDate = reply.date(29);
    setWeightings(log, reply.text(35, 2), reply.text(37, 2));
    withMeaning(kCriteria, reply.text(39, 1), [&](std::int16_t level) { log.Criterion = level; });
    withMeaning(kExchanges, reply.text(40, 1), [&](std::int16_t rate) { log.Exchange = rate; });
    return reply.hex(7, 4);
}

void decodeCumulative(clsLog& log, const TextFields& behindHeader, const LocationKind& kind) {
    constexpr std::size_t kDateBehind = 6;
    for (const ValueField& field : kind.values)
        field.target(log).Value(behindHeader.value(field.position));
    for (const MomentField& field : kind.moments) {
        log.*field.time = behindHeader.time(field.position);
        log.*field.date = behindHeader.date(field.position + kDateBehind);
    }
    log.LocationType(kind.locationType);
    if (!kind.hasLns) return;
    log.LnNumberA(1, 10);
    log.LnNumberA(2, 90);
    log.IsLnNumbersOn = true;
}

// A single row has no spacing: its length is that of the run, when that is known.
void setLengthOfRun(clsLog& log) {
    try {
        const auto seconds = static_cast<std::int32_t>(getTime(log, 's', Run::Whole, ExcludedRows::Count));
        if (seconds > 0) log.Interval = seconds;
    } catch (const RuntimeError&) {
    }
}

void decodeRows(clsLog& log, const std::string& payload, std::int32_t count, const LocationKind& kind) {
    constexpr std::size_t kHoursMinutes = 4;
    const auto rowCount = static_cast<std::size_t>(count);
    const TextFields reply(payload);
    log.LogIntervals.setArraySize(count);
    IntervalColumns& rows = log.LogIntervals.Columns();
    for (std::size_t row = 0; row < rowCount; ++row) {
        const TextFields record = reply.from(1 + row * kind.rowSize);
        rows.set(rows.StartTime, row, record.time(1, kHoursMinutes).getTimeAsSeconds());
        for (const RowValueField& field : kind.rowValues) {
            const float value = record.value(field.position);
            rows.setLevel(field.quantity, 0, row, {value, value});
        }
        for (const RowTimeField& field : kind.rowTimes)
            rows.set(rows.*field.column, row, record.time(field.position).getTimeAsSeconds());
    }
    if (count == 1) setLengthOfRun(log);
    SetInterval(log);
    SetSampleDates(log);
}

std::string labelOf(const Transport& line, Text::Id textId, int number) {
    return line.session().LoadText(textId) + " " + std::to_string(number) + ".";
}

std::unique_ptr<clsLog> readLog(Transport& line, const clsInsData& data, const Entry& entry) {
    constexpr std::size_t kBehindHeader = 41;
    auto log = newLog(data, modeBroadband);
    log->Number = entry.number;
    log->Name = line.session().LoadText(Text::FileWordBroadband) + " " + std::to_string(entry.number);
    line.BeginLog(labelOf(line, Text::DownloadingCumulative, entry.number), 0);
    const std::string cumulative = askLog(line, entry.number, LogPart::Cumulative);
    const std::int32_t rows = decodeHeader(*log, TextFields(cumulative));
    if (entry.kind != nullptr) decodeCumulative(*log, TextFields(cumulative).from(kBehindHeader), *entry.kind);
    line.ShowLabel(labelOf(line, Text::DownloadingIntervals, entry.number));
    const std::string intervals = askLog(line, entry.number, LogPart::Intervals);
    if (entry.kind != nullptr) decodeRows(*log, intervals, rows, *entry.kind);
    finishLog(line, *log);
    return log;
}

std::unique_ptr<clsLog> decodeOctaves(const clsInsData& data, const TextFields& record, int number) {
    constexpr std::array<std::string_view, 10> kBands = {"31.5", "63", "125", "250", "500",
                                                         "1k",   "2k", "4k",  "8k",  "16k"};
    constexpr std::size_t kValue = 4;
    auto log = newLog(data, modeFullOctave);
    log->Number = number;
    log->Name = data.session().LoadText(Text::OctaveWord) + " " + std::to_string(number);
    for (std::size_t i = 0; i < kBands.size(); ++i)
        log->LeqCumA(kBands[i]).Value(record.value(1 + i * kValue));
    log->StartTime = record.time(41);
    log->StartDate = record.date(47);
    log->OctaveType(AutoOctave);
    withMeaning(kOctaveTypes, record.text(53, 2), [&](std::string_view type) { log->OctaveType(type); });
    setWeightings(*log, record.text(55, 2), record.text(57, 2));
    return log;
}

void readOctaves(Transport& line, clsInsData& data) {
    constexpr std::size_t kRecord = 82;
    line.ShowLabel(line.session().LoadText(Text::DownloadingOctave));
    const std::int32_t count = hexNumber(framePayload(line.Ask("05")));
    const std::string reply = line.Ask("06");
    if (count == 0) return;
    const TextFields records(dataPayload(reply));
    LogCollection octaves;
    for (std::int32_t i = 0; i < count; ++i) {
        const TextFields record = records.from(1 + static_cast<std::size_t>(i) * kRecord);
        octaves.push_back(decodeOctaves(data, record, i + 1));
        finishLog(line, *octaves.back());
    }
    data.Octaves = std::move(octaves);
}

} // namespace

void DownloadMerrowanLogs(Transport& line, clsInsData& data) {
    data.InsSerial = askSerialNumber(line);
    const std::vector<Entry> entries = readList(line);
    AcquireList list{data.InsName(), data.InsSerial, {}, true, false, {}};
    list.CanFetchOctaves = std::any_of(kOctaveModels.begin(), kOctaveModels.end(),
                                       [&](std::string_view model) { return IsModel(data.InsName(), model); });
    for (const Entry& entry : entries)
        list.Rows.push_back(entry.text);
    const AcquireChoice choice = line.ChooseLogs(list);
    for (std::size_t i = 0; i < entries.size(); ++i) {
        if (!choice.Selected[i]) continue;
        data.Locations.push_back(readLog(line, data, entries[i]));
        line.EndLog(i);
    }
    if (!choice.FetchOctaves || !list.CanFetchOctaves) return;
    readOctaves(line, data);
    line.EndOctaves();
}

} // namespace kestrane

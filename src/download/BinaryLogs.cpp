#include "download/BinaryLogs.h"

#include "calc/Recalculation.h"
#include "download/DownloadedLog.h"
#include "download/LogFigures.h"
#include "download/WireReader.h"
#include "model/InstrumentFamilies.h"
#include "model/LevelWriter.h"
#include "platform/Numbers.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdio>
#include <optional>
#include <span>
#include <vector>

namespace kestrane {

namespace {

// What the directory says about a log. A number that the instrument does not send stays kNotSent.
constexpr std::int32_t kNotSent = -1;

struct Entry {
    std::int32_t dataSize = 0; // bytes of the block, header included
    std::int32_t mode = kNotSent, location = kNotSent, range = 0, interval = 0, preset = kNotSent;
    std::int32_t criterion = 0, exchange = 0, threshold = 0;
    std::int32_t timeWeightA = 0, timeWeightB = 0, weightB = 0, isChannelBOn = 0, thirdLn = 0;
    std::string start, calibration, factory;
};

struct NumberField {
    std::size_t offset, size;
    std::int32_t Entry::*target;
};

struct StampField {
    std::size_t offset;
    std::string Entry::*target;
};

// The logs in which a figure is taken.
enum class When { Always, ChannelB, ThirdLn };

struct RowField {
    std::size_t offset;
    Quantity quantity;
    When when = When::Always;
};

struct SummaryField {
    std::size_t offset;
    LogFigure figure;
    When when = When::Always;
};

constexpr std::size_t kEndStamp = 0x00, kMeasuredTime = 0x08; // in every summary
constexpr std::size_t kNoOverload = 0;

} // namespace

struct BinaryLayout {
    bool isHalcyr;
    std::size_t entrySize, firstData;
    std::span<const NumberField> numbers;
    std::span<const StampField> stamps;
    std::size_t rowSize;
    std::span<const RowField> row;
    std::size_t overloadA, overloadB; // offsets in the row
    std::size_t summarySize;
    std::span<const SummaryField> summary;
    std::size_t summaryOverload; // offset of two bytes; kNoOverload when the rows say it
};

namespace {

constexpr NumberField kBrevikNumbers[] = {
    {0x00, 4, &Entry::dataSize},    {0x14, 4, &Entry::location},  {0x18, 4, &Entry::range},
    {0x1C, 4, &Entry::interval},    {0x34, 4, &Entry::preset},    {0x38, 4, &Entry::criterion},
    {0x3C, 4, &Entry::exchange},    {0x40, 4, &Entry::threshold}, {0x44, 1, &Entry::timeWeightA},
    {0x45, 1, &Entry::timeWeightB}, {0x48, 4, &Entry::weightB},   {0x4C, 4, &Entry::isChannelBOn},
    {0x50, 4, &Entry::thirdLn},
};
constexpr NumberField kBrevikEarlyNumbers[] = {
    {0x00, 4, &Entry::dataSize},  {0x14, 4, &Entry::location},     {0x18, 4, &Entry::range},
    {0x1C, 4, &Entry::interval},  {0x34, 4, &Entry::criterion},    {0x38, 4, &Entry::exchange},
    {0x3C, 4, &Entry::threshold}, {0x40, 1, &Entry::timeWeightA},  {0x41, 1, &Entry::timeWeightB},
    {0x44, 4, &Entry::weightB},   {0x48, 4, &Entry::isChannelBOn}, {0x4C, 4, &Entry::thirdLn},
};
constexpr NumberField kHalcyrNumbers[] = {
    {0x00, 4, &Entry::dataSize},  {0x10, 4, &Entry::mode},         {0x14, 4, &Entry::range},
    {0x18, 4, &Entry::interval},  {0x30, 4, &Entry::criterion},    {0x34, 4, &Entry::exchange},
    {0x38, 4, &Entry::threshold}, {0x3C, 1, &Entry::timeWeightA},  {0x3D, 1, &Entry::timeWeightB},
    {0x40, 4, &Entry::weightB},   {0x44, 4, &Entry::isChannelBOn}, {0x48, 4, &Entry::thirdLn},
};
constexpr StampField kBrevikStamps[] = {{0x20, &Entry::start}, {0x26, &Entry::calibration}, {0x2C, &Entry::factory}};
constexpr StampField kHalcyrStamps[] = {{0x1C, &Entry::start}, {0x22, &Entry::calibration}, {0x28, &Entry::factory}};

constexpr RowField kBrevikRow[] = {
    {0x00, Quantity::LeqA},
    {0x08, Quantity::LeqB, When::ChannelB},
    {0x10, Quantity::LmaxA},
    {0x18, Quantity::LmaxB, When::ChannelB},
    {0x20, Quantity::LminA},
    {0x28, Quantity::LminB, When::ChannelB},
    {0x30, Quantity::SELA},
    {0x38, Quantity::LepdA},
    {0x40, lnQuantity(1)},
    {0x48, lnQuantity(2)},
    {0x50, lnQuantity(3), When::ThirdLn},
    {0x58, Quantity::PeakB, When::ChannelB},
};
constexpr RowField kShortRow[] = {
    {0x00, Quantity::LeqA},
    {0x08, Quantity::LeqB, When::ChannelB},
    {0x10, Quantity::LmaxA},
    {0x18, Quantity::LmaxB, When::ChannelB},
    {0x20, Quantity::SELA},
    {0x28, Quantity::LepdA},
    {0x30, lnQuantity(1)},
    {0x38, lnQuantity(2)},
    {0x40, lnQuantity(3), When::ThirdLn},
    {0x48, Quantity::PeakB, When::ChannelB},
};
constexpr RowField kHalcyrEarlyRow[] = {
    {0x00, Quantity::LeqA},
    {0x08, Quantity::LeqB, When::ChannelB},
    {0x10, Quantity::LmaxA},
    {0x18, Quantity::LmaxB, When::ChannelB},
    {0x20, Quantity::SELA},
    {0x28, Quantity::LepdA},
    {0x30, lnQuantity(1)},
    {0x38, lnQuantity(2)},
    {0x40, lnQuantity(3), When::ThirdLn},
    {0x60, Quantity::PeakB, When::ChannelB},
};

constexpr SummaryField kBrevikSummary[] = {
    {0x10, single<&LogData::DoseETCumA>},
    {0x18, single<&LogData::DoseHourA>},
    {0x20, single<&LogData::Pa2hCumA>},
    {0x28, single<&LogData::LAvgCumA>},
    {0x38, overall<&LogData::LeqCumA>},
    {0x40, single<&LogData::LeqCumB>, When::ChannelB},
    {0x48, overall<&LogData::LmaxCumA>},
    {0x50, single<&LogData::LmaxCumB>, When::ChannelB},
    {0x58, overall<&LogData::LminCumA>},
    {0x60, single<&LogData::LminCumB>, When::ChannelB},
    {0x68, single<&LogData::SELCumA>},
    {0x70, single<&LogData::LepdETCumA>},
    {0x78, ln<1>},
    {0x80, ln<2>},
    {0x88, ln<3>, When::ThirdLn},
    {0x90, single<&LogData::PeakCumB>, When::ChannelB},
};
constexpr SummaryField kShortSummary[] = {
    {0x10, single<&LogData::DoseETCumA>},
    {0x18, single<&LogData::DoseHourA>},
    {0x20, single<&LogData::Pa2hCumA>},
    {0x28, overall<&LogData::LeqCumA>},
    {0x30, single<&LogData::LeqCumB>, When::ChannelB},
    {0x38, overall<&LogData::LmaxCumA>},
    {0x40, single<&LogData::LmaxCumB>, When::ChannelB},
    {0x48, single<&LogData::SELCumA>},
    {0x50, single<&LogData::LepdETCumA>},
    {0x58, ln<1>},
    {0x60, ln<2>},
    {0x68, ln<3>, When::ThirdLn},
    {0x70, single<&LogData::PeakCumB>, When::ChannelB},
};
constexpr SummaryField kHalcyrEarlySummary[] = {
    {0x10, overall<&LogData::LeqCumA>},
    {0x18, single<&LogData::LeqCumB>, When::ChannelB},
    {0x20, overall<&LogData::LmaxCumA>},
    {0x28, single<&LogData::LmaxCumB>, When::ChannelB},
    {0x30, single<&LogData::SELCumA>},
    {0x38, single<&LogData::LepdETCumA>},
    {0x40, ln<1>},
    {0x48, ln<2>},
    {0x50, ln<3>, When::ThirdLn},
    {0x58, single<&LogData::DoseETCumA>},
    {0x68, single<&LogData::DoseHourA>},
    {0x70, single<&LogData::PeakCumB>, When::ChannelB},
};

} // namespace

constexpr BinaryLayout kBrevikLayout = {false, 84,   80,  kBrevikNumbers, kBrevikStamps, 104, kBrevikRow,
                                        0x60,  0x61, 160, kBrevikSummary, 0x98};
constexpr BinaryLayout kBrevikEarlyLayout = {false, 80,   76,  kBrevikEarlyNumbers, kBrevikStamps, 88, kShortRow,
                                             0x50,  0x51, 128, kShortSummary,       kNoOverload};
constexpr BinaryLayout kHalcyrLayout = {true, 76,   72,  kHalcyrNumbers, kHalcyrStamps, 88, kShortRow,
                                        0x50, 0x51, 128, kShortSummary,  kNoOverload};
constexpr BinaryLayout kHalcyrEarlyLayout = {true, 76,   72,  kHalcyrNumbers,      kHalcyrStamps, 112, kHalcyrEarlyRow,
                                             0x68, 0x69, 128, kHalcyrEarlySummary, kNoOverload};

namespace {

constexpr std::size_t kReplyHead = 3, kReplyTail = 1;
constexpr std::size_t kStampSize = 6;

// "hh:mm:ss dd/mm/20yy" from the bytes hour, minute, second, day, month, year; without the "20" when all are 0.
std::string stampText(std::string_view bytes, std::size_t offset) {
    std::array<int, kStampSize> part{};
    for (std::size_t i = 0; i < kStampSize; ++i)
        part[i] = wireByte(bytes, offset + i);
    const bool isSet = std::any_of(part.begin(), part.end(), [](int p) { return p != 0; });
    std::array<char, 48> text{};
    std::snprintf(text.data(), text.size(), "%02d:%02d:%02d %02d/%02d/%s%02d", part[0], part[1], part[2], part[3],
                  part[4], isSet ? "20" : "00", part[5]);
    return text.data();
}

// What is no time, such as the FF bytes of memory that was never written, leaves none: no row depends on it.
void setStamp(const Session& session, const std::string& stamp, clsDate& date, clsTime* time) {
    constexpr std::size_t kDate = 10, kTime = 8;
    date.setDate(stamp.substr(stamp.size() - kDate), session.locale);
    if (time == nullptr) return;
    try {
        time->setTime(stamp.substr(0, kTime), session.locale);
    } catch (const RuntimeError&) {
        *time = {};
    }
}

// A level rounded to two decimals as its text "0.00" would be: halves away from zero; 0 for what is not finite.
float levelOf(double value) {
    constexpr double kHundred = 100;
    if (!std::isfinite(value * kHundred)) return 0;
    return checkedSingle(roundHalfAway(value * kHundred) / kHundred + 0); // + 0 turns -0 into 0
}

bool isTaken(const clsLog& log, When when) {
    return when == When::Always || (when == When::ChannelB ? log.IsChannelBOn : log.LnNumberA(3) != 0);
}

Entry decodeEntry(std::string_view bytes, const BinaryLayout& layout) {
    Entry entry;
    for (const NumberField& field : layout.numbers)
        entry.*field.target = static_cast<std::int32_t>(wireNumber(bytes, field.offset, field.size));
    for (const StampField& field : layout.stamps)
        entry.*field.target = stampText(bytes, field.offset);
    return entry;
}

// Calls use(item) with the table's item for the code; does nothing for a code without an item.
template <std::size_t N, class Use>
void withItem(const std::array<std::string_view, N>& table, std::int32_t code, Use use) {
    if (code >= 0 && static_cast<std::size_t>(code) < N) use(table[static_cast<std::size_t>(code)]);
}

constexpr std::int32_t kAllParameters = 2;
constexpr std::array<std::string_view, 4> kLocations = {NoiseAtWorkLocation, EnvironmentLocation, "All", ""};
constexpr std::array<std::string_view, 3> kBrevikRanges = {"Low", "Medium", "High"};
constexpr std::array<std::string_view, 3> kPresets = {"EU", "OSHA", "CUSTOM"};
constexpr std::array<std::string_view, 3> kTimeWeights = {"Fast", "Slow", "Impulse"};

struct ModelRanges {
    bool (*isModel)(std::string_view insName);
    std::array<std::string_view, 3> ranges;
};

bool isTR350(std::string_view insName) {
    return IsModel(insName, "TR350");
}

// The first model that fits counts.
constexpr ModelRanges kHalcyrRanges[] = {
    {IsHalcyrDoseMeter, {"20-90", "40-110", "70-140"}},
    {IsHalcyrMeter116E, {"20-90", "40-110", "60-130"}},
    {isTR350, {"35-100", "50-120", "70-140"}},
    {IsHalcyrMeter, {"30-100", "50-120", "70-140"}},
};

void setHalcyrTexts(clsLog& log, const Entry& entry) {
    const auto* const model = std::find_if(std::begin(kHalcyrRanges), std::end(kHalcyrRanges),
                                           [&](const ModelRanges& m) { return m.isModel(log.InsName); });
    if (model != std::end(kHalcyrRanges)) {
        withItem(model->ranges, entry.range, [&](std::string_view text) { log.Range = text; });
    }
    if (log.IsHalcyrDoseMeter()) return log.LocationType(NoiseAtWorkLocation);
    if (log.IsHalcyrMeter116E()) return log.LocationType(EnvironmentLocation);
    withItem(kLocations, entry.mode, [&](std::string_view code) { log.LocationType(code); });
    if (entry.mode == kAllParameters) log.Threshold.clear();
}

void setBrevikTexts(clsLog& log, const Entry& entry) {
    withItem(kBrevikRanges, entry.range, [&](std::string_view text) { log.Range = text; });
    withItem(kLocations, entry.location, [&](std::string_view code) { log.LocationType(code); });
    withItem(kPresets, entry.preset, [&](std::string_view text) { log.Region = text; });
}

void setWeightings(clsLog& log, const Entry& entry) {
    log.FreqWeightA("A");
    log.FreqWeightB(entry.weightB == 0 ? "C" : entry.weightB == 1 ? "Z" : "A");
    withItem(kTimeWeights, entry.timeWeightA, [&](std::string_view text) { log.TimeWeightA(text); });
    if (!log.IsChannelBOn) return;
    withItem(kTimeWeights, entry.timeWeightB, [&](std::string_view text) { log.TimeWeightB(text); });
}

void setSettings(clsLog& log, const Entry& entry, const BinaryLayout& layout) {
    if (entry.interval < 0) throw DownloadEnded{std::string(kReplyError)};
    const Session& session = log.session();
    log.Name = entry.start;
    log.Interval = entry.interval;
    setStamp(session, entry.start, log.StartDate, &log.StartTime);
    setStamp(session, entry.calibration, log.CalibDate, &log.CalibTime);
    setStamp(session, entry.factory, log.FactoryCalibDate, nullptr);
    log.Criterion = checkedInteger(entry.criterion);
    log.Exchange = checkedInteger(entry.exchange);
    log.Threshold = entry.threshold == -1 ? "Off" : std::to_string(entry.threshold);
    log.IsChannelBOn = entry.isChannelBOn != 0;
    log.LnNumberA(1, 10);
    log.LnNumberA(2, 90);
    log.LnNumberA(3, checkedInteger(entry.thirdLn));
    log.IsLnNumbersOn = true;
    setWeightings(log, entry);
    if (layout.isHalcyr) {
        setHalcyrTexts(log, entry);
    } else {
        setBrevikTexts(log, entry);
    }
}

void decodeRows(clsLog& log, std::string_view bytes, const BinaryLayout& layout) {
    const std::size_t count = bytes.size() / layout.rowSize;
    setRows(log, static_cast<std::int64_t>(count));
    IntervalColumns& rows = log.LogIntervals.Columns();

    struct Field {
        std::size_t offset;
        LevelWriter levels;
    };

    std::vector<Field> fields;
    for (const RowField& field : layout.row) {
        if (isTaken(log, field.when)) fields.push_back({field.offset, LevelWriter(rows, field.quantity, 0)});
    }
    for (std::size_t row = 0; row < count; ++row) {
        const std::string_view record = bytes.substr(row * layout.rowSize, layout.rowSize);
        for (Field& field : fields) {
            const float level = levelOf(wireDouble(record, field.offset));
            field.levels.put(row, {level, level});
        }
        const bool isOverA = wireByte(record, layout.overloadA) != 0;
        const bool isOverB = log.IsChannelBOn && wireByte(record, layout.overloadB) != 0;
        if (isOverA) rows.set(rows.OverloadedA, row, std::uint8_t{1});
        if (isOverB) rows.set(rows.OverloadedB, row, std::uint8_t{1});
        if (layout.summaryOverload == kNoOverload && (isOverA || isOverB)) log.IsLoggingOverLoaded = true;
    }
}

void decodeSummary(clsLog& log, std::string_view bytes, const BinaryLayout& layout) {
    setStamp(log.session(), stampText(bytes, kEndStamp), log.EndDate, &log.EndTime);
    log.MeasurementTimeFromInstrument = wireLong(bytes, kMeasuredTime);
    for (const SummaryField& field : layout.summary) {
        if (isTaken(log, field.when)) field.figure(log).Value(levelOf(wireDouble(bytes, field.offset)));
    }
    if (layout.summaryOverload != kNoOverload) {
        log.IsLoggingOverLoaded = wireNumber(bytes, layout.summaryOverload, 2) != 0;
    }
    if (!layout.isHalcyr) updateTWA(log);
}

std::string askCount() {
    return rawCommand(std::string_view("\x02\x02\x00\x03", 4));
}

std::string askEntry(std::int32_t log) {
    return rawCommand("\x02\x03\x04" + wireBytes(static_cast<std::uint32_t>(log)) + '\x03');
}

std::string askBlock(std::int32_t log, std::int64_t offset) {
    return rawCommand("\x02\x04\x08" + wireBytes(static_cast<std::uint32_t>(log)) +
                      wireBytes(static_cast<std::uint32_t>(offset)) + '\x03');
}

std::vector<Entry> readDirectory(Transport& line, const BinaryLayout& layout) {
    constexpr std::size_t kCountReply = 8;
    line.ShowLabel(line.session().LoadText(Text::DownloadingListOfLogs));
    const std::int32_t count = wireLong(line.AskCounted(askCount(), kCountReply), kReplyHead);
    std::vector<Entry> entries;
    for (std::int32_t log = 0; log < count; ++log) {
        const std::string reply = line.AskCounted(askEntry(log), kReplyHead + layout.entrySize + kReplyTail);
        entries.push_back(decodeEntry(wireField(reply, kReplyHead, layout.entrySize), layout));
    }
    return entries;
}

// Reads the bytes of a log from the first data offset on. Memory grows with what arrives, not with the size that was
// announced.
std::string readBlock(Transport& line, std::int32_t log, std::int64_t first, std::int64_t size) {
    constexpr std::int64_t kChunk = 255;
    std::string block;
    for (std::int64_t offset = first; offset < size;) {
        const auto count = static_cast<std::size_t>(std::min(size - offset, kChunk));
        const std::string reply = line.AskCounted(askBlock(log, offset), kReplyHead + count + kReplyTail);
        block += wireField(reply, kReplyHead, count);
        offset += static_cast<std::int64_t>(count);
    }
    return block;
}

// The number of rows in a block of this size; nothing when no block can have it.
std::optional<std::int64_t> rowsIn(std::int64_t size, const BinaryLayout& layout) {
    const auto summary = static_cast<std::int64_t>(layout.summarySize);
    const auto row = static_cast<std::int64_t>(layout.rowSize);
    if (size == 0) return 0;
    if (size < summary || (size - summary) % row != 0) return std::nullopt;
    return (size - summary) / row;
}

void refuseBrokenBlock(std::int64_t size, const BinaryLayout& layout) {
    if (!rowsIn(size, layout)) throw DownloadEnded{std::string(kReplyError)};
}

// How long a log is by its directory entry, in seconds; nothing when the entry does not tell.
std::optional<std::int64_t> secondsOf(const Entry& entry, const BinaryLayout& layout) {
    const auto rows = rowsIn(entry.dataSize - static_cast<std::int64_t>(layout.firstData), layout);
    if (!rows || entry.interval <= 0 || *rows > INT32_MAX / entry.interval) return std::nullopt;
    return *rows * entry.interval;
}

std::unique_ptr<clsLog> readLog(Transport& line, const clsInsData& data, std::int32_t index, const Entry& entry,
                                const BinaryLayout& layout) {
    constexpr std::int64_t kChunk = 255, kFrame = kReplyHead + kReplyTail;
    const auto first = static_cast<std::int64_t>(layout.firstData);
    const std::int64_t size = entry.dataSize - first;
    refuseBrokenBlock(size, layout);
    line.BeginLog(line.session().LoadText(Text::DownloadingLog) + " " + entry.start,
                  size + (size + kChunk - 1) / kChunk * kFrame);
    auto log = newLog(data, modeBroadband);
    setSettings(*log, entry, layout);
    decodeBlock(*log, readBlock(line, index, first, entry.dataSize), layout);
    finishLog(line, *log);
    return log;
}

void downloadLogs(Transport& line, clsInsData& data, const BinaryLayout& layout) {
    const std::vector<Entry> entries = readDirectory(line, layout);
    AcquireList list{data.InsName(), data.InsSerial, {}, false, false, {}};
    for (const Entry& entry : entries) {
        list.Rows.push_back(entry.start);
        list.Seconds.push_back(secondsOf(entry, layout));
    }
    const AcquireChoice choice = line.ChooseLogs(list);
    for (std::size_t i = 0; i < entries.size(); ++i) {
        if (!choice.Selected[i]) continue;
        data.Locations.push_back(readLog(line, data, static_cast<std::int32_t>(i), entries[i], layout));
        line.EndLog(i);
    }
}

} // namespace

void decodeBlock(clsLog& log, std::string_view block, const BinaryLayout& layout) {
    refuseBrokenBlock(static_cast<std::int64_t>(block.size()), layout);
    if (block.empty()) return;
    const std::size_t rows = block.size() - layout.summarySize;
    decodeRows(log, block.substr(0, rows), layout);
    decodeSummary(log, block.substr(rows), layout);
}

void DownloadBrevikLogs(Transport& line, clsInsData& data) {
    constexpr float kEarlyFirmware = 1.05F;
    downloadLogs(line, data, data.FirmwareVersion > kEarlyFirmware ? kBrevikLayout : kBrevikEarlyLayout);
}

void DownloadHalcyrLogs(Transport& line, clsInsData& data) {
    constexpr float kEarlyFirmware = 1.0F;
    downloadLogs(line, data, data.FirmwareVersion > kEarlyFirmware ? kHalcyrLayout : kHalcyrEarlyLayout);
}

} // namespace kestrane

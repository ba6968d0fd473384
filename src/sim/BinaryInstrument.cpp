#include "sim/BinaryInstrument.h"

#include "model/InstrumentFamilies.h"
#include "model/LogTime.h"
#include "model/Session.h"
#include "platform/Numbers.h"

#include <algorithm>
#include <array>
#include <bit>
#include <charconv>
#include <cstring>

namespace kestrane {

namespace {

constexpr std::size_t kHeader = 3; // bytes, of a command and of a reply
constexpr std::size_t kChunk = 255;
constexpr char kStart = '\x02';
constexpr char kEnd = '\x03';
constexpr int kNowhere = -1; // the offset of a field that a layout does not have

enum Question : char { kIdentity = 1, kCount = 2, kEntry = 3, kData = 4 };

constexpr std::array<std::size_t, 5> kArguments = {0, 0, 0, 4, 8}; // bytes of the arguments, indexed by question

// Writes little-endian numbers into a record of fixed length.
class Record {
public:
    explicit Record(std::size_t size) : bytes_(size, '\0') {}

    void put32(int offset, std::int32_t value) { put(offset, value); }

    void putLevel(int offset, float value) { put(offset, static_cast<double>(value)); }

    void putByte(int offset, int value) { put(offset, static_cast<char>(value)); }

    // Leaves zeros when the date is not set.
    void putStamp(int offset, const clsDate& date, const clsTime& time) {
        if (date.Format().empty()) return;
        const CivilDate day = toCivil(date.getDate());
        for (const int part : {time.Hours, time.Mins, time.Secs, day.Day, day.Month, day.Year % 100})
            putByte(offset++, part);
    }

    std::string& bytes() { return bytes_; }

private:
    template <class Number>
    void put(int offset, Number value) {
        static_assert(std::endian::native == std::endian::little);
        if (offset != kNowhere) std::memcpy(bytes_.data() + offset, &value, sizeof value);
    }

    std::string bytes_;
};

struct EntryLayout {
    std::size_t length;
    int firstData;
    int kind, range, interval, start, calibration, factory, preset, criterion, exchange, threshold, timeWeights,
        weightB, channelB, thirdLn;
};

constexpr EntryLayout kBrevikEntry = {84,   80,   0x14, 0x18, 0x1c, 0x20, 0x26, 0x2c,
                                      0x34, 0x38, 0x3c, 0x40, 0x44, 0x48, 0x4c, 0x50};
constexpr EntryLayout kBrevikEarlyEntry = {80,       76,   0x14, 0x18, 0x1c, 0x20, 0x26, 0x2c,
                                           kNowhere, 0x34, 0x38, 0x3c, 0x40, 0x44, 0x48, 0x4c};
constexpr EntryLayout kHalcyrEntry = {76,       72,   0x10, 0x14, 0x18, 0x1c, 0x22, 0x28,
                                      kNowhere, 0x30, 0x34, 0x38, 0x3c, 0x40, 0x44, 0x48};

// The index of a family's column in the tables below.
enum RecordForm { kLong, kMiddle, kOld };

struct Generation {
    EntryLayout entry;
    RecordForm records;
    std::int32_t firmware; // times 100
    bool hasLongIdentity;
};

constexpr std::array<Generation, 4> kGenerations = {{{kBrevikEntry, kLong, 120, true},
                                                     {kBrevikEarlyEntry, kMiddle, 105, false},
                                                     {kHalcyrEntry, kMiddle, 210, false},
                                                     {kHalcyrEntry, kOld, 100, false}}};

constexpr std::array<std::size_t, 3> kRowSize = {104, 88, 112};
constexpr std::array<std::size_t, 3> kSummarySize = {160, 128, 128};

struct RowField {
    Quantity quantity;
    bool isB;
    std::array<int, 3> offset;
};

constexpr RowField kRowFields[] = {
    {Quantity::LeqA, false, {0x00, 0x00, 0x00}},          {Quantity::LeqB, true, {0x08, 0x08, 0x08}},
    {Quantity::LmaxA, false, {0x10, 0x10, 0x10}},         {Quantity::LmaxB, true, {0x18, 0x18, 0x18}},
    {Quantity::LminA, false, {0x20, kNowhere, kNowhere}}, {Quantity::LminB, true, {0x28, kNowhere, kNowhere}},
    {Quantity::SELA, false, {0x30, 0x20, 0x20}},          {Quantity::LepdA, false, {0x38, 0x28, 0x28}},
    {Quantity::PeakB, true, {0x58, 0x48, 0x60}},
};
constexpr std::array<std::array<int, 3>, 3> kRowLns = {{{0x40, 0x30, 0x30}, {0x48, 0x38, 0x38}, {0x50, 0x40, 0x40}}};
constexpr std::array<int, 3> kRowOverload = {0x60, 0x50, 0x68}; // of channel A; channel B is the next byte

struct SummaryField {
    clsValue LogData::*member;
    bool isB;
    std::array<int, 3> offset;
};

constexpr SummaryField kSummaryFields[] = {
    {&LogData::DoseETCumA, false, {0x10, 0x10, 0x58}},      {&LogData::DoseHourA, false, {0x18, 0x18, 0x68}},
    {&LogData::Pa2hCumA, false, {0x20, 0x20, kNowhere}},    {&LogData::LAvgCumA, false, {0x28, kNowhere, kNowhere}},
    {&LogData::LeqCumB, true, {0x40, 0x30, 0x18}},          {&LogData::LmaxCumB, true, {0x50, 0x40, 0x28}},
    {&LogData::LminCumB, true, {0x60, kNowhere, kNowhere}}, {&LogData::SELCumA, false, {0x68, 0x48, 0x30}},
    {&LogData::LepdETCumA, false, {0x70, 0x50, 0x38}},      {&LogData::PeakCumB, true, {0x90, 0x70, 0x70}},
};

struct SummaryBand {
    BandValues LogData::*member;
    std::array<int, 3> offset;
};

constexpr SummaryBand kSummaryBands[] = {{&LogData::LeqCumA, {0x38, 0x28, 0x10}},
                                         {&LogData::LmaxCumA, {0x48, 0x38, 0x20}},
                                         {&LogData::LminCumA, {0x58, kNowhere, kNowhere}}};
constexpr std::array<std::array<int, 3>, 3> kSummaryLns = {
    {{0x78, 0x58, 0x40}, {0x80, 0x60, 0x48}, {0x88, 0x68, 0x50}}};
constexpr int kSummaryTime = 0x08;
constexpr std::array<int, 3> kSummaryOverload = {0x98, kNowhere, kNowhere};

// The index of a word in a list; the number of words when it is not in the list, a code that stands for none of them.
template <std::size_t N>
int placeOf(const std::array<std::string_view, N>& words, std::string_view word) {
    return static_cast<int>(std::find(words.begin(), words.end(), word) - words.begin());
}

constexpr std::array<std::string_view, 4> kKinds = {NoiseAtWorkLocation, EnvironmentLocation, "All", ""};
constexpr std::array<std::string_view, 3> kBrevikRanges = {"Low", "Medium", "High"};
constexpr std::array<std::string_view, 3> kPresets = {"EU", "OSHA", "CUSTOM"};
constexpr std::array<std::string_view, 3> kTimeWeights = {"Fast", "Slow", "Impulse"};
constexpr std::array<std::string_view, 2> kWeightsB = {"C", "Z"};

// The first row whose model fits counts; the last row fits every model.
constexpr std::string_view kHalcyrRanges[][4] = {{"TR360L", "20-90", "40-110", "70-140"},
                                                 {"TR312E", "20-90", "40-110", "60-130"},
                                                 {"TR350", "35-100", "50-120", "70-140"},
                                                 {"", "30-100", "50-120", "70-140"}};

std::array<std::string_view, 3> halcyrRanges(const std::string& model) {
    const auto& [of, low, middle, high] = *std::find_if(std::begin(kHalcyrRanges), std::end(kHalcyrRanges),
                                                        [&](const auto& row) { return IsModel(model, row[0]); });
    return {low, middle, high};
}

// The Ln numbers (1..10) of the three percentiles that these instruments record: 10, 90 and one more. The logs of a
// data file may have any percentiles; 0 means that the log does not have that one.
std::array<int, 3> percentilesOf(const clsLog& log) {
    std::array<int, 3> lns{};
    for (int ln = NumberOfLns; ln >= 1; --ln) {
        const int number = log.LnNumberA(ln);
        if (number != 0) lns[number == 10 ? 0 : number == 90 ? 1 : 2] = ln;
    }
    return lns;
}

std::int32_t thirdPercentile(const clsLog& log) {
    const int ln = percentilesOf(log)[2];
    return ln == 0 ? 0 : log.LnNumberA(ln);
}

// The threshold in dB; -1 when it is off.
std::int32_t thresholdOf(const clsLog& log) {
    return isNumeric(log.Threshold, {}) ? toLong(log.Threshold, {}) : -1;
}

std::int32_t argument(std::string_view command, std::size_t which) {
    std::int32_t value = 0;
    std::memcpy(&value, command.data() + kHeader + which * sizeof value, sizeof value);
    return value;
}

std::int32_t typeOf(const std::string& model) {
    for (std::int32_t type = 0; type < 6; ++type) {
        if (InstrumentNameByIndex(type) == model) return type;
    }
    if (IsModel(model, "TR312E")) return 117;
    std::int32_t number = 0;
    std::from_chars(model.data() + std::min<std::size_t>(2, model.size()), model.data() + model.size(), number);
    return number;
}

std::int32_t serialNumber(const std::string& text) {
    std::int32_t number = 0;
    const std::size_t digits = std::min(text.find_first_of("0123456789"), text.size());
    std::from_chars(text.data() + digits, text.data() + text.size(), number);
    return number;
}

std::string framed(std::string_view command, std::string_view content) {
    std::string reply{kStart, command[1], static_cast<char>(content.size())};
    reply.append(content).push_back(kEnd);
    return reply;
}

} // namespace

std::size_t BinaryInstrument::commandLength(std::string_view bytes) const {
    if (bytes[0] != kStart) return kNoCommand;
    if (bytes.size() < kHeader) return kIncomplete;
    const auto question = static_cast<std::size_t>(static_cast<unsigned char>(bytes[1]));
    if (question == 0 || question >= kArguments.size()) return kNoCommand;
    if (static_cast<std::size_t>(bytes[2]) != kArguments[question]) return kNoCommand;
    const std::size_t length = kHeader + kArguments[question] + 1;
    if (bytes.size() < length) return kIncomplete;
    return bytes[length - 1] == kEnd ? length : kNoCommand;
}

std::string BinaryInstrument::reply(std::string_view command) {
    const auto logs = static_cast<std::int32_t>(holdings_.Locations.size());
    if (command[1] == kIdentity) return framed(command, identity());
    if (command[1] == kCount) {
        Record count(sizeof logs);
        count.put32(0, logs);
        return framed(command, count.bytes());
    }
    const std::int32_t index = argument(command, 0);
    if (index < 0 || index >= logs) return "ERROR";
    const auto at = static_cast<std::size_t>(index);
    const clsLog& log = *holdings_.Locations[at];
    if (command[1] == kEntry) return framed(command, entry(log));
    if (blockOf_ != at) {
        block_ = block(log);
        blockOf_ = at;
    }
    const std::int64_t offset =
        std::int64_t{argument(command, 1)} - kGenerations[static_cast<std::size_t>(family_)].entry.firstData;
    if (offset < 0 || offset > static_cast<std::int64_t>(block_.size())) return "ERROR";
    return framed(command, std::string_view(block_).substr(static_cast<std::size_t>(offset), kChunk));
}

std::string BinaryInstrument::identity() const {
    const Generation& generation = kGenerations[static_cast<std::size_t>(family_)];
    Record record(generation.hasLongIdentity ? 16 : 12);
    record.put32(0, generation.firmware);
    record.put32(generation.hasLongIdentity ? 8 : 4, typeOf(holdings_.Model));
    record.put32(generation.hasLongIdentity ? 12 : 8, serialNumber(holdings_.Serial));
    return record.bytes();
}

std::string BinaryInstrument::entry(const clsLog& log) const {
    const bool isBrevik = family_ == BinaryFamily::Brevik || family_ == BinaryFamily::BrevikEarly;
    const Generation& generation = kGenerations[static_cast<std::size_t>(family_)];
    const EntryLayout& at = generation.entry;
    const std::size_t rows = static_cast<std::size_t>(log.LogIntervals.Count()) * kRowSize[generation.records];
    Record record(at.length);
    record.put32(0, static_cast<std::int32_t>(rows + kSummarySize[generation.records]) + at.firstData);
    record.put32(at.kind, placeOf(kKinds, log.TestLocationType()));
    record.put32(at.range, placeOf(isBrevik ? kBrevikRanges : halcyrRanges(holdings_.Model), log.Range));
    record.put32(at.interval, log.Interval);
    record.putStamp(at.start, log.StartDate, log.StartTime);
    record.putStamp(at.calibration, log.CalibDate, log.CalibTime);
    record.putStamp(at.factory, log.FactoryCalibDate, clsTime());
    record.put32(at.preset, placeOf(kPresets, log.Region));
    record.put32(at.criterion, log.Criterion);
    record.put32(at.exchange, log.Exchange);
    record.put32(at.threshold, thresholdOf(log));
    record.putByte(at.timeWeights, placeOf(kTimeWeights, log.TimeWeightA()));
    record.putByte(at.timeWeights + 1, placeOf(kTimeWeights, log.TimeWeightB()));
    record.put32(at.weightB, placeOf(kWeightsB, log.FreqWeightB()));
    record.put32(at.channelB, log.IsChannelBOn ? 1 : 0);
    record.put32(at.thirdLn, thirdPercentile(log));
    return record.bytes();
}

std::string BinaryInstrument::block(const clsLog& log) const {
    const RecordForm form = kGenerations[static_cast<std::size_t>(family_)].records;
    const std::array<int, 3> percentiles = percentilesOf(log);
    const IntervalColumns& rows = log.LogIntervals.Columns();
    std::string bytes;
    bytes.reserve(rows.count() * kRowSize[form] + kSummarySize[form]);
    for (std::size_t row = 0; row < rows.count(); ++row) {
        Record record(kRowSize[form]);
        for (const RowField& field : kRowFields) {
            if (field.isB && !log.IsChannelBOn) continue;
            record.putLevel(field.offset[form], rows.level(field.quantity, 0, row).CalcValue);
        }
        for (std::size_t i = 0; i < percentiles.size(); ++i) {
            if (percentiles[i] == 0) continue;
            record.putLevel(kRowLns[i][form], rows.level(lnQuantity(percentiles[i]), 0, row).CalcValue);
        }
        record.putByte(kRowOverload[form], rows.OverloadedA.at(row));
        record.putByte(kRowOverload[form] + 1, rows.OverloadedB.at(row));
        bytes += record.bytes();
    }

    Record summary(kSummarySize[form]);
    summary.putStamp(0, log.EndDate, log.EndTime);
    summary.put32(kSummaryTime,
                  roundToLong(static_cast<double>(getTime(log, 's', Run::Measured, ExcludedRows::Count))));
    for (const SummaryField& field : kSummaryFields) {
        if (!field.isB || log.IsChannelBOn) summary.putLevel(field.offset[form], (log.*field.member).CalcValue());
    }
    for (const SummaryBand& field : kSummaryBands)
        summary.putLevel(field.offset[form], (log.*field.member)(0).CalcValue());
    for (std::size_t i = 0; i < percentiles.size(); ++i) {
        if (percentiles[i] == 0) continue;
        summary.putLevel(kSummaryLns[i][form], log.LnCumA(percentiles[i], 0).CalcValue());
    }
    summary.putByte(kSummaryOverload[form], log.IsLoggingOverLoaded ? 1 : 0);
    return bytes + summary.bytes();
}

} // namespace kestrane

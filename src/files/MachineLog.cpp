#include "files/MachineLog.h"

#include "files/FaultPlace.h"
#include "files/RowRecord.h"
#include "model/LogTime.h"
#include "model/Session.h"
#include "platform/Numbers.h"
#include "platform/RuntimeError.h"
#include "platform/Utf8.h"

#include <algorithm>
#include <array>
#include <cctype>
#include <new>
#include <optional>

namespace kestrane {

namespace {

constexpr std::size_t kHeaderFields = 26;
constexpr std::size_t kModeField = 7; // counted from 0
constexpr std::size_t kIntervalField = 14;
constexpr std::size_t kUnitField = 15;
constexpr std::string_view kEndOfRows = "stoplog";
const Locale kPoint; // figures have a decimal point whatever the user's locale

struct ModeWord {
    std::string_view word;
    LogMode mode;
};

constexpr ModeWord kModeWords[] = {{"SLM", modeBroadband}, {"FULL", modeFullOctave}, {"THIRD", modeThirdOctave}};

std::optional<LogMode> modeOf(std::string_view word) {
    for (const ModeWord& m : kModeWords) {
        if (m.word == word) return m.mode;
    }
    return std::nullopt;
}

void takeBands(CommaFields& fields, BandValues& values) {
    for (int band = 0; band <= values.last(); ++band)
        values(band).Value(figureOf(fields.take()));
}

// Dates are in the user's notation, figures are not.
void takeDate(const clsLog& log, clsDate& date, std::string_view field) {
    date.setDate(field, {kPoint.DecimalSeparator, log.session().locale.DateSeparator});
}

using TakeHeaderField = void (*)(clsInsData& data, clsLog& log, std::string_view field);

template <int ln>
void takeLnNumber(clsInsData&, clsLog& log, std::string_view field) {
    log.LnNumberA(ln, toInteger(field, kPoint));
}

void takeNothing(clsInsData&, clsLog&, std::string_view) {}

// The fields of the header in order. Two of them make up the interval: its length and, behind it, its unit.
constexpr std::array<TakeHeaderField, kHeaderFields> kHeader = {
    [](clsInsData& data, clsLog&, std::string_view field) { data.InsName(toUtf8(field)); },
    [](clsInsData& data, clsLog&, std::string_view field) { data.InsSerial = toUtf8(field); },
    [](clsInsData&, clsLog& log, std::string_view field) { takeDate(log, log.FactoryCalibDate, field); },
    [](clsInsData&, clsLog& log, std::string_view field) { takeDate(log, log.CalibDate, field); },
    [](clsInsData&, clsLog& log, std::string_view field) { log.CalibTime.setTime(field, kPoint); },
    [](clsInsData&, clsLog& log, std::string_view field) { log.Criterion = toInteger(field, kPoint); },
    [](clsInsData&, clsLog& log, std::string_view field) { log.Exchange = toInteger(field, kPoint); },
    [](clsInsData&, clsLog& log, std::string_view field) { log.Mode(*modeOf(field)); },
    [](clsInsData&, clsLog& log, std::string_view field) { log.TimeWeightA(field); },
    [](clsInsData&, clsLog& log, std::string_view field) { log.FreqWeightA(field); },
    [](clsInsData&, clsLog& log, std::string_view field) { log.IsChannelBOn = field == "ON"; },
    [](clsInsData&, clsLog& log, std::string_view field) { log.TimeWeightB(field); },
    [](clsInsData&, clsLog& log, std::string_view field) { log.FreqWeightB(field); },
    [](clsInsData&, clsLog& log, std::string_view field) {
        const std::int32_t tenths = roundToLong(toDouble(field, kPoint) * 10);
        log.Threshold = singleText(static_cast<float>(tenths / 10.0));
    },
    takeNothing,
    takeNothing,
    [](clsInsData&, clsLog& log, std::string_view field) { log.IsLnNumbersOn = field == "ON"; },
    takeLnNumber<1>,
    takeLnNumber<2>,
    takeLnNumber<3>,
    takeLnNumber<4>,
    takeLnNumber<5>,
    takeLnNumber<6>,
    takeLnNumber<7>,
    [](clsInsData&, clsLog& log, std::string_view field) { takeDate(log, log.StartDate, field); },
    [](clsInsData&, clsLog& log, std::string_view field) { log.StartTime.setTime(field, kPoint); },
};

std::int32_t intervalOf(std::string_view length, std::string_view unit) {
    constexpr std::array<std::string_view, 3> kUnits = {"0", "1", "2"};
    constexpr std::array<int, 3> kSeconds = {1, 60, 3600};
    const auto found = std::find(kUnits.begin(), kUnits.end(), unit);
    if (found == kUnits.end()) raiseTypeMismatch();
    const double seconds = toDouble(length, kPoint) * kSeconds[static_cast<std::size_t>(found - kUnits.begin())];
    if (seconds < 0) raiseOverflow();
    return roundToLong(seconds);
}

// Takes the records up to the word that ends them.
void takeRows(CommaFields& fields, clsLog& log) {
    RecordRows records(log);
    const std::size_t most = fields.left() / records.fields();
    IntervalColumns& rows = log.LogIntervals.Columns();
    rows.resize(most, most);
    std::size_t row = 0;
    for (std::string_view first = fields.take(); first != kEndOfRows; first = fields.take(), ++row) {
        if (row == most) raisePastEnd(); // too few fields are left for another row
        records.take(first, fields, row);
    }
    rows.setCount(row);
}

void takeClosing(CommaFields& fields, clsLog& log) {
    log.IsLoggingOverLoaded = fields.take() == "1";
    takeDate(log, log.EndDate, fields.take());
    log.EndTime.setTime(fields.take(), kPoint);
    for (BandValues* values : {&log.LeqCumA, &log.LminCumA, &log.LmaxCumA})
        takeBands(fields, *values);
    log.PeakCumA.Value(figureOf(fields.take()));
    if (log.IsOctaveLog()) return;
    for (clsValue* value : {&log.DoseETCumA, &log.DoseMTCumA, &log.LepdETCumA, &log.LepdMTCumA, &log.SELCumA,
                            &log.Ltm3CumA, &log.Ltm5CumA}) {
        value->Value(figureOf(fields.take()));
    }
    for (int ln = 1; ln <= kRecordLns; ++ln)
        log.LnCumA(ln, 0).Value(figureOf(fields.take()));
}

std::string nameOf(const clsFile& file) {
    constexpr std::string_view kExtension = ".LOG";
    std::string name = file.ShortenedFileName();
    if (name.size() < kExtension.size()) return name;
    const std::size_t stem = name.size() - kExtension.size();
    const bool isLog =
        std::equal(kExtension.begin(), kExtension.end(), name.begin() + static_cast<std::ptrdiff_t>(stem),
                   [](char a, unsigned char b) { return a == std::toupper(b); });
    return isLog ? name.substr(0, stem) : name;
}

// Returns nothing when the text does not begin as a machine log does. Raises an error when it begins so but cannot be
// read to its end.
std::unique_ptr<clsInsData> readLog(clsFile& file, std::string_view text) {
    CommaFields fields(text);
    std::array<std::string_view, kHeaderFields> header;
    for (std::size_t i = 0; i <= kModeField; ++i) {
        const auto field = fields.next();
        if (!field) return nullptr;
        header[i] = *field;
    }
    if (!modeOf(header[kModeField])) return nullptr;
    for (std::size_t i = kModeField + 1; i < kHeaderFields; ++i)
        header[i] = fields.take();

    auto data = std::make_unique<clsInsData>(file.session());
    auto log = std::make_unique<clsLog>(file.session());
    const auto taking = [&](std::string_view part, auto take) {
        naming(take, [&] { return placeIn(file.session(), text, part); });
    };
    for (std::size_t i = 0; i < kHeaderFields; ++i)
        taking(header[i], [&] { kHeader[i](*data, *log, header[i]); });
    const std::string_view length = header[kIntervalField], unit = header[kUnitField];
    const auto behind = static_cast<std::size_t>(unit.data() + unit.size() - length.data());
    taking({length.data(), behind}, [&] { log->Interval = intervalOf(length, unit); });
    log->Name = nameOf(file);
    log->InsName = data->InsName();
    naming(
        [&] {
            takeRows(fields, *log);
            takeClosing(fields, *log);
        },
        [&] { return placeIn(file.session(), text, fields.last()); });
    SetSampleDates(*log);
    data->logsOf(log->Mode()).push_back(std::move(log));
    return data;
}

} // namespace

bool ReadMachineLog(clsFile& file, std::string_view text, std::string& message) {
    const auto faultText = [&file](std::int64_t number, const char* description) {
        return std::to_string(number) + ": " + description + "\r\n\r\n" +
               ReplaceText(file.session().LoadText(Text::UnableToOpen), "^", file.FileName);
    };
    try {
        auto data = readLog(file, text);
        if (data != nullptr) {
            file.InstrumentDatas.push_back(std::move(data));
            return true;
        }
        message = file.session().LoadText(Text::FileNotCompatible);
    } catch (const RuntimeError& error) {
        message = faultText(error.Number, error.what());
    } catch (const std::bad_alloc&) {
        message = faultText(kErrorOutOfMemory, "Out of memory");
    }
    return false;
}

} // namespace kestrane

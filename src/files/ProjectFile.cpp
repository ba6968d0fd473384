#include "files/ProjectFile.h"

#include "files/FaultPlace.h"
#include "files/MemoryBudget.h"
#include "files/RowRecord.h"
#include "files/XmlElements.h"
#include "model/LogTime.h"
#include "model/Session.h"
#include "model/SettingsText.h"
#include "platform/Numbers.h"
#include "platform/RuntimeError.h"
#include "platform/Trimmed.h"
#include "platform/Utf8.h"

#include <algorithm>
#include <array>
#include <bitset>
#include <iterator>
#include <optional>
#include <string>

namespace kestrane {

namespace {

const Locale kPoint; // figures have a decimal point whatever the user's locale

bool isNameCharacter(char c) {
    return (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z') || (c >= '0' && c <= '9') || c == '_' || c == '-';
}

// Walks the tags of a block. Unless the content of a tag is taken with value() or block(), the tags within it come
// next.
class Tags {
public:
    explicit Tags(std::string_view block) : text_(block) {}

    bool next() {
        for (at_ = text_.find('<', at_); at_ != std::string_view::npos; at_ = text_.find('<', at_)) {
            const std::size_t begin = ++at_;
            while (at_ < text_.size() && isNameCharacter(text_[at_]))
                ++at_;
            if (at_ == begin || at_ == text_.size() || text_[at_] != '>') continue;
            name_ = text_.substr(begin, at_ - begin);
            ++at_;
            return true;
        }
        return false;
    }

    std::string_view name() const { return name_; }

    // Takes the text up to "</>" or "</NAME>", whichever comes first.
    std::string_view value() {
        for (std::size_t at = text_.find("</", at_); at != std::string_view::npos; at = text_.find("</", at + 2)) {
            std::string_view closing = text_.substr(at + 2);
            if (closing.starts_with(name_)) closing.remove_prefix(name_.size());
            if (closing.starts_with('>')) return takeUpTo(at, text_.size() - closing.size() + 1);
        }
        raiseTypeMismatch();
    }

    // Takes the text up to "</NAME>", which contains tags of its own.
    std::string_view block() {
        const std::string closing = "</" + std::string(name_) + ">";
        const std::size_t at = text_.find(closing, at_);
        if (at == std::string_view::npos) raiseTypeMismatch();
        return takeUpTo(at, at + closing.size());
    }

    std::string_view valueOrBlock() {
        const std::size_t bracket = text_.find('<', at_);
        const bool isValue = bracket != std::string_view::npos && text_.substr(bracket).starts_with("</");
        return isValue ? value() : block();
    }

private:
    std::string_view takeUpTo(std::size_t end, std::size_t behind) {
        const std::string_view content = text_.substr(at_, end - at_);
        at_ = behind;
        return content;
    }

    std::string_view text_;
    std::size_t at_ = 0;
    std::string_view name_;
};

// The content of the first tag with a name in a block, at any depth; empty when there is none.
std::string_view valueOf(std::string_view block, std::string_view name) {
    for (Tags tags(block); tags.next();) {
        if (tags.name() == name) return tags.value();
    }
    return {};
}

// The tag and its content, for a message.
std::string placeOf(std::string_view tag, std::string_view content) {
    return ", <" + std::string(tag) + "> " + quoted(trimmed(content));
}

// Converts contents and stores them in members. An empty content counts as a missing tag.
class Values {
public:
    Values(const Locale& dates, std::size_t fileSize) : dates_(dates), fileSize_(fileSize) {}

    void charge(std::size_t memory) { budget_.charge(memory, fileSize_); }

    void set(std::string& member, std::string_view text) {
        budget_.chargeText(text, fileSize_);
        member = toUtf8(text);
    }

    void set(std::int16_t& member, std::string_view text) { member = toInteger(text, kPoint); }

    void set(std::int32_t& member, std::string_view text) { member = toLong(text, kPoint); }

    void set(float& member, std::string_view text) { member = figureOf(text); }

    void set(clsValue& member, std::string_view text) { member.Value(figureOf(text)); }

    void set(bool& member, std::string_view text) { fromSettingsText(trimmed(text), member); }

    void set(clsDate& member, std::string_view text) { member.setDate(text, dates_); }

    void set(clsTime& member, std::string_view text) {
        try {
            member.setTime(text, kPoint);
        } catch (const RuntimeError& error) {
            if (error.Number != kErrorTypeMismatch) throw; // a time without seconds keeps its hours and minutes
        }
    }

private:
    const Locale& dates_;
    std::size_t fileSize_;
    MemoryBudget budget_;
};

// A tag and the function that takes its content. The name of a numbered tag may be followed by "_" and a number of up
// to two digits; without one the number is 0.
template <class Target>
struct Tag {
    std::string_view name;
    void (*take)(Target& target, int number, std::string_view content, Values& values);
    bool isNumbered = false;
};

// The name of a tag without its number, and the number.
struct TagName {
    explicit TagName(std::string_view name) : word(name) {
        const std::size_t line = name.rfind('_');
        const std::string_view digits = line == std::string_view::npos ? std::string_view() : name.substr(line + 1);
        if (digits.empty() || digits.size() > 2) return;
        int read = 0;
        for (const char digit : digits) {
            if (digit < '0' || digit > '9') return;
            read = read * 10 + digit - '0';
        }
        word = name.substr(0, line);
        number = read;
        isNumbered = true;
    }

    std::string_view word;
    int number = 0;
    bool isNumbered = false;
};

// Passes the contents of a block's tags to the functions that take them. Only the first tag of each name counts, and
// only when its content is not blank.
template <class Target, std::size_t N>
class Taker {
public:
    Taker(const Tag<Target> (&table)[N], Target& target, Values& values) :
        table_(table), target_(target), values_(values) {}

    void take(Tags& tags) {
        const std::string_view word = tags.name();
        const TagName name(word);
        for (std::size_t i = 0; i < N; ++i) {
            const Tag<Target>& tag = table_[i];
            if (tag.name != name.word || (name.isNumbered && !tag.isNumbered)) continue;
            const std::string_view content = tags.value();
            std::bitset<kNumbers>& seen = seen_[i];
            const auto number = static_cast<std::size_t>(name.number);
            if (!seen[number] && !trimmed(content).empty()) {
                naming([&] { tag.take(target_, name.number, content, values_); },
                       [&] { return placeOf(word, content); });
            }
            seen.set(number);
            return;
        }
    }

    void takeAll(std::string_view block) {
        for (Tags tags(block); tags.next();)
            take(tags);
    }

private:
    static constexpr std::size_t kNumbers = 100;

    const Tag<Target> (&table_)[N];
    Target& target_;
    Values& values_;
    std::array<std::bitset<kNumbers>, N> seen_;
};

template <class Target, auto member>
void take(Target& target, int, std::string_view content, Values& values) {
    values.set(target.*member, content);
}

template <auto member>
void take(clsLog& log, int, std::string_view content, Values& values) {
    values.set(log.*member, content);
}

template <auto member>
void takeBand(clsLog& log, int band, std::string_view content, Values& values) {
    BandValues& levels = log.*member;
    if (band <= levels.last()) values.set(levels(band), content);
}

bool isLn(int number) {
    return number >= 1 && number <= NumberOfLns;
}

using LogTag = Tag<clsLog>;

constexpr LogTag kLogTags[] = {
    {"NAME", take<&LogData::Name>},
    {"LocationType", [](clsLog& log, int, std::string_view content, Values&) { log.LocationType(trimmed(content)); }},
    {"SHIFTLENGTH", [](clsLog& log, int, std::string_view content,
                       Values& values) { values.set(log.objLogOptions.ExposureTime, content); }},
    {"CRITERION", take<&LogData::Criterion>},
    {"EXCHANGE", take<&LogData::Exchange>},
    {"LOGNOTE", take<&LogData::Note>},
    {"FACTORYDATE", take<&LogData::FactoryCalibDate>},
    {"CALIBDATE", take<&LogData::CalibDate>},
    {"CALIBTIME", take<&LogData::CalibTime>},
    {"STARTDATE", take<&LogData::StartDate>},
    {"STARTTIME", take<&LogData::StartTime>},
    {"ENDDATE", take<&LogData::EndDate>},
    {"ENDTIME", take<&LogData::EndTime>},
    {"ISCHANNELBON", take<&LogData::IsChannelBOn>},
    {"ISLNNUMBERSON", take<&LogData::IsLnNumbersOn>},
    {"ISLOGOVERLOADED", take<&LogData::IsLoggingOverLoaded>},
    {"INTERVAL", take<&LogData::Interval>},
    {"TIMEWEIGHTA", [](clsLog& log, int, std::string_view content, Values&) { log.TimeWeightA(trimmed(content)); }},
    {"FREQWEIGHTA", [](clsLog& log, int, std::string_view content, Values&) { log.FreqWeightA(trimmed(content)); }},
    {"LEQCUMA", takeBand<&LogData::LeqCumA>, true},
    {"LMINCUMA", takeBand<&LogData::LminCumA>, true},
    {"LMAXCUMA", takeBand<&LogData::LmaxCumA>, true},
    {"PEAKCUMA", take<&LogData::PeakCumA>},
    {"LMINCUMDATEA", take<&LogData::LminCumDateA>},
    {"LMINCUMTIMEA", take<&LogData::LminCumTimeA>},
    {"LMAXCUMDATEA", take<&LogData::LmaxCumDateA>},
    {"LMAXCUMTIMEA", take<&LogData::LmaxCumTimeA>},
    {"PEAKCUMDATEA", take<&LogData::PeakCumDateA>},
    {"PEAKCUMTIMEA", take<&LogData::PeakCumTimeA>},
    {"DOSECUMA", take<&LogData::DoseMTCumA>},
    {"LEXCUMA", take<&LogData::LepdETCumA>},
    {"LECUMA", take<&LogData::SELCumA>},
    {"LTM3CUMA", take<&LogData::Ltm3CumA>},
    {"LTM5CUMA", take<&LogData::Ltm5CumA>},
    {"DOSEHOURA", take<&LogData::DoseHourA>},
    {"PA2HA", take<&LogData::Pa2hCumA>},
    {"LNNUMBERA",
     [](clsLog& log, int ln, std::string_view content, Values& values) {
         std::int16_t percent = 0;
         values.set(percent, content);
         if (isLn(ln)) log.LnNumberA(ln, percent);
     },
     true},
    {"LNCUMA",
     [](clsLog& log, int ln, std::string_view content, Values& values) {
         if (isLn(ln)) values.set(log.LnCumA(ln, 0), content);
     },
     true},
    {"TIMEWEIGHTB", [](clsLog& log, int, std::string_view content, Values&) { log.TimeWeightB(trimmed(content)); }},
    {"FREQWEIGHTB", [](clsLog& log, int, std::string_view content, Values&) { log.FreqWeightB(trimmed(content)); }},
    {"LEQCUMB", take<&LogData::LeqCumB>},
    {"LMINCUMB", take<&LogData::LminCumB>},
    {"LMAXCUMB", take<&LogData::LmaxCumB>},
    {"PEAKCUMB", take<&LogData::PeakCumB>},
    {"DOSECUMB", take<&LogData::DoseMTCumB>},
    {"LEXCUMB", take<&LogData::LepdETCumB>},
    {"PLEXCUMB", take<&LogData::LepdMTCumB>},
    {"LECUMB", take<&LogData::SELCumB>},
    {"DOSEHOURB", take<&LogData::DoseHourB>},
    {"PA2HB", take<&LogData::Pa2hCumB>},
};

// The row that is being read.
struct Row {
    IntervalColumns& columns;
    std::size_t row; // counted from 0
    int last;        // the last band
    bool isDated = false;

    void put(Quantity quantity, int band, std::string_view content) {
        const float value = figureOf(content);
        columns.setLevel(quantity, band, row, {value, value});
    }
};

template <Quantity quantity>
void takeRowBand(Row& row, int band, std::string_view content, Values&) {
    if (band <= row.last) row.put(quantity, band, content);
}

template <Quantity quantity>
void takeRowFigure(Row& row, int, std::string_view content, Values&) {
    row.put(quantity, 0, content);
}

template <Column<std::uint8_t> IntervalColumns::*column>
void takeRowFlag(Row& row, int, std::string_view content, Values& values) {
    bool isSet = false;
    values.set(isSet, content);
    row.columns.set(row.columns.*column, row.row, static_cast<std::uint8_t>(isSet));
}

constexpr Tag<Row> kRowTags[] = {
    {"STARTDATE",
     [](Row& row, int, std::string_view content, Values& values) {
         clsDate date;
         values.set(date, content);
         row.isDated = true;
         row.columns.set(row.columns.StartDate, row.row, date == clsDate() ? CalendarTime{0} : date.getDate());
     }},
    {"STARTTIME",
     [](Row& row, int, std::string_view content, Values& values) {
         clsTime time;
         values.set(time, content);
         row.columns.set(row.columns.StartTime, row.row, time.getTimeAsSeconds());
     }},
    {"LEQA", takeRowBand<Quantity::LeqA>, true},
    {"LMINA", takeRowBand<Quantity::LminA>, true},
    {"LMAXA", takeRowBand<Quantity::LmaxA>, true},
    {"LNA",
     [](Row& row, int ln, std::string_view content, Values&) {
         if (isLn(ln)) row.put(lnQuantity(ln), 0, content);
     },
     true},
    {"PEAKA", takeRowFigure<Quantity::PeakA>},
    {"DOSEA", takeRowFigure<Quantity::DoseA>},
    {"LEXA", takeRowFigure<Quantity::LepdA>},
    {"LEA", takeRowFigure<Quantity::SELA>},
    {"LTM3A", takeRowFigure<Quantity::Ltm3A>},
    {"LTM5A", takeRowFigure<Quantity::Ltm5A>},
    {"PA2HA", takeRowFigure<Quantity::Pa2hA>},
    {"OVERA", takeRowFlag<&IntervalColumns::OverloadedA>},
    {"LEQB", takeRowFigure<Quantity::LeqB>},
    {"LMINB", takeRowFigure<Quantity::LminB>},
    {"LMAXB", takeRowFigure<Quantity::LmaxB>},
    {"PEAKB", takeRowFigure<Quantity::PeakB>},
    {"OVERB", takeRowFlag<&IntervalColumns::OverloadedB>},
};

constexpr Tag<clsDoseLogSample> kExposureTags[] = {
    {"DOSECRITERION", take<clsDoseLogSample, &clsDoseLogSample::Criterion>},
    {"DOSEEXCHANGE", take<clsDoseLogSample, &clsDoseLogSample::Exchange>},
    {"DOSESAMPLEDATE", take<clsDoseLogSample, &clsDoseLogSample::SampleDate>},
    {"DOSESAMPLETIME", take<clsDoseLogSample, &clsDoseLogSample::SampleTime>},
    {"DOSENOTE", take<clsDoseLogSample, &clsDoseLogSample::Note>},
    {"DOSELEQ", take<clsDoseLogSample, &clsDoseLogSample::Leq>},
    {"DOSEDURN", take<clsDoseLogSample, &clsDoseLogSample::Duration>},
    {"DOSEINC", take<clsDoseLogSample, &clsDoseLogSample::IsIncluded>},
};

constexpr Tag<clsPeak> kPeakTags[] = {
    {"PEAKTIME", take<clsPeak, &clsPeak::PeakTime>},
    {"DURATION", take<clsPeak, &clsPeak::SampleDuration>},
};

constexpr Tag<clsInsData> kCollectionTags[] = {
    {"NAME", take<clsInsData, &clsInsData::NameX>},
    {"INSNAME",
     [](clsInsData& data, int, std::string_view content, Values& values) {
         std::string name;
         values.set(name, content);
         data.InsName(name);
     }},
    {"INSSERIAL", take<clsInsData, &clsInsData::InsSerial>},
    {"INSTYPE", take<clsInsData, &clsInsData::InsType>},
};

// The words of the plotted flags, in the order of kDisplayOrder: "PLOT-LEQ-1-2" is the flag of Leq for channel A and
// intervals.
constexpr std::string_view kPlotWords[] = {"LEQ",  "LMIN", "LMAX", "PEAK", "LEX",  "DOSE", "PDOSE", "DOSEHR", "LTM3",
                                           "LTM5", "LE",   "NNO",  "PA2H", "LN1",  "LN2",  "LN3",   "LN4",    "LN5",
                                           "LN6",  "LN7",  "LN8",  "LN9",  "LN10", "LAVG", "TWA"};
static_assert(std::size(kPlotWords) == std::size(kDisplayOrder));

// The parameter, channel and kind that such a name stands for.
struct PlotName {
    Parameter parameter;
    LogChannel channel;
    FigureKind kind;
};

std::optional<PlotName> plotNameOf(std::string_view name) {
    constexpr std::string_view kStart = "PLOT-";
    constexpr std::size_t kEnd = 4; // "-1-2"
    if (!name.starts_with(kStart) || name.size() < kStart.size() + kEnd) return std::nullopt;
    const std::string_view end = name.substr(name.size() - kEnd);
    const auto isIndex = [](char c) { return c == '1' || c == '2'; };
    if (end[0] != '-' || !isIndex(end[1]) || end[2] != '-' || !isIndex(end[3])) return std::nullopt;
    const std::string_view word = name.substr(kStart.size(), name.size() - kStart.size() - kEnd);
    const auto* const found = std::find(std::begin(kPlotWords), std::end(kPlotWords), word);
    if (found == std::end(kPlotWords)) return std::nullopt;
    return PlotName{kDisplayOrder[found - std::begin(kPlotWords)], static_cast<LogChannel>(end[1] - '0'),
                    static_cast<FigureKind>(end[3] - '0')};
}

void takeDisplay(clsLog& log, std::string_view block, Values& values) {
    PlotTable told, plotted;
    for (Tags tags(block); tags.next();) {
        const auto name = plotNameOf(tags.name());
        if (!name) continue;
        const std::string_view content = trimmed(tags.value());
        if (content.empty() || told(name->channel, name->kind, name->parameter)) continue;
        bool isPlotted = false;
        naming([&] { values.set(isPlotted, content); }, [&] { return placeOf(tags.name(), content); });
        told.set(name->channel, name->kind, name->parameter, true);
        plotted.set(name->channel, name->kind, name->parameter, isPlotted);
    }
    for (const LogChannel channel : kChannels) {
        for (const FigureKind kind : kFigureKinds) {
            for (const Parameter parameter : kDisplayOrder)
                setPlotted(log, channel, kind, parameter, plotted(channel, kind, parameter));
        }
    }
}

class LogReader {
public:
    LogReader(clsLog& log, std::string_view block, Values& values) : log_(log), block_(block), values_(values) {}

    void read() {
        if (const std::string_view mode = trimmed(valueOf(block_, "MODE")); !mode.empty()) {
            naming([&] { log_.Mode(toLogMode(toInteger(mode, kPoint))); }, [&] { return placeOf("MODE", mode); });
        }
        if (const std::string_view isOn = trimmed(valueOf(block_, "ISCHANNELBON")); !isOn.empty()) {
            naming([&] { values_.set(log_.IsChannelBOn, isOn); }, [&] { return placeOf("ISCHANNELBON", isOn); });
        }
        const std::size_t most = rowsAtMost();
        columns().resize(most, most);
        records_.emplace(log_);
        std::optional<std::string_view> display;
        Taker taker(kLogTags, log_, values_);
        for (Tags tags(block_); tags.next();) {
            if (tags.name() == "LOGSAMPLE") {
                row(tags.valueOrBlock());
            } else if (tags.name() == "DOSELOGSAMPLE") {
                exposureRow(tags.block());
            } else if (tags.name() == "PEAKSAMPLE") {
                peak(tags.block());
            } else if (tags.name() == "DISPLAY") {
                display = tags.block();
            } else {
                taker.take(tags);
            }
        }
        if (display) takeDisplay(log_, *display, values_);
        columns().setCount(rows_);
        if (!areDated_) SetSampleDates(log_);
    }

private:
    IntervalColumns& columns() { return log_.LogIntervals.Columns(); }

    std::size_t rowsAtMost() const {
        constexpr std::string_view kOpening = "<LOGSAMPLE>";
        std::size_t count = 0;
        for (std::size_t at = block_.find(kOpening); at != std::string_view::npos; at = block_.find(kOpening, at + 1))
            ++count;
        return count;
    }

    void row(std::string_view content) {
        content = trimmed(content);
        Row row{columns(), rows_, lastBand(log_.Mode())};
        if (content.find('<') != std::string_view::npos) {
            Taker(kRowTags, row, values_).takeAll(content);
        } else if (!content.empty()) {
            CommaFields fields(content, true);
            naming(
                [&] {
                    const std::string_view start = fields.take();
                    records_->take(start, fields, rows_);
                    if (fields.left() > 0) raiseTypeMismatch();
                },
                [&] { return placeOf("LOGSAMPLE", fields.last()); });
        }
        areDated_ = areDated_ && row.isDated;
        ++rows_;
        chargeRows();
    }

    void chargeRows() {
        const std::size_t taken = columns().touchedBytes();
        values_.charge(taken - charged_);
        charged_ = taken;
    }

    void peak(std::string_view block) {
        constexpr std::size_t kMemoryOfPeak = 256; // bytes that a peak takes when it is shown
        values_.charge(kMemoryOfPeak);
        Taker(kPeakTags, log_.Peaks.emplace_back(), values_).takeAll(block);
    }

    void exposureRow(std::string_view block) {
        values_.charge(sizeof(clsDoseLogSample));
        log_.SaveDoseCalc = true;
        Taker(kExposureTags, log_.DoseLogIntervals.emplace_back(), values_).takeAll(block);
    }

    clsLog& log_;
    std::string_view block_;
    Values& values_;
    std::optional<RecordRows> records_;
    std::size_t rows_ = 0;
    std::size_t charged_ = 0;
    bool areDated_ = true;
};

std::unique_ptr<clsInsData> readCollection(Session& session, std::string_view block, Values& values) {
    auto data = std::make_unique<clsInsData>(session);
    Taker taker(kCollectionTags, *data, values);
    for (Tags tags(block); tags.next();) {
        if (tags.name() != "LOG") {
            taker.take(tags);
            continue;
        }
        values.charge(sizeof(clsLog));
        auto log = std::make_unique<clsLog>(session);
        LogReader(*log, tags.block(), values).read();
        values.charge(memoryOf(*log, false) - sizeof(clsLog));
        data->logsOf(log->Mode()).push_back(std::move(log));
    }
    forEachLog(*data, [&data](clsLog& log) { log.InsName = data->InsName(); });
    return data;
}

} // namespace

bool ReadProject(clsFile& file, std::string_view text) {
    Values values(file.session().locale, text.size());
    bool isProject = false;
    for (Tags tags(text); tags.next();) {
        if (tags.name() != "INSDATA") continue;
        isProject = true;
        auto data = readCollection(file.session(), tags.block(), values);
        if (data->hasLogs()) file.InstrumentDatas.push_back(std::move(data));
    }
    return isProject;
}

} // namespace kestrane

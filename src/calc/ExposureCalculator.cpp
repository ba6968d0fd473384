#include "calc/ExposureCalculator.h"

#include "calc/ExposureTime.h"
#include "calc/PossibleLevel.h"
#include "calc/Recalculation.h"
#include "model/Acoustics.h"
#include "model/Session.h"
#include "model/TimeText.h"
#include "platform/Format.h"
#include "platform/Numbers.h"
#include "platform/RuntimeError.h"
#include "platform/Trimmed.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <set>

namespace kestrane {

namespace {

constexpr int kMostInserted = 100;

// For each column the number of its caption, the length of the longest entry, and the text that refuses an entry.
struct ColumnInfo {
    Text::Id caption;
    int maxLength;
    Text::Id refusal; // None when every entry is accepted
};

constexpr std::array<ColumnInfo, kExposureColumns> kColumns = {
    {{Text::None, 0, Text::None},
     {Text::CriterionColumn, 2, Text::RefusedCriterion},
     {Text::ExchangeRateShort, 1, Text::RefusedExchangeRate},
     {Text::DateColumn, 10, Text::RefusedDate},
     {Text::TimeColumn, 8, Text::RefusedTimeOfDay},
     {Text::NoteColumn, 256, Text::None},
     {Text::Leq, 5, Text::RefusedLevel},
     {Text::ExposureTimeColumn, 8, Text::RefusedExposureTime},
     {Text::Lepd, 0, Text::None},
     {Text::DosePercent, 0, Text::None},
     {Text::IncludedColumn, 1, Text::RefusedIncluded}}};

const ColumnInfo& infoOf(int column) {
    return kColumns.at(static_cast<std::size_t>(column));
}

// An energy sum that stays invalid once a level of 0 (absent) has been added.
class EnergySum {
public:
    void add(float level) {
        if (level == 0) isSpoilt_ = true;
        if (isSpoilt_) return;
        sum_ = checkedSingle(sum_ + energyOf(level));
        ++count_;
    }

    bool hasSum() const { return !isSpoilt_ && sum_ != 0; }

    float sum() const { return checkedSingle(levelOf(sum_)); }

    float mean() const { return checkedSingle(levelOf(static_cast<double>(sum_) / count_)); }

private:
    float sum_ = 0;
    int count_ = 0;
    bool isSpoilt_ = false;
};

std::string format(const Session& session, const clsValue& value) {
    return value.Format(Zeros::Shown, Reading::Computed, {}, session.locale);
}

// A typed number when it is one of choices; else nothing.
template <std::size_t N>
std::optional<std::int16_t> oneOf(const int (&choices)[N], const std::string& entry, const Locale& locale) {
    if (!isNumeric(entry, locale)) return std::nullopt;
    const double number = toDouble(entry, locale);
    const auto* const found = std::find(std::begin(choices), std::end(choices), number);
    if (found == std::end(choices)) return std::nullopt;
    return static_cast<std::int16_t>(*found);
}

bool takeDate(clsDate& date, const std::string& entry, const Locale& locale) {
    clsDate taken;
    taken.Day = taken.Month = taken.Year = 0; // so that a text that is no date leaves no date
    taken.setDate(entry, locale);
    if (!taken.IsDate()) return false;
    date = taken;
    return true;
}

bool takeTime(clsTime& time, const std::string& entry, const Locale& locale) {
    const std::string text = NormaliseTimeText(entry, false);
    if (text.empty()) return false;
    time.setTime(text, locale);
    return true;
}

bool takeDuration(clsTime& duration, const std::string& entry, const Locale& locale) {
    const std::optional<float> hours = durationHours(entry, locale);
    if (!hours) return false;
    duration.setTime(exposureTimeText(*hours), locale);
    return true;
}

bool takeLevel(clsValue& level, const std::string& entry, const Locale& locale) {
    const std::optional<double> number = typedNumber(entry, locale);
    if (!number) return false;
    const float rounded = toSingle(formatNumber(*number, "##0.0", locale), locale);
    if (rounded > kHighestLevel) return false; // a forgotten point would make the figures of the whole day overflow
    level.Value(rounded);
    return true;
}

bool takeIncluded(bool& isIncluded, const std::string& entry, const LabelTexts& labels) {
    const std::string letter =
        entry.empty() ? std::string()
                      : std::string(1, static_cast<char>(std::toupper(static_cast<unsigned char>(entry[0]))));
    if (letter != labels.YesMark && letter != labels.NoMark) return false;
    isIncluded = letter == labels.YesMark;
    return true;
}

bool take(const Session& session, clsDoseLogSample& row, int column, const std::string& entry) {
    const Locale& locale = session.locale;
    switch (column) {
    case eColumnCriterion: {
        const auto criterion = oneOf(kCriterionLevels, entry, locale);
        row.Criterion = criterion.value_or(row.Criterion);
        return criterion.has_value();
    }
    case eColumnExchange: {
        const auto exchange = oneOf(kExchangeRates, entry, locale);
        row.Exchange = exchange.value_or(row.Exchange);
        return exchange.has_value();
    }
    case eColumnDate:
        return takeDate(row.SampleDate, entry, locale);
    case eColumnTime:
        return takeTime(row.SampleTime, entry, locale);
    case eColumnNote:
        row.Note = entry;
        return true;
    case eColumnLeq:
        return takeLevel(row.Leq, entry, locale);
    case eColumnExposureTime:
        return takeDuration(row.Duration, entry, locale);
    case eColumnIncluded:
        return takeIncluded(row.IsIncluded, entry, session.labels);
    default:
        return false;
    }
}

template <std::size_t N>
std::vector<std::string> textsOf(const int (&numbers)[N]) {
    std::vector<std::string> texts;
    for (const int number : numbers)
        texts.push_back(std::to_string(number));
    return texts;
}

clsDoseLogSample newRow(const Session& session) {
    const CalendarTime now = session.clock.now();
    const CivilDate today = toCivil(now);
    clsDoseLogSample row;
    row.Criterion = 80;
    row.Exchange = 3;
    row.SampleDate.Day = static_cast<std::int16_t>(today.Day);
    row.SampleDate.Month = static_cast<std::int16_t>(today.Month);
    row.SampleDate.Year = static_cast<std::int16_t>(today.Year);
    row.SampleTime.setTimeFromSeconds(secondsOfDay(now));
    row.Leq.Value(90);
    row.Duration.Mins = 1;
    row.IsIncluded = true;
    return row;
}

// Adds the rows of "a" or "a:b" (both included, counted from 1) to rows, which counts from 0. Returns false when they
// are not all in the table or the item is malformed.
bool addRange(std::set<std::size_t>& rows, std::string_view item, std::size_t count) {
    const std::size_t colon = item.find(':');
    const auto number = [](std::string_view text) -> std::size_t {
        std::size_t value = 0;
        const auto read = std::from_chars(text.data(), text.data() + text.size(), value);
        return read.ec == std::errc() && read.ptr == text.data() + text.size() ? value : 0; // 0 stands for no row
    };
    const std::size_t from = number(item.substr(0, colon));
    const std::size_t to = colon == std::string_view::npos ? from : number(item.substr(colon + 1));
    if (from == 0 || to < from || to > count) return false;
    for (std::size_t row = from; row <= to; ++row)
        rows.insert(row - 1);
    return true;
}

} // namespace

std::vector<std::string> exposureCaptions(const Session& session) {
    std::vector<std::string> captions;
    captions.reserve(kColumns.size());
    for (const ColumnInfo& column : kColumns)
        captions.push_back(column.caption == 0 ? std::string() : session.LoadText(column.caption));
    return captions;
}

int exposureMaxLength(int column) {
    return infoOf(column).maxLength;
}

std::vector<std::string> exposureChoices(const Session& session, int column) {
    if (column == eColumnCriterion) return textsOf(kCriterionLevels);
    if (column == eColumnExchange) return textsOf(kExchangeRates);
    if (column == eColumnIncluded) return {session.labels.YesMark, session.labels.NoMark};
    return {};
}

DoseTotals doseTotals(const clsLog& log) {
    DoseTotals totals;
    EnergySum levels;
    EnergySum exposures;
    std::int32_t seconds = 0;
    try {
        for (const clsDoseLogSample& row : log.DoseLogIntervals) {
            if (!row.IsIncluded) continue;
            levels.add(row.Leq.Value());
            exposures.add(row.getLex().Value());
            seconds = checkedLong(std::int64_t{seconds} + row.Duration.getTimeAsSeconds());
            totals.Dose.Value(checkedSingle(static_cast<double>(totals.Dose.Value()) + row.getDose().Value()));
        }
        if (levels.hasSum()) totals.Leq.Value(levels.mean());
        if (exposures.hasSum()) totals.Lex.Value(exposures.sum());
        if (seconds != 0) totals.Duration.setTimeFromSeconds(seconds);
    } catch (const RuntimeError&) { // the totals keep what has been summed so far
    }
    return totals;
}

void fillExposureRows(clsLog& log) {
    if (!log.DoseLogIntervals.empty()) return;
    clsDoseLogSample row;
    row.Criterion = log.Criterion;
    row.Exchange = log.Exchange;
    row.SampleDate = log.StartDate;
    row.SampleTime = log.StartTime;
    row.Leq = log.LeqCumA(0);
    row.Duration.setTime(exposureTimeText(log.objLogOptions.ExposureTime), log.session().locale);
    row.IsIncluded = true;
    log.DoseLogIntervals.push_back(std::move(row));
}

std::vector<std::string> exposureLine(const Session& session, const clsDoseLogSample& row, int lineNo) {
    return {lineNo == -1 ? " " : std::to_string(lineNo),
            std::to_string(row.Criterion),
            std::to_string(row.Exchange),
            row.SampleDate.Format(),
            row.SampleTime.hh_mm_ss(),
            row.Note,
            format(session, row.Leq),
            row.Duration.hh_mm_ss(),
            format(session, row.getLex()),
            format(session, row.getDose()),
            row.IsIncluded ? session.labels.YesMark : session.labels.NoMark};
}

std::vector<std::string> exposureTotalsLine(const clsLog& log) {
    const DoseTotals totals = doseTotals(log);
    std::vector<std::string> line(kExposureColumns);
    line[eColumnExposureTime] = totals.Duration.hh_mm_ss();
    line[eColumnLex] = format(log.session(), totals.Lex);
    line[eColumnDose] = format(log.session(), totals.Dose);
    return line;
}

CellEntry enterExposureCell(clsLog& log, std::size_t row, int column, const std::string& entry) {
    const Session& session = log.session();
    clsDoseLogSample& target = log.DoseLogIntervals.at(row);
    clsDoseLogSample taken = target;
    try {
        if (!take(session, taken, column, std::string(trimmed(entry)))) return CellEntry::Refused;
    } catch (const RuntimeError&) { // the number does not fit its type
        return CellEntry::Refused;
    }
    if (exposureLine(session, taken, 1) == exposureLine(session, target, 1)) return CellEntry::Same;
    target = taken;
    return CellEntry::Stored;
}

std::string exposureRefusal(const Session& session, int column, const std::string& entry) {
    return ReplaceText(session.LoadText(infoOf(column).refusal), "^", trimmed(entry));
}

void clearExposureCell(clsDoseLogSample& row, int column) {
    switch (column) {
    case eColumnCriterion:
        row.Criterion = 0;
        break;
    case eColumnExchange:
        row.Exchange = 0;
        break;
    case eColumnDate:
        row.SampleDate.Day = row.SampleDate.Month = row.SampleDate.Year = 0;
        break;
    case eColumnTime:
        row.SampleTime.Hours = row.SampleTime.Mins = row.SampleTime.Secs = -1; // not 0, which is midnight
        break;
    case eColumnLeq:
        row.Leq.Value(0);
        break;
    case eColumnExposureTime:
        row.Duration = clsTime();
        break;
    case eColumnIncluded:
        row.IsIncluded = false;
        break;
    default:
        break;
    }
}

bool isMissing(const clsDoseLogSample& row, int column) {
    switch (column) {
    case eColumnCriterion:
        return row.Criterion == 0;
    case eColumnExchange:
        return row.Exchange == 0;
    case eColumnDate:
        return !row.SampleDate.IsDate();
    case eColumnTime:
        return row.SampleTime.hh_mm_ss().empty();
    case eColumnLeq:
        return row.Leq.Value() == 0;
    case eColumnExposureTime:
        return row.Duration == clsTime();
    default:
        return false;
    }
}

std::optional<int> insertCount(const std::string& entry, const Locale& locale) {
    const std::string_view text = trimmed(entry);
    if (text.size() > 3 || !isNumeric(text, locale)) return std::nullopt;
    const double number = toDouble(text, locale);
    if (number != std::floor(number) || number < 1 || number > kMostInserted) return std::nullopt;
    return static_cast<int>(number);
}

void insertExposureRows(clsLog& log, std::size_t position, int count) {
    std::vector<clsDoseLogSample>& rows = log.DoseLogIntervals;
    clsDoseLogSample row;
    if (rows.empty()) {
        row = newRow(log.session());
    } else {
        row.Copy(rows[std::min(position, rows.size() - 1)]);
        row.Note.clear();
        row.IsIncluded = true;
    }
    const auto at = rows.begin() + static_cast<std::ptrdiff_t>(std::min(position, rows.size()));
    rows.insert(at, static_cast<std::size_t>(count), row);
}

std::optional<std::vector<std::size_t>> rowList(const std::string& entry, std::size_t rows) {
    std::string text = entry;
    std::erase(text, ' ');
    if (text.find_first_not_of(":,0123456789") != std::string::npos) return std::nullopt;
    std::set<std::size_t> chosen;
    for (std::size_t at = 0; at <= text.size();) {
        const std::size_t comma = std::min(text.find(',', at), text.size());
        const std::string_view item = std::string_view(text).substr(at, comma - at);
        if (!item.empty() && !addRange(chosen, item, rows)) return std::nullopt;
        at = comma + 1;
    }
    if (chosen.empty()) return std::nullopt;
    return std::vector<std::size_t>(chosen.begin(), chosen.end());
}

void deleteExposureRows(clsLog& log, const std::vector<std::size_t>& rows) {
    for (auto row = rows.rbegin(); row != rows.rend(); ++row)
        log.DoseLogIntervals.erase(log.DoseLogIntervals.begin() + static_cast<std::ptrdiff_t>(*row));
}

} // namespace kestrane

#include "exports/ExportTable.h"

#include "model/LogParameters.h"
#include "model/LogTime.h"
#include "model/RowClock.h"
#include "platform/Utf8.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <memory>

namespace kestrane {

namespace {

constexpr const char* kHead[] = {"file", "log", "name", "start", "seconds", "excluded", "overloaded"};

std::string_view unitOf(ParameterUnit unit) {
    return unit == ParameterUnit::Percent ? "_percent" : unit == ParameterUnit::Pa2Hours ? "_Pa2h" : "_dB";
}

// The end of a column's name for a band, such as "_1k"; empty for the overall figure.
std::string bandPart(const clsLog& log, int band) {
    return band == 0 ? std::string() : "_" + std::string(log.eStr(band));
}

// The name of a percentile's column: "LnA_L10" by the percentile that an Ln stands for; "LnA_Ln4" by its number when
// the log states no percentile for it or has the same percentile in an earlier Ln.
std::string lnName(const clsLog& log, int ln, const std::string& member) {
    const int number = log.LnNumberA(ln);
    for (int before = 1; before < ln; ++before)
        if (log.LnNumberA(before) == number) return member + "_Ln" + std::to_string(ln);
    return member + (number == 0 ? "_Ln" + std::to_string(ln) : "_L" + std::to_string(number));
}

ExportCell numberOrNone(float value) {
    return value == 0 || !std::isfinite(value) ? ExportCell() : ExportCell(shortestDouble(value));
}

// The name of a file may hold bytes that are no UTF-8: they become U+FFFD, as in JSON.
ExportCell textOrNone(const std::string& text) {
    std::string shown;
    for (std::size_t at = 0; at < text.size();)
        appendUtf8(shown, nextCodePoint(text, at));
    return shown.empty() ? ExportCell() : ExportCell(std::move(shown));
}

bool isAnySet(const auto& cells) {
    return std::any_of(cells.begin(), cells.end(), [](const auto& cell) { return cell != 0; });
}

float secondsOf(const clsLog& log) {
    try {
        return std::max(getTime(log, 's', Run::Measured, ExcludedRows::Count), 0.0F);
    } catch (const RuntimeError&) {
        return 0;
    }
}

// A figure's date and time as "2024-11-26T16:18:53"; the time alone when there is no date; empty without either.
std::string isoMoment(const clsDate& date, const clsTime& time) {
    constexpr std::int64_t kSecondsOfDay = 86'400;
    const bool isUnset = date.Format().empty();
    const std::int64_t seconds =
        (isUnset ? 0 : static_cast<std::int64_t>(date.getDate()) * kSecondsOfDay) + time.getTimeAsSeconds();
    return isUnset && seconds == 0 ? std::string() : isoTime(seconds);
}

} // namespace

double shortestDouble(float value) {
    std::array<char, 64> text;
    const auto end = std::to_chars(text.data(), text.data() + text.size(), value).ptr;
    double number = 0;
    std::from_chars(text.data(), end, number);
    return number;
}

ExportTable::ExportTable() {
    for (const char* name : kHead)
        column(name);
}

std::size_t ExportTable::column(const std::string& name) {
    const auto [place, isNew] = places_.try_emplace(name, names_.size());
    if (isNew) names_.push_back(name);
    return place->second;
}

void ExportTable::put(Part& part, const std::string& name, ExportCell cell) {
    if (std::holds_alternative<std::monostate>(cell)) return;
    part.cells.emplace_back(column(name), [cell = std::move(cell)](std::size_t) { return cell; });
}

void ExportTable::addHead(Part& part, const std::string& file, const std::string& key, const clsLog& log) {
    put(part, "file", textOrNone(file));
    put(part, "log", textOrNone(key));
    put(part, "name", textOrNone(log.Name));
}

void ExportTable::addRows(const std::string& file, const std::string& key, const clsLog& log) {
    addRows(file, key, log, {1, log.LogIntervals.Count()});
}

void ExportTable::addRows(const std::string& file, const std::string& key, const clsLog& log, RowRange range) {
    const std::int64_t count = range.To - range.From + 1;
    Part part{static_cast<std::size_t>(range.From - 1), static_cast<std::size_t>(count), {}};
    lines_ += count;
    addHead(part, file, key, log);
    const auto rows = std::make_shared<const IntervalColumns>(log.LogIntervals.Columns());
    const auto add = [&](const std::string& name, Fetch fetch) {
        part.cells.emplace_back(column(name), std::move(fetch));
    };
    if (!rows->StartDate.isAbsent() || !rows->StartTime.isAbsent())
        add("start", [rows](std::size_t row) { return ExportCell(isoTime(rowBegin(*rows, row))); });
    add("seconds", [rows, interval = log.Interval](std::size_t row) {
        return ExportCell(static_cast<double>(rowSeconds(*rows, row, interval)));
    });
    add("excluded", [rows](std::size_t row) { return ExportCell(rows->isExcluded.at(row) != 0 ? 1.0 : 0.0); });
    add("overloaded", [rows](std::size_t row) {
        return ExportCell(rows->OverloadedA.at(row) != 0 || rows->OverloadedB.at(row) != 0 ? 1.0 : 0.0);
    });

    const auto addWhole = [&](const std::string& name, Column<std::int16_t> IntervalColumns::*member) {
        if (!isAnySet(rows->cells((*rows).*member))) return;
        add(name, [rows, member](std::size_t row) { return numberOrNone(((*rows).*member).at(row)); });
    };
    addWhole("mIntCriterion_dB", &IntervalColumns::Criterion);
    addWhole("mIntExchange_dB", &IntervalColumns::Exchange);

    // The time of a level is exported only in rows that have the level.
    const auto addTime = [&](const std::string& name, Column<std::int32_t> IntervalColumns::*member, Quantity of) {
        if (!isAnySet(rows->cells((*rows).*member))) return;
        add(name, [rows, member, of](std::size_t row) {
            return rows->level(of, 0, row) == Level() ? ExportCell() : ExportCell(isoTime(((*rows).*member).at(row)));
        });
    };
    addTime("LminTimeA", &IntervalColumns::LminTimeA, Quantity::LminA);
    addTime("LmaxTimeA", &IntervalColumns::LmaxTimeA, Quantity::LmaxA);
    addTime("PeakTimeA", &IntervalColumns::PeakTimeA, Quantity::PeakA);

    const auto addLevels = [&](const std::string& member, Quantity quantity, ParameterUnit unit) {
        for (int band = 0; band <= (hasBands(quantity) ? lastBand(log.Mode()) : 0); ++band) {
            const auto levels = rows->levels(quantity, band);
            if (std::none_of(levels.begin(), levels.end(), [](const Level& level) { return level.CalcValue != 0; }))
                continue;
            add(member + bandPart(log, band) + std::string(unitOf(unit)),
                [rows, levels](std::size_t row) { return numberOrNone(levels[row].CalcValue); });
        }
    };
    for (const LogChannel channel : kChannels) {
        for (const ParameterInfo& info : parameters()) {
            const ParameterSource& source = sourceOf(channel, info.parameter);
            if (!source.rowName.empty()) addLevels(std::string(source.rowName), source.rows, info.unit);
        }
    }
    for (int ln = 1; ln <= NumberOfLns; ++ln)
        addLevels(lnName(log, ln, "LnA"), lnQuantity(ln), ParameterUnit::Decibels);
    parts_.push_back(std::move(part));
}

void ExportTable::addSummary(const std::string& file, const std::string& key, const std::string& serial,
                             const clsLog& log) {
    Part part{0, 1, {}};
    ++lines_;
    addHead(part, file, key, log);
    const IntervalColumns& rows = log.LogIntervals.Columns();
    const bool isOverloaded = isAnySet(rows.cells(rows.OverloadedA)) || isAnySet(rows.cells(rows.OverloadedB));
    put(part, "start", textOrNone(isoMoment(log.StartDate, log.StartTime)));
    put(part, "seconds", numberOrNone(secondsOf(log)));
    put(part, "excluded", isAnySet(rows.cells(rows.isExcluded)) ? 1.0 : 0.0);
    put(part, "overloaded", log.IsLoggingOverLoaded || isOverloaded ? 1.0 : 0.0);
    put(part, "InsName", textOrNone(log.InsName));
    put(part, "InsSerial", textOrNone(serial));
    put(part, "ModeText", textOrNone(log.ModeWord()));
    put(part, "FreqWeightA", textOrNone(log.FreqWeightA()));
    put(part, "TimeWeightA", textOrNone(log.TimeWeightA()));
    put(part, "FreqWeightB", textOrNone(log.FreqWeightB()));
    put(part, "TimeWeightB", textOrNone(log.TimeWeightB()));
    put(part, "Note", textOrNone(log.Note));
    put(part, "Rows", static_cast<double>(log.LogIntervals.Count()));
    put(part, "Criterion_dB", numberOrNone(log.Criterion));
    put(part, "Exchange_dB", numberOrNone(log.Exchange));
    put(part, "ExposureTime_h", numberOrNone(log.objLogOptions.ExposureTime));
    put(part, "LminCumTimeA", textOrNone(isoMoment(log.LminCumDateA, log.LminCumTimeA)));
    put(part, "LmaxCumTimeA", textOrNone(isoMoment(log.LmaxCumDateA, log.LmaxCumTimeA)));
    put(part, "PeakCumTimeA", textOrNone(isoMoment(log.PeakCumDateA, log.PeakCumTimeA)));

    const auto putBands = [&](const std::string& member, const BandValues& values) {
        for (int band = 0; band <= values.last(); ++band)
            put(part, member + bandPart(log, band) + "_dB", numberOrNone(values(band).CalcValue()));
    };
    for (const LogChannel channel : kChannels) {
        for (const ParameterInfo& info : parameters()) {
            const ParameterSource& source = sourceOf(channel, info.parameter);
            const std::string name(source.cumulativeName);
            if (channel == kChannelA && info.bands != nullptr) putBands(name, log.*info.bands);
            if (source.cumulative == nullptr) continue;
            put(part, name + std::string(unitOf(info.unit)), numberOrNone((log.*source.cumulative).CalcValue()));
        }
    }
    for (int ln = 1; ln <= NumberOfLns; ++ln)
        putBands(lnName(log, ln, "LnCumA"), log.LnCumA.of(ln));
    parts_.push_back(std::move(part));
}

ExportTable ExportTable::withColumns(const std::function<bool(const std::string& name)>& isWanted) const {
    ExportTable some = *this;
    some.names_.clear();
    some.places_.clear();
    for (const std::string& name : names_)
        if (isWanted(name)) some.column(name);
    for (Part& part : some.parts_) {
        std::erase_if(part.cells, [&](const auto& cell) { return !some.places_.contains(names_[cell.first]); });
        for (auto& [at, fetch] : part.cells)
            at = some.places_.at(names_[at]);
    }
    return some;
}

bool ExportTable::forEachLine(const std::function<void(std::span<const ExportCell>)>& visit,
                              const std::function<bool(std::int64_t done)>& goesOn) const {
    std::vector<ExportCell> line(names_.size());
    std::int64_t done = 0;
    for (const Part& part : parts_) {
        std::fill(line.begin(), line.end(), ExportCell());
        for (std::size_t row = part.firstRow; row < part.firstRow + part.lines; ++row) {
            if (goesOn && !goesOn(done++)) return false;
            for (const auto& [at, fetch] : part.cells)
                line[at] = fetch(row);
            visit(line);
        }
    }
    return true;
}

} // namespace kestrane

#include "views/IntervalTable.h"

#include "calc/BandLevels.h"
#include "model/Captions.h"
#include "model/InstrumentFamilies.h"
#include "model/LogParameters.h"
#include "model/Session.h"
#include "platform/Format.h"

#include <algorithm>

namespace kestrane {

namespace {

constexpr std::size_t kWriteSize = 65536; // bytes that are written to a stream at once

clsValue valueOf(Level level) {
    clsValue value;
    value.Value(level.Value);
    value.CalcValue(level.CalcValue);
    return value;
}

template <class Cell>
void appendLine(std::string& text, std::size_t columns, Cell cell) {
    for (std::size_t column = 0; column < columns; ++column) {
        if (column > 0) text += '\t';
        text += cell(column);
    }
    text += "\r\n";
}

} // namespace

IntervalTable::IntervalTable(const clsLog& log, LogChannel channel, const DisplayChoice& choice) :
    rows_(log.LogIntervals.Columns()),
    times_(log),
    channel_(log.IsChannelBOn ? channel : kChannelA),
    yes_(log.session().labels.Yes),
    no_(log.session().labels.No),
    locale_(log.session().locale) {
    overloads_ = overloadColumn(rows_, channel_);
    columns_.push_back({log.session().LoadText(Text::TimeColumn), Kind::Time});
    if (choice.Parameter == 0) {
        addParameters(log, choice.BandText);
    } else {
        addBands(log, choice.Parameter);
    }
    if (log.has(Trait::RecordsPeaks)) addPeaks(log);
}

void IntervalTable::addParameters(const clsLog& log, const std::string& bandText) {
    const clsLogOptions options = displayOptions(log);
    const bool hasBand = channel_ == kChannelA && !bandText.empty();
    const std::string_view captionBand = hasBand ? std::string_view(bandText) : kNoBand;
    const int band = hasBand ? log.e(bandText) : 0;
    for (const Parameter parameter : kParameters) {
        if (!options.IsPlotted(channel_, kInterval, parameter)) continue;
        const bool isOverload = parameter == eOverload;
        std::string caption = withWeightingMark(log, channel_, parameter,
                                                VariableCaption(log.session(), parameter, channel_, captionBand, &log));
        columns_.push_back({std::move(caption), isOverload ? Kind::Overload : Kind::Level,
                            intervalQuantity(channel_, parameter), isBanded(parameter) ? band : 0});
        showsOverload_ = showsOverload_ || isOverload;
    }
}

void IntervalTable::addBands(const clsLog& log, Parameter parameter) {
    columns_.front().caption += " - " + withColon(log.session(), parameterText(log, parameter));
    const Quantity quantity = intervalQuantity(kChannelA, parameter);
    for (int band = 0; band <= lastBand(log.Mode()); ++band) {
        columns_.push_back({(band == 0 ? " " : "") + bandLabel(log, band), Kind::Level, quantity, band});
    }
}

void IntervalTable::addPeaks(const clsLog& log) {
    peaks_ = log.Peaks;
    columns_.push_back({log.session().LoadText(Text::PeakTimeColumn), Kind::PeakTime});
    columns_.push_back({log.session().LoadText(Text::PeakLevelColumn), Kind::PeakValue});
}

std::size_t IntervalTable::rowCount() const {
    return std::max(rows_.count(), peaks_.size());
}

std::string IntervalTable::cell(std::size_t row, std::size_t column) const {
    const TableColumn& shown = columns_[column];
    if (shown.kind == Kind::PeakTime || shown.kind == Kind::PeakValue) return peakCell(row, shown);
    return row < rows_.count() ? intervalCell(row, shown) : std::string();
}

std::string IntervalTable::intervalCell(std::size_t row, const TableColumn& column) const {
    if (column.kind == Kind::Time) return times_.dateAndTime(row);
    if (column.kind == Kind::Overload) return overloads_.at(row) != 0 ? yes_ : no_;
    if (column.quantity == Quantity::End) return {};
    const clsValue value = valueOf(rows_.level(column.quantity, column.band, row));
    const bool isPa2Hours = column.quantity == Quantity::Pa2hA || column.quantity == Quantity::Pa2hB;
    return value.Format(Zeros::Blank, Reading::Computed,
                        isPa2Hours ? pa2HoursFormat(value.CalcValue(), {}) : std::string(), locale_);
}

std::string IntervalTable::peakCell(std::size_t row, const TableColumn& column) const {
    if (row >= peaks_.size()) return {};
    const clsPeak& peak = peaks_[row];
    return column.kind == Kind::PeakTime ? peak.PeakTime.hh_mm_ss()
                                         : formatNumber(peak.SampleDuration, "##0.0", locale_);
}

bool IntervalTable::isOverloaded(std::size_t row) const {
    return showsOverload_ && row < rows_.count() && overloads_.at(row) != 0;
}

bool IntervalTable::isExcluded(std::size_t row) const {
    return row < rows_.count() && rows_.isExcluded.at(row) != 0;
}

std::string IntervalTable::captionLine() const {
    std::string text;
    for (const TableColumn& column : columns_)
        text += (text.empty() ? "" : "\t") + column.caption;
    return text + "\r\n";
}

std::string IntervalTable::copiedCell(std::size_t row, std::size_t column) const {
    const bool isMarked = columns_[column].kind == Kind::Time && isExcluded(row);
    return isMarked ? "*" + cell(row, column) : cell(row, column);
}

void IntervalTable::write(std::ostream& out) const {
    std::string text = captionLine();
    for (std::size_t row = 0; row < rowCount(); ++row) {
        appendLine(text, columnCount(), [&](std::size_t column) { return cell(row, column); });
        if (text.size() < kWriteSize) continue;
        out << text;
        text.clear();
    }
    out << text;
}

CopiedRows IntervalTable::copiedRows() const {
    CopiedRows copied{captionLine()};
    for (std::size_t row = 0; row < rowCount(); ++row) {
        if (isOverloaded(row)) {
            ++copied.LeftOut;
            continue;
        }
        appendLine(copied.Text, columnCount(), [&](std::size_t column) { return copiedCell(row, column); });
        copied.HasExcluded = copied.HasExcluded || isExcluded(row);
    }
    return copied;
}

} // namespace kestrane

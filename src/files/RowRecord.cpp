#include "files/RowRecord.h"

#include "platform/Numbers.h"
#include "platform/RuntimeError.h"

#include <algorithm>
#include <array>

namespace kestrane {

namespace {

constexpr std::array kBanded = {Quantity::LeqA, Quantity::LminA, Quantity::LmaxA};
constexpr std::array kBroadband = {Quantity::DoseA, Quantity::LepdA, Quantity::SELA, Quantity::Ltm3A, Quantity::Ltm5A};
constexpr std::array kSecondChannel = {Quantity::LeqB, Quantity::LminB, Quantity::LmaxB, Quantity::PeakB};

// The seconds since midnight of "hh:mm:ss"; raises 13 for any other text.
std::int32_t secondsOfDay(std::string_view field) {
    constexpr std::size_t kLength = 8;
    if (field.size() != kLength || field[2] != ':' || field[5] != ':') raiseTypeMismatch();
    const auto part = [field](std::size_t at, int limit) {
        const int tens = field[at] - '0';
        const int units = field[at + 1] - '0';
        if (tens < 0 || tens > 9 || units < 0 || units > 9 || tens * 10 + units >= limit) raiseTypeMismatch();
        return tens * 10 + units;
    };
    return part(0, 24) * 3600 + part(3, 60) * 60 + part(6, 60);
}

} // namespace

void raisePastEnd() {
    throw RuntimeError(62, "Input past end of file");
}

std::optional<std::string_view> CommaFields::next() {
    std::size_t end = rest_.find(',');
    if (end == std::string_view::npos) {
        if (!isClosed_ || rest_.empty()) return std::nullopt;
        end = rest_.size();
    }
    std::string_view field = rest_.substr(0, end);
    rest_.remove_prefix(std::min(end + 1, rest_.size()));
    while (!field.empty() && (field.front() == '\r' || field.front() == '\n'))
        field.remove_prefix(1);
    last_ = field;
    return field; // last_ is not read back here, because reading what was just stored takes twice as long
}

std::string_view CommaFields::take() {
    const auto field = next();
    if (!field) raisePastEnd();
    return *field;
}

std::size_t CommaFields::left() const {
    const auto commas = static_cast<std::size_t>(std::count(rest_.begin(), rest_.end(), ','));
    return commas + (isClosed_ && !rest_.empty() && rest_.back() != ',' ? 1 : 0);
}

float figureOf(std::string_view field) {
    float value = 0;
    if (!field.empty() && !readSingle(field, value)) raiseTypeMismatch();
    return value;
}

RecordRows::RecordRows(clsLog& log) : rows_(log.LogIntervals.Columns()) {
    const auto add = [this](Quantity quantity, int band) { levels_.emplace_back(rows_, quantity, band); };
    for (const Quantity quantity : kBanded) {
        for (int band = 0; band <= lastBand(log.Mode()); ++band)
            add(quantity, band);
    }
    add(Quantity::PeakA, 0);
    if (!log.IsOctaveLog()) {
        for (const Quantity quantity : kBroadband)
            add(quantity, 0);
        for (int ln = 1; ln <= kRecordLns; ++ln)
            add(lnQuantity(ln), 0);
    }
    if (log.IsChannelBOn) {
        for (const Quantity quantity : kSecondChannel)
            add(quantity, 0);
    }
}

std::size_t RecordRows::fields() const {
    constexpr std::size_t kBeside = 2; // the time at the beginning and the overload mark at the end
    return levels_.size() + kBeside;
}

void RecordRows::take(std::string_view start, CommaFields& fields, std::size_t row) {
    rows_.set(rows_.StartTime, row, secondsOfDay(start));
    for (LevelWriter& levels : levels_) {
        const float value = figureOf(fields.take());
        levels.put(row, {value, value});
    }
    rows_.set(rows_.OverloadedA, row, static_cast<std::uint8_t>(fields.take() == "1"));
}

} // namespace kestrane

#include "sim/CorvaneInstrument.h"

#include "model/Session.h"
#include "platform/Numbers.h"

#include <algorithm>
#include <array>

namespace kestrane {

namespace {

constexpr char kStart = '\x02';
constexpr char kList = '\x04';
constexpr char kIdentify = '\x05';
constexpr char kFetch = '\x06';
constexpr char kSpread = '\x03'; // precedes each character of a name
constexpr char kNameEnd = '\xFF';
constexpr char kListEnd = '\xFE';
constexpr char kLead = '0'; // precedes the identity and the list
constexpr std::size_t kLongestFetch = 1024;
constexpr int kLns = 7;
constexpr std::array<std::string_view, 3> kModeWords = {"SLM", "FULL", "THIRD"};
constexpr std::array kBroadband = {Quantity::DoseA, Quantity::LepdA, Quantity::SELA, Quantity::Ltm3A, Quantity::Ltm5A};
constexpr std::array kChannelB = {Quantity::LeqB, Quantity::LminB, Quantity::LmaxB, Quantity::PeakB};

// Writes fields, each ended by a comma.
class FieldWriter {
public:
    void text(std::string_view field) { out_.append(field).push_back(','); }

    void level(float value) { text(singleText(value)); }

    void number(std::int64_t value) { text(std::to_string(value)); }

    void flag(bool on) { text(on ? "1" : "0"); }

    void date(const clsDate& date) { text(date.Format()); }

    void endLine() { out_ += "\r\n"; }

    std::string take() { return std::move(out_); }

private:
    std::string out_;
};

void header(FieldWriter& out, const clsLog& log, const std::string& instrument, const std::string& serial) {
    out.text(instrument);
    out.text(serial);
    out.date(log.FactoryCalibDate);
    out.date(log.CalibDate);
    out.text(log.CalibTime.hh_mm_ss());
    out.number(log.Criterion);
    out.number(log.Exchange);
    out.text(kModeWords[static_cast<std::size_t>(log.Mode())]);
    out.text(log.TimeWeightA());
    out.text(log.FreqWeightA());
    out.text(log.IsChannelBOn ? "ON" : "OFF");
    out.text(log.TimeWeightB());
    out.text(log.FreqWeightB());
    out.text(isNumeric(log.Threshold, {}) ? log.Threshold : "0");
    out.number(log.Interval);
    out.text("0"); // the unit is seconds
    out.text(log.IsLnNumbersOn ? "ON" : "OFF");
    for (int ln = 1; ln <= kLns; ++ln)
        out.number(log.LnNumberA(ln));
    out.date(log.StartDate);
    out.text(log.StartTime.hh_mm_ss());
    out.endLine();
}

std::string timeText(std::int32_t secondsOfDay) {
    clsTime time;
    time.setTimeFromSeconds(secondsOfDay);
    return time.hh_mm_ss();
}

void rowOf(FieldWriter& out, const clsLog& log, std::size_t row) {
    const IntervalColumns& rows = log.LogIntervals.Columns();
    const auto level = [&](Quantity quantity, int band) { out.level(rows.level(quantity, band, row).CalcValue); };
    out.text(timeText(rows.StartTime.at(row)));
    for (const Quantity quantity : {Quantity::LeqA, Quantity::LminA, Quantity::LmaxA}) {
        for (int band = 0; band <= log.e("Last"); ++band)
            level(quantity, band);
    }
    level(Quantity::PeakA, 0);
    if (!log.IsOctaveLog()) {
        for (const Quantity quantity : kBroadband)
            level(quantity, 0);
        for (int ln = 1; ln <= kLns; ++ln)
            level(lnQuantity(ln), 0);
    }
    if (log.IsChannelBOn) {
        for (const Quantity quantity : kChannelB)
            level(quantity, 0);
    }
    out.flag(rows.OverloadedA.at(row) != 0);
    out.endLine();
}

void closing(FieldWriter& out, const clsLog& log) {
    out.text("stoplog");
    out.flag(log.IsLoggingOverLoaded);
    out.date(log.EndDate);
    out.text(log.EndTime.hh_mm_ss());
    for (const BandValues* values : {&log.LeqCumA, &log.LminCumA, &log.LmaxCumA}) {
        for (int band = 0; band <= values->last(); ++band)
            out.level((*values)(band).CalcValue());
    }
    out.level(log.PeakCumA.CalcValue());
    if (!log.IsOctaveLog()) {
        for (const clsValue* value : {&log.DoseETCumA, &log.DoseMTCumA, &log.LepdETCumA, &log.LepdMTCumA, &log.SELCumA,
                                      &log.Ltm3CumA, &log.Ltm5CumA}) {
            out.level(value->CalcValue());
        }
        for (int ln = 1; ln <= kLns; ++ln)
            out.level(log.LnCumA(ln, 0).CalcValue());
    }
    out.endLine();
}

} // namespace

std::string machineLogText(const clsLog& log, const std::string& instrument, const std::string& serial) {
    FieldWriter out;
    header(out, log, instrument, serial);
    for (std::size_t row = 0; row < log.LogIntervals.Columns().count(); ++row)
        rowOf(out, log, row);
    closing(out, log);
    return out.take();
}

// Files are identified by name, so each name is unique and contains no line end.
CorvaneInstrument::CorvaneInstrument(Holdings holdings) : holdings_(std::move(holdings)) {
    for (const auto* logs : {&holdings_.Locations, &holdings_.Octaves, &holdings_.ThirdOctaves}) {
        for (const clsLog* log : *logs) {
            std::string name = log->Name.substr(0, kLongestFetch / 4);
            std::replace(name.begin(), name.end(), '\r', ' ');
            const auto isTaken = [&](const StoredFile& file) { return file.name == name; };
            if (name.empty() || std::any_of(files_.begin(), files_.end(), isTaken)) {
                name += "~" + std::to_string(files_.size() + 1);
            }
            files_.push_back({name, log});
        }
    }
}

std::size_t CorvaneInstrument::commandLength(std::string_view bytes) const {
    if (bytes[0] != kStart) return kNoCommand;
    if (bytes.size() < 2) return kIncomplete;
    if (bytes[1] == kIdentify || bytes[1] == kList) return 2;
    if (bytes[1] != kFetch) return kNoCommand;
    for (std::size_t at = 2; at < bytes.size() && at < kLongestFetch; at += 2) {
        if (bytes[at] == kNameEnd) return at + 1;
        if (bytes[at] != kSpread) return kNoCommand;
    }
    return bytes.size() < kLongestFetch ? kIncomplete : kNoCommand;
}

std::string CorvaneInstrument::reply(std::string_view command) {
    const std::string line = "\r";
    if (command[1] == kIdentify) {
        if (files_.empty()) return {kLead, kListEnd};
        return kLead + holdings_.Model + line + holdings_.Serial + line;
    }
    if (command[1] == kList) {
        std::string list(1, kLead);
        for (const StoredFile& file : files_)
            list += file.name + line;
        return list + kListEnd;
    }
    std::string name;
    for (std::size_t at = 3; at < command.size(); at += 2)
        name += command[at];
    const auto found =
        std::find_if(files_.begin(), files_.end(), [&](const StoredFile& file) { return file.name == name; });
    return found == files_.end() ? "ERROR" : machineLogText(*found->log, holdings_.Model, holdings_.Serial);
}

} // namespace kestrane

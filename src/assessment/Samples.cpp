#include "assessment/Samples.h"

#include "assessment/AssessmentEdits.h"
#include "calc/CalibrationText.h"
#include "calc/PossibleLevel.h"
#include "model/Captions.h"
#include "platform/Format.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <span>

namespace kestrane {

namespace {

constexpr double kLongestDay = 24;

void raise(Figure& highest, const Figure& figure) {
    if (figure && (!highest || *figure > *highest)) highest = figure;
}

// Whether a level that was taken from rows has rows of another in it: of the same log of a file of the same contents.
bool shareRows(const SourceResult& a, const SourceResult& b) {
    return a.Leq && b.Leq && a.Sha256 == b.Sha256 && a.Log == b.Log && *a.From <= *b.To && *b.From <= *a.To;
}

} // namespace

bool isDuration(double hours) {
    return hours > 0 && hours <= kLongestDay;
}

void Warnings::add(std::string_view code, const std::optional<std::string>& task, Text::Id text,
                   const std::string& first, const std::string& second) {
    add({std::string(code), task, ReplaceText(ReplaceText(session_.LoadText(text), "*", second), "^", first)});
}

void Warnings::add(AssessmentWarning warning) {
    if (std::find(list_.begin(), list_.end(), warning) == list_.end()) list_.push_back(std::move(warning));
}

void Warnings::addCalibration(const LogRows& rows, const Calibration& calibration) {
    for (const std::string& words :
         {calibrationWarning(session_, calibration), calibrationOffset(session_, calibration)})
        if (!words.empty()) add({"calibration", std::nullopt, captioned(session_, logName(rows), words)});
}

void Warnings::bad(const std::optional<std::string>& task, Text::Id text, const std::string& first,
                   const std::string& second) {
    add("bad-value", task, text, first, second);
}

std::string Warnings::number(double value) const {
    constexpr double kLargest = 1e9; // with all of its digits
    if (std::abs(value) < kLargest) return formatNumber(value, "##0.0#", session_.locale);
    std::array<char, 32> text{};
    return {text.data(), std::to_chars(text.data(), text.data() + text.size(), value).ptr};
}

SampleLevels SampleSource::gather(const std::vector<Sample>& samples, const std::optional<std::string>& task,
                                  Warnings& warnings, std::vector<SourceResult>& sources) const {
    SampleLevels out;
    out.MeasuredHours = 0;
    const std::size_t first = sources.size(); // of those that belong to these samples
    for (const Sample& sample : samples) {
        if (const auto* rows = std::get_if<LogRows>(&sample)) {
            take(*rows, task, warnings, sources, out);
            const SourceResult& last = sources.back();
            const std::span others(sources.begin() + static_cast<std::ptrdiff_t>(first), sources.end() - 1);
            if (std::ranges::any_of(others, [&](const SourceResult& other) { return shareRows(other, last); }))
                warnings.add("rows-twice", task, Text::WarnRowsTwice,
                             std::to_string(*last.From) + "-" + std::to_string(*last.To), rows->File);
            continue;
        }
        out.MeasuredHours.reset();
        const double level = std::get<double>(sample);
        if (isLevel(level)) {
            out.Levels.push_back(level);
        } else {
            out.AreAllThere = false;
            warnings.bad(task, Text::WarnLevelCannotBe, warnings.number(level));
        }
    }
    if (samples.empty()) warnings.bad(task, Text::WarnNoSamples);
    out.AreAllThere = out.AreAllThere && !samples.empty();
    return out;
}

bool SampleSource::isThere(const MeasuredLog* log, const LogRows& rows, const std::optional<std::string>& task,
                           Warnings& warnings, std::vector<SourceResult>& sources) const {
    sources.push_back({rows.File, std::string(), rows.Log, rows.From, rows.To, Figure()});
    SourceResult& source = sources.back();
    if (log != nullptr) source.Sha256 = log->Sha256;
    if (log == nullptr || !log->IsOpen) {
        warnings.bad(task, log == nullptr ? Text::WarnNotReadYet : Text::WarnNotOpened, rows.File);
        return false;
    }
    if (!rows.Sha256.empty() && rows.Sha256 != log->Sha256)
        warnings.add("file-changed", task, Text::WarnFileChanged, rows.File);
    if (log->Log.empty()) {
        warnings.bad(task, Text::WarnNoLog, rows.Log + " (" + rows.File + ")");
        return false;
    }
    source.Log = log->Log;
    warnings.addCalibration(rows, log->Instrument.Calibration);
    return true;
}

const MeasuredProtector* SampleSource::protector(const AssessmentProtector& worn, Warnings& warnings,
                                                 std::vector<SourceResult>& sources) const {
    const MeasuredProtector* found = measured_.protector(path_, worn);
    return isThere(found, *worn.Spectrum, {}, warnings, sources) ? found : nullptr;
}

void SampleSource::take(const LogRows& rows, const std::optional<std::string>& task, Warnings& warnings,
                        std::vector<SourceResult>& sources, SampleLevels& out) const {
    const auto isMissing = [&](Text::Id text, const std::string& word) {
        out.AreAllThere = false;
        out.MeasuredHours.reset();
        if (text != Text::None) warnings.bad(task, text, word);
    };
    const MeasuredRows* found = measured_.rows(path_, rows);
    if (!isThere(found, rows, task, warnings, sources)) return isMissing(Text::None, {});
    SourceResult& source = sources.back();
    if (found->Count == 0) return isMissing(Text::WarnNoRows, source.Log + " (" + rows.File + ")");
    const RowRange range{rows.From.value_or(1), rows.To.value_or(found->Count)};
    if (range.From < 1 || range.To < range.From || range.To > found->Count)
        return isMissing(Text::WarnRowsNotInLog, std::to_string(range.From) + "-" + std::to_string(range.To));
    source.From = range.From;
    source.To = range.To;
    const LogLevels& levels = found->Levels;
    raise(out.CPeak, levels.CPeak);
    raise(out.OtherPeak, levels.OtherPeak);
    if (!levels.Leq)
        return isMissing(levels.Origin == LevelsFrom::Nowhere ? Text::WarnNoAWeightedLevel : Text::WarnNoRowCounts,
                         source.Log);
    if (!isLevel(*levels.Leq)) return isMissing(Text::WarnLevelCannotBe, warnings.number(*levels.Leq));
    if (levels.Origin == LevelsFrom::Bands) warnings.add("weighting", task, Text::WarnFromBands, source.Log);
    if (levels.Origin == LevelsFrom::ChannelB) warnings.add("weighting", task, Text::WarnFromChannelB, source.Log);
    source.Leq = levels.Leq;
    out.Levels.push_back(*levels.Leq);
    if (out.MeasuredHours) *out.MeasuredHours += levels.Hours;
}

} // namespace kestrane

#include "assessment/Samples.h"

#include "assessment/AssessmentFile.h"
#include "assessment/LogLevels.h"
#include "platform/Format.h"
#include "platform/RuntimeError.h"
#include "platform/Sha256.h"

#include <algorithm>

namespace kestrane {

namespace {

constexpr double kHighestLevel = 200;
constexpr double kLongestDay = 24;

void raise(Figure& highest, const Figure& figure) {
    if (figure && (!highest || *figure > *highest)) highest = figure;
}

} // namespace

bool isLevel(double level) {
    return level > 0 && level <= kHighestLevel;
}

bool isDuration(double hours) {
    return hours > 0 && hours <= kLongestDay;
}

void Warnings::add(std::string_view code, const std::optional<std::string>& task, Text::Id text,
                   const std::string& first, const std::string& second) {
    AssessmentWarning warning{std::string(code), task,
                              ReplaceText(ReplaceText(session_.LoadText(text), "*", second), "^", first)};
    if (std::find(list_.begin(), list_.end(), warning) == list_.end()) list_.push_back(std::move(warning));
}

void Warnings::bad(const std::optional<std::string>& task, Text::Id text, const std::string& first) {
    add("bad-value", task, text, first);
}

std::string Warnings::number(double value) const {
    return formatNumber(value, "##0.0#", session_.locale);
}

SampleLevels SampleSource::gather(const std::vector<Sample>& samples, const std::optional<std::string>& task,
                                  Warnings& warnings, std::vector<SourceResult>& sources) {
    SampleLevels out;
    out.MeasuredHours = 0;
    for (const Sample& sample : samples) {
        if (const auto* rows = std::get_if<LogRows>(&sample)) {
            take(*rows, task, warnings, sources, out);
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

const std::string& SampleSource::hashOf(const std::string& file) {
    const auto [entry, isNew] = hashes_.try_emplace(file);
    if (isNew) {
        try {
            entry->second = sha256OfFile(file);
        } catch (const RuntimeError&) { // then there is no hash
        }
    }
    return entry->second;
}

const clsLog* SampleSource::log(const LogRows& rows, const std::optional<std::string>& task, Warnings& warnings,
                                std::vector<SourceResult>& sources) {
    const std::string path = dataFileOf(path_, rows.File);
    const std::string& hash = hashOf(path);
    sources.push_back({rows.File, hash, rows.Log, rows.From, rows.To, {}});
    const clsFile* file = hash.empty() ? nullptr : data_.File(path);
    if (file == nullptr) {
        warnings.bad(task, Text::WarnNotOpened, rows.File);
        return nullptr;
    }
    if (!rows.Sha256.empty() && rows.Sha256 != hash)
        warnings.add("file-changed", task, Text::WarnFileChanged, rows.File);
    const clsLog* log = logOfKey(*file, rows.Log);
    if (log == nullptr) {
        warnings.bad(task, Text::WarnNoLog, rows.Log + " (" + rows.File + ")");
    } else {
        sources.back().Log = keyOfLog(*file, *log);
    }
    return log;
}

void SampleSource::take(const LogRows& rows, const std::optional<std::string>& task, Warnings& warnings,
                        std::vector<SourceResult>& sources, SampleLevels& out) {
    const auto isMissing = [&](Text::Id text, const std::string& word) {
        out.AreAllThere = false;
        out.MeasuredHours.reset();
        if (text != Text::None) warnings.bad(task, text, word);
    };
    const clsLog* found = log(rows, task, warnings, sources);
    if (found == nullptr) return isMissing(Text::None, {});
    const std::int64_t count = found->LogIntervals.Count();
    SourceResult& source = sources.back();
    if (count == 0 || found->HasUnreadIntervals)
        return isMissing(Text::WarnNoRows, source.Log + " (" + rows.File + ")");
    const RowRange range{rows.From.value_or(1), rows.To.value_or(count)};
    if (range.From < 1 || range.To < range.From || range.To > count)
        return isMissing(Text::WarnRowsNotInLog, std::to_string(range.From) + "-" + std::to_string(range.To));
    source.From = range.From;
    source.To = range.To;
    const bool isWhole = !rows.From && !rows.To;
    const LogLevels levels = levelsOfRows(*found, isWhole ? std::nullopt : std::optional(range));
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

#include "reports/Provenance.h"

#include "calc/CalibrationText.h"
#include "calc/ExposureTime.h"
#include "model/Captions.h"
#include "model/LogParameters.h"
#include "model/Session.h"
#include "platform/Format.h"
#include "platform/RuntimeError.h"
#include "platform/Sha256.h"
#include "platform/Utf8.h"
#include "views/HistoryTable.h"
#include "views/RowTimes.h"

#include <algorithm>

namespace kestrane {

namespace {

constexpr std::size_t kMostRanges = 40;     // of excluded intervals that are told one by one
constexpr std::size_t kMostChanges = 8;     // that are told one by one, the newest
constexpr std::size_t kLongestChange = 200; // bytes

struct Source {
    const clsFile& file;
    const clsInsData& data;
    const clsLog& log;

    std::string words(Text::Id text) const { return log.session().LoadText(text); }
};

std::string hashOf(const Source& source) {
    if (source.file.JustAcquired()) return source.words(Text::NotSaved);
    try {
        const std::string hash = sha256OfFile(source.file.FileName);
        return source.file.IsUnsaved() ? hash + " (" + source.words(Text::ChangedSinceSaved) + ")" : hash;
    } catch (const RuntimeError& error) {
        return error.what();
    }
}

std::string firmwareOf(const Source& source) {
    const float version = source.log.FirmwareVersion;
    return version == 0 ? std::string()
                        : formatNumber(static_cast<double>(version), "0.00", source.log.session().locale);
}

std::string decibels(int level) {
    return std::to_string(level) + " dB";
}

// The exposure time and the figures that are made with it.
std::string exposureOf(const Source& source) {
    const std::string figures =
        levelCaption(source.log, kChannelA, eLepdET) + ", " + levelCaption(source.log, kChannelA, eDoseET);
    return ReplaceText(ReplaceText(source.words(Text::TimeForFigures), "^", exposureTimeLabel(source.log)), "*",
                       figures);
}

std::string spanOf(const RowTimes& times, std::size_t first, std::size_t last) {
    return first == last ? times.dateAndTime(first) : times.dateAndTime(first) + " - " + times.dateAndTime(last);
}

std::string shownRows(const Source& source) {
    const std::size_t rows = source.log.LogIntervals.Columns().count();
    if (rows == 0) return {};
    const std::string words = source.words(source.log.IsZoomed ? Text::RowsOfPart : Text::RowsOfLog);
    return ReplaceText(ReplaceText(words, "^", std::to_string(rows)), "*", spanOf(RowTimes(source.log), 0, rows - 1));
}

// The excluded rows, as stretches of rows next to each other.
std::string excludedRows(const Source& source) {
    const IntervalColumns& rows = source.log.LogIntervals.Columns();
    if (rows.count() == 0) return {};
    const auto flags = rows.cells(rows.isExcluded);
    const RowTimes times(source.log);
    std::string stretches;
    std::size_t count = 0;
    std::size_t told = 0;
    std::size_t left = 0;
    for (std::size_t row = 0; row < flags.size(); ++row) {
        if (flags[row] == 0) continue;
        const std::size_t first = row;
        while (row + 1 < flags.size() && flags[row + 1] != 0)
            ++row;
        count += row - first + 1;
        if (told == kMostRanges) {
            ++left;
            continue;
        }
        stretches += (told++ == 0 ? "" : "; ") + spanOf(times, first, row);
    }
    if (count == 0) return source.words(Text::NoneExcluded);
    if (left > 0) stretches += "; " + ReplaceText(source.words(Text::MoreRanges), "^", std::to_string(left));
    return withReason(
        source.log.session(),
        ReplaceText(ReplaceText(source.words(Text::ExcludedOf), "^", std::to_string(count)), "*", stretches),
        source.log.CutReason);
}

std::string shownChange(const Source& source, const HistoryLine& line) {
    const std::string change = changeText(source.log.session(), line);
    std::string text = ReplaceText(line.Time, "T", " ") + " " + line.What;
    if (!change.empty()) text = captioned(source.log.session(), text, change);
    return text.size() <= kLongestChange ? text : std::string(firstBytes(text, kLongestChange)) + "\u2026";
}

// What was done to the log and to its document, the oldest first; saves are no changes.
std::vector<std::string> changesOf(const Source& source) {
    std::vector<std::string> changes;
    for (const HistoryLine& line : source.file.History.lines()) {
        const bool isSave = line.OfFile && line.What == source.words(Text::HistorySaved);
        if (!isSave && (line.Log.empty() || line.Log == source.log.Name)) changes.push_back(shownChange(source, line));
    }
    if (changes.size() <= kMostChanges) return changes;
    const std::size_t earlier = changes.size() - kMostChanges;
    changes.erase(changes.begin(), changes.begin() + static_cast<std::ptrdiff_t>(earlier));
    changes.push_back(ReplaceText(source.words(Text::EarlierChanges), "^", std::to_string(earlier)));
    return changes;
}

// The levels, the offset and the warning of a drift, as sentences.
std::string calibrationOf(const Source& source) {
    std::string text;
    for (const std::string& part :
         {calibrationLevels(source.log), calibrationOffset(source.log), calibrationWarning(source.log)})
        if (!part.empty()) text += (text.empty() ? "" : "; ") + part;
    return text;
}

// A row of the block. One whose value is empty is left out.
struct Row {
    Text::Id caption;
    std::string (*value)(const Source& source);
};

constexpr Row kRows[] = {
    {Text::ProgramLabel, [](const Source& source) { return source.words(Text::ProgramAndVersion); }},
    {Text::DataFileLabel, [](const Source& source) { return source.file.FileName; }},
    {Text::FileHash, hashOf},
    {Text::Instrument, [](const Source& source) { return source.log.InsName; }},
    {Text::SerialNumber, [](const Source& source) { return source.data.InsSerial; }},
    {Text::Firmware, firmwareOf},
    {Text::MeasuringRange, [](const Source& source) { return source.log.Range; }},
    {Text::Threshold, [](const Source& source) { return source.log.Threshold; }},
    {Text::CriterionLevel, [](const Source& source) { return decibels(source.log.Criterion); }},
    {Text::ExchangeRate, [](const Source& source) { return decibels(source.log.Exchange); }},
    {Text::ExposureTime, exposureOf},
    {Text::Lepd,
     [](const Source& source) {
         return source.log.LepdETCumA.CalcValue() > 0 ? source.words(Text::LepdMeaning) : std::string();
     }},
    {Text::RowsLabel, shownRows},
    {Text::CalibrationLabel, calibrationOf},
    {Text::ExcludedLabel, excludedRows},
};

} // namespace

std::vector<DetailLine> provenanceLines(const clsFile& file, const clsInsData& data, const clsLog& log) {
    const Source source{file, data, log};
    std::vector<DetailLine> lines;
    for (const Row& row : kRows) {
        std::string value = row.value(source);
        if (!value.empty())
            lines.push_back({withColon(log.session(), source.words(row.caption)) + " ", std::move(value)});
    }
    std::vector<std::string> changes = changesOf(source);
    for (std::string& change : changes)
        lines.push_back(
            {&change == &changes.front() ? withColon(log.session(), source.words(Text::ChangesLabel)) + " " : "",
             std::move(change)});
    return lines;
}

} // namespace kestrane

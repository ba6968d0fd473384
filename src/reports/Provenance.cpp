#include "reports/Provenance.h"

#include "calc/CalibrationText.h"
#include "calc/ExposureTime.h"
#include "model/Captions.h"
#include "model/LogParameters.h"
#include "model/Session.h"
#include "platform/Files.h"
#include "platform/Format.h"
#include "platform/RuntimeError.h"
#include "platform/Sha256.h"
#include "views/HistoryTable.h"
#include "views/LogHistory.h"
#include "views/RowTimes.h"

#include <algorithm>

namespace kestrane {

namespace {

constexpr std::size_t kLongestValue = 150; // bytes, of what a change made of another
constexpr std::size_t kMostRanges = 40;    // of excluded intervals that are told one by one
constexpr std::size_t kMostChanges = 8;    // that are told one by one, the newest

struct Source {
    const clsFile& file;
    const clsInsData& data;
    const clsLog& log;

    std::string words(Text::Id text) const { return log.session().LoadText(text); }
};

// The hash of the file of which the figures are: when another program has written it since, not that of the file that
// is there now. What came from a pipe is not there to be read again.
std::string hashOf(const Source& source) {
    const clsFile& file = source.file;
    if (file.JustAcquired()) return source.words(Text::NotSaved);
    std::string hash = file.OnDisk.Hash;
    std::string remarks;
    const auto remark = [&](bool isTrue, Text::Id text) {
        if (isTrue) remarks += (remarks.empty() ? " (" : "; ") + source.words(text);
    };
    try {
        if (isRegularFile(file.FileName)) {
            const std::string now = sha256OfFile(file.FileName);
            remark(!hash.empty() && hash != now, Text::ChangedByOtherSince);
            if (hash.empty()) hash = now;
        }
    } catch (const RuntimeError& error) {
        if (hash.empty()) return error.what();
    }
    if (hash.empty()) return source.words(Text::NotSaved);
    remark(file.IsUnsaved(), Text::ChangedSinceSaved);
    return hash + remarks + (remarks.empty() ? "" : ")");
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

// The reason stands in front of the values, so that it is there however many these are.
std::string shownChange(const Source& source, const LogChange& change) {
    const std::string details = changeText(change.Line, kLongestValue);
    std::string text = withReason(source.log.session(),
                                  ReplaceText(change.Line.Time, "T", " ") + " " + change.Line.What, change.Line.Reason);
    if (!change.IsCertain) text += " (" + source.words(Text::OfAnotherOfItsName) + ")";
    return details.empty() ? text : captioned(source.log.session(), text, details);
}

// The newest changes, and how many there were before them. A history that is there and cannot be read comes first.
std::vector<std::string> shownChanges(const Source& source) {
    const std::vector<LogChange> all = changesOf(source.file, source.data, source.log);
    const std::size_t earlier = all.size() - std::min(all.size(), kMostChanges);
    std::vector<std::string> changes;
    if (!source.file.History.Fault.empty()) changes.push_back(source.words(Text::HistoryNotRead));
    for (std::size_t i = earlier; i < all.size(); ++i)
        changes.push_back(shownChange(source, all[i]));
    if (earlier > 0) changes.push_back(ReplaceText(source.words(Text::EarlierChanges), "^", std::to_string(earlier)));
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
    {Text::DataFileLabel, [](const Source& source) { return source.file.ShortenedFileName(); }},
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
    std::vector<std::string> changes = shownChanges(source);
    for (std::string& change : changes)
        lines.push_back(
            {&change == &changes.front() ? withColon(log.session(), source.words(Text::ChangesLabel)) + " " : "",
             std::move(change)});
    return lines;
}

} // namespace kestrane

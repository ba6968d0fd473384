#include "explorer/HistoryText.h"

#include "calc/ExposureTime.h"
#include "model/InEnglish.h"
#include "model/LogParameters.h"
#include "platform/Utf8.h"
#include "views/CalibrationText.h"

#include <array>

namespace kestrane {

namespace {

constexpr std::size_t kLongestValue = 1000; // bytes

std::string decibels(int level) {
    return std::to_string(level) + " dB";
}

std::string selectionOf(const clsLog& log) {
    std::string ranges;
    for (const std::string& cut : log.LogIntervals.CutIntervals)
        ranges += (ranges.empty() ? "" : ", ") + ReplaceText(cut, "~", "-");
    if (ranges.empty()) return log.session().LoadText(Text::NoneExcluded);
    const bool isIncluded = log.LogIntervals.IntervalsToBeIncluded;
    return PlainCaption(log.session().LoadText(isIncluded ? Text::IncludeInDisplay : Text::ExcludeFromDisplay)) + " " +
           ranges;
}

std::string exposureRowsOf(const clsLog& log) {
    std::string rows;
    for (const clsDoseLogSample& row : log.DoseLogIntervals)
        rows += (rows.empty() ? "" : ", ") +
                row.Leq.Format(Zeros::Shown, Reading::Computed, kDecibelFormat, log.session().locale) + " " +
                row.Duration.hh_mm_ss() + (row.IsIncluded ? "" : " -") + (row.Note.empty() ? "" : " ") + row.Note;
    return rows;
}

// What a log is calculated by, and what the user has written. Texts of the table have a mnemonic or a colon.
struct Fact {
    Text::Id caption;
    std::string (*value)(const clsLog& log);
};

constexpr Fact kFacts[] = {
    {Text::FrequencyWeighting, [](const clsLog& log) { return log.FreqWeightA(); }},
    {Text::CriterionLevel, [](const clsLog& log) { return decibels(log.Criterion); }},
    {Text::ExchangeRate, [](const clsLog& log) { return decibels(log.Exchange); }},
    {Text::ExposureTime, [](const clsLog& log) { return exposureTimeText(log.objLogOptions.ExposureTime); }},
    {Text::LastUserCalibration, [](const clsLog& log) { return log.CalibDate.Format(); }},
    {Text::StepCalibration, calibrationLevels},
    {Text::CalibrationOffsetLabel, calibrationOffset},
    {Text::StepIntervalSelection, selectionOf},
    {Text::StepNote, [](const clsLog& log) { return log.Note; }},
    {Text::StepExposureRows, exposureRowsOf},
};

std::string figureOf(const clsLog& log, LogChannel channel, Parameter parameter) {
    return cumulativeValue(log, channel, parameter, 0)
        .Format(Zeros::Blank, Reading::Computed, reportFormat(parameterInfo(parameter).unit), log.session().locale);
}

std::string shortened(const std::string& value) {
    return value.size() <= kLongestValue ? value : std::string(firstBytes(value, kLongestValue)) + "\u2026";
}

} // namespace

void describeChange(const clsLog& before, const clsLog& after, HistoryLine& line) {
    const InEnglish inEnglish(after.session());
    if (line.Log.empty()) line.Log = after.Name; // it may have got another name since
    line.Before.clear();
    line.After.clear();
    const auto compare = [&line](const std::string& caption, const std::array<std::string, 2>& values) {
        if (values[0] == values[1]) return;
        const std::string begin = (line.Before.empty() ? "" : "; ") + caption + ": ";
        line.Before += begin + shortened(values[0]);
        line.After += begin + shortened(values[1]);
    };
    for (const Fact& fact : kFacts)
        compare(after.session().LoadText(fact.caption), {fact.value(before), fact.value(after)});
    for (const LogChannel channel : kChannels) {
        if (channel == kChannelB && !after.IsChannelBOn) continue;
        for (const Parameter parameter : kParameters) {
            if (parameter == eOverload) continue;
            compare(VariableCaption(after.session(), parameter, channel, kNoBand, &after),
                    {figureOf(before, channel, parameter), figureOf(after, channel, parameter)});
        }
    }
    if (selectionOf(before) != selectionOf(after) || before.CutReason != after.CutReason) line.Reason = after.CutReason;
}

} // namespace kestrane

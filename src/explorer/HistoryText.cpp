#include "explorer/HistoryText.h"

#include "calc/CalibrationText.h"
#include "calc/ExposureTime.h"
#include "calc/Recalculation.h"
#include "model/LogParameters.h"
#include "model/Speaking.h"
#include "platform/Utf8.h"

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

// Calls visit(channel, parameter) for each cumulative figure that a log can have.
template <class Visit>
void forEachFigure(const clsLog& log, Visit&& visit) {
    for (const LogChannel channel : kChannels)
        for (const Parameter parameter : kParameters)
            if (parameter != eOverload && (channel != kChannelB || log.IsChannelBOn)) visit(channel, parameter);
}

std::string figureText(const clsLog& log, Parameter parameter, const clsValue& figure) {
    const std::string_view usual = reportFormat(parameterInfo(parameter).unit);
    return figure.Format(Zeros::Blank, Reading::Computed,
                         parameter == ePa2Hr ? pa2HoursFormat(figure.CalcValue(), usual) : usual, log.session().locale);
}

// A figure that was not computed with the log's present dose is marked: it says another thing than the dose beside it.
std::string figureOf(const clsLog& log, LogChannel channel, Parameter parameter) {
    std::string text = figureText(log, parameter, cumulativeValue(log, channel, parameter, 0));
    const bool isOfReportedDose = parameter == eTWA && !reportedNote(log, kChannelA, eDoseET).empty();
    if (!text.empty() && (isOfReportedDose || isToBeRecalculated(log, channel, parameter)))
        text += " (" + log.session().LoadText(Text::OfEarlierDose) + ")";
    return text;
}

std::string shortened(const std::string& value) {
    return value.size() <= kLongestValue ? value : std::string(firstBytes(value, kLongestValue)) + "\u2026";
}

void compare(HistoryLine& line, const std::string& caption, const std::array<std::string, 2>& values) {
    if (values[0] == values[1]) return;
    const std::string begin = (line.Before.empty() ? "" : "; ") + caption + ": ";
    line.Before += begin + shortened(values[0]);
    line.After += begin + shortened(values[1]);
}

} // namespace

KeptFigures::KeptFigures(const clsLog& log) {
    forEachFigure(log, [&](LogChannel channel, Parameter parameter) {
        figures_.push_back(cumulativeValue(log, channel, parameter, 0));
    });
}

bool KeptFigures::describe(const clsLog& now, HistoryLine& line) const {
    const Speaking english = inEnglish(now.session());
    auto before = figures_.begin();
    forEachFigure(now, [&](LogChannel channel, Parameter parameter) {
        if (before == figures_.end()) return;
        const clsValue& figure = *before++;
        if (figure.CalcValue() == 0 || figure == cumulativeValue(now, channel, parameter, 0)) return;
        compare(line, VariableCaption(now.session(), parameter, channel, kNoBand, &now),
                {figureText(now, parameter, figure), figureOf(now, channel, parameter)});
    });
    return !line.Before.empty();
}

void describeChange(const clsLog& before, const clsLog& after, HistoryLine& line) {
    const Speaking english = inEnglish(after.session());
    line.Before.clear();
    line.After.clear();
    for (const Fact& fact : kFacts)
        compare(line, after.session().LoadText(fact.caption), {fact.value(before), fact.value(after)});
    forEachFigure(after, [&](LogChannel channel, Parameter parameter) {
        compare(line, VariableCaption(after.session(), parameter, channel, kNoBand, &after),
                {figureOf(before, channel, parameter), figureOf(after, channel, parameter)});
    });
    if (selectionOf(before) != selectionOf(after) || before.CutReason != after.CutReason) line.Reason = after.CutReason;
}

} // namespace kestrane

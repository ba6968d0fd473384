#include "reports/ReportTables.h"

#include "assessment/Criteria.h"
#include "assessment/CriteriaTable.h"
#include "calc/BandLevels.h"
#include "calc/ExposureTime.h"
#include "calc/Recalculation.h"
#include "model/Captions.h"
#include "model/LogParameters.h"
#include "model/LogTime.h"
#include "model/Session.h"
#include "platform/RuntimeError.h"
#include "views/Zoom.h"

#include <algorithm>

namespace kestrane {

namespace {

constexpr std::string_view kNeverRecorded = "\u2013"; // so that it does not look like a fault
constexpr float kUsualHours = 8;                      // hours; this exposure time need not be mentioned

// Without a date there is no time either: it would be midnight only because nobody set it.
std::string timeOf(const clsLog& log, const clsTime& time) {
    return log.StartDate.Format().empty() ? std::string() : time.hh_mm_ss();
}

std::string dottedLine() {
    constexpr std::size_t kDots = 54;
    return std::string(kDots, '.');
}

std::string decibels(int level) {
    return std::to_string(level) + " dB";
}

// The details block, from its first line to its last. A row without a caption is a blank line.
struct DetailRow {
    Text::Id caption = Text::None;
    std::string (*value)(const clsInsData& data, const clsLog& log) = nullptr;
    bool hasSpaceAbove = false;
    bool isToSign = false;
};

constexpr DetailRow kDetails[] = {
    {Text::LogName, [](const clsInsData&, const clsLog& log) { return log.Name; }},
    {Text::Instrument, [](const clsInsData&, const clsLog& log) { return log.InsName; }},
    {Text::SerialNumber, [](const clsInsData& data, const clsLog&) { return data.InsSerial; }},
    {Text::FactoryCalibrationDue,
     [](const clsInsData&, const clsLog& log) { return LongDate(log.session(), log.FactoryCalibDate); }},
    {Text::LastUserCalibration,
     [](const clsInsData&, const clsLog& log) { return LongDate(log.session(), log.CalibDate); }},
    {},
    {Text::None, nullptr, true},
    {Text::LogStartDate, [](const clsInsData&, const clsLog& log) { return LongDate(log.session(), log.StartDate); }},
    {Text::LogEndDate, [](const clsInsData&, const clsLog& log) { return LongDate(log.session(), log.EndDate); }},
    {Text::LogStartTime, [](const clsInsData&, const clsLog& log) { return timeOf(log, log.StartTime); }},
    {Text::LogEndTime, [](const clsInsData&, const clsLog& log) { return timeOf(log, log.EndTime); }},
    {Text::LogLength, [](const clsInsData&, const clsLog& log) { return LogLengthText(log); }},
    {Text::LogIntervalLength, [](const clsInsData&, const clsLog& log) { return log.IntervalText(); }},
    {Text::LogType, [](const clsInsData&, const clsLog& log) { return log.ModeText(); }},
    {Text::LnsRecorded, [](const clsInsData&, const clsLog& log) { return log.IsLnNumbersOnText(); }},
    {Text::CriterionLevel, [](const clsInsData&, const clsLog& log) { return decibels(log.Criterion); }},
    {Text::ExchangeRate, [](const clsInsData&, const clsLog& log) { return decibels(log.Exchange); }},
    {},
    {Text::LogLocation, [](const clsInsData&, const clsLog&) { return dottedLine(); }, true, true},
    {},
    {Text::RecordedBy, [](const clsInsData&, const clsLog&) { return dottedLine(); }, true, true},
    {},
    {Text::Signature, [](const clsInsData&, const clsLog&) { return dottedLine(); }, true, true},
};

// The rows of the cumulative table that precede its figures. channelB is null when channel B has no text of its own.
struct WordRow {
    Text::Id caption = Text::None;
    std::string (*channelA)(const clsLog& log);
    std::string (*channelB)(const clsLog& log) = nullptr;
};

constexpr WordRow kCumulativeWords[] = {
    {Text::FrequencyWeighting, [](const clsLog& log) { return log.FreqWeightA(); },
     [](const clsLog& log) { return log.FreqWeightB(); }},
    {Text::TimeWeighting, [](const clsLog& log) { return log.TimeWeightA(); },
     [](const clsLog& log) { return log.TimeWeightB(); }},
    {Text::OverloadOccurred, [](const clsLog& log) { return log.IsLoggingOverLoadedText(); }},
    {Text::ModeLabel, [](const clsLog& log) { return log.ModeText(); }},
};

constexpr Parameter kCumulativeFigures[] = {
    eLeq,   ePeak,  eLmin,  eLmax,  eLe_Sel, eLepdET, eDoseET, eDoseHour, ePa2Hr,  eLn(1),
    eLn(2), eLn(3), eLn(4), eLn(5), eLn(6),  eLn(7),  eLn(8),  eLn(9),    eLn(10),
};

constexpr LevelColumn kFrequencyColumns[] = {{eLeq}, {eLmin}, {eLmax}};

constexpr LevelColumn kIntervalColumns[] = {
    {eLeq}, {eLmin}, {eLmax}, {ePeak}, {eLepdET, true}, {eLe_Sel, true},
};

bool isListed(const clsLog& log, Parameter parameter) {
    const int ln = lnOf(parameter);
    if (ln == 0) return true;
    try {
        return log.LnNumberA(ln) != 0 && IsLnCumulativeValid(log, kChannelA, ln);
    } catch (const RuntimeError&) { // the length is out of range
        return false;
    }
}

// The caption of a figure. In a log with channel B, a level whose name contains the weighting has the names of both
// channels.
std::string figureCaption(const clsLog& log, Parameter parameter) {
    if (lnOf(parameter) != 0) return "L" + std::to_string(log.LnNumberA(lnOf(parameter)));
    const std::string channelA = levelCaption(log, kChannelA, parameter);
    return log.IsChannelBOn && parameter <= ePeak ? channelA + "/" + levelCaption(log, kChannelB, parameter) : channelA;
}

// Whether a dose was computed without a level: on paper it would read like a measured 0 %.
bool isDoseOfNothing(const clsLog& log, LogChannel channel, Parameter parameter, const clsValue& value) {
    return parameterInfo(parameter).unit == ParameterUnit::Percent && value.Value() == 0 &&
           cumulativeValue(log, channel, eLeq, 0).CalcValue() == 0;
}

std::string figure(const clsLog& log, const clsLogOptions& options, LogChannel channel, Parameter parameter) {
    if (isNeverRecorded(log, parameter)) return std::string(kNeverRecorded);
    if (!options.Plottable(channel, kCumulative, parameter)) return {};
    const clsValue value = cumulativeValue(log, channel, parameter, 0);
    if (isDoseOfNothing(log, channel, parameter, value)) return {};
    const std::string_view usual = reportFormat(parameterInfo(parameter).unit);
    const std::string format = parameter == ePa2Hr ? pa2HoursFormat(value.CalcValue(), usual) : std::string(usual);
    std::string text = value.Format(Zeros::Blank, Reading::Computed, format, log.session().locale);
    if (text.empty()) return text;
    const std::string note = reportedNote(log, channel, parameter);
    const std::string& weighting = channel == kChannelA ? log.FreqWeightA() : log.FreqWeightB();
    const bool isOtherPeak = parameter == ePeak && weighting != "C";
    std::string figure = text + (note.empty() ? note : " " + note);
    if (isOtherPeak) figure += " (" + log.session().LoadText(Text::NotCWeighted) + ")";
    return withWeightingMark(log, channel, parameter, std::move(figure));
}

} // namespace

std::span<const LevelColumn> intervalColumns() {
    return kIntervalColumns;
}

std::string datedHeading(const Session& session, const std::string& words, std::initializer_list<std::string> times) {
    std::string when;
    for (const std::string& time : times)
        when += when.empty() || time.empty() ? time : ", " + time;
    return when.empty() ? words : captioned(session, words, when);
}

std::vector<DetailLine> detailLines(const clsInsData& data, const clsLog& log) {
    std::vector<DetailLine> lines;
    for (const DetailRow& row : kDetails) {
        const std::string caption = row.caption == Text::None
                                        ? std::string()
                                        : withColon(log.session(), log.session().LoadText(row.caption)) + " ";
        lines.push_back(
            {caption, row.value == nullptr ? std::string() : row.value(data, log), row.hasSpaceAbove, row.isToSign});
    }
    return lines;
}

ReportTable cumulativeTable(const clsLog& log) {
    const Session& session = log.session();
    const clsLogOptions options = displayOptions(log);
    ReportTable table;
    const std::string start = LongDate(log.session(), log.StartDate);
    table.Heading = datedHeading(session, session.LoadText(Text::CumulativeData),
                                 {start, start.empty() ? start : log.StartTime.hh_mm()});
    table.Remark = wholeFiguresLine(log);
    table.NameWidth = "XXFrequency WeightingXX";
    table.Captions =
        log.IsChannelBOn
            ? std::vector<std::string>{{}, session.LoadText(Text::ChannelA), session.LoadText(Text::ChannelB)}
            : std::vector<std::string>{{}, session.LoadText(Text::DataWord)};
    const auto add = [&](std::string caption, std::string channelA, std::string channelB) {
        table.Rows.push_back({std::move(caption), std::move(channelA)});
        if (log.IsChannelBOn) table.Rows.back().push_back(std::move(channelB));
    };
    for (const WordRow& row : kCumulativeWords)
        add(session.LoadText(row.caption), row.channelA(log),
            row.channelB == nullptr ? std::string() : row.channelB(log));
    if (exposureTimeText(log.objLogOptions.ExposureTime) != exposureTimeText(kUsualHours))
        add(session.LoadText(Text::ExposureTime), exposureTimeLabel(log), {});
    for (const Parameter parameter : kCumulativeFigures) {
        if (!isListed(log, parameter)) continue;
        add(figureCaption(log, parameter), figure(log, options, kChannelA, parameter),
            figure(log, options, kChannelB, parameter));
    }
    return table;
}

ReportTable frequencyTable(const clsLog& log) {
    const Session& session = log.session();
    ReportTable table;
    table.Heading = session.LoadText(Text::FrequencyData);
    if (log.IsChannelBOn) table.Heading += " (" + session.LoadText(Text::ChannelA) + ")";
    table.Remark = wholeFiguresLine(log);
    table.NameWidth = "XXXFreq(Hz)";
    table.Captions = {session.LoadText(Text::FreqHz)};
    for (const LevelColumn& column : kFrequencyColumns)
        table.Captions.push_back(levelCaption(log, kChannelA, column.parameter));
    for (int band = 1; band <= lastBand(log.Mode()); ++band) {
        std::vector<std::string> row = {std::string(log.eStr(band))};
        for (const LevelColumn& column : kFrequencyColumns)
            row.push_back(cumulativeValue(log, kChannelA, column.parameter, band)
                              .Format(Zeros::Blank, Reading::Computed, kDecibelFormat, session.locale));
        table.Rows.push_back(std::move(row));
    }
    return table;
}

ReportTable criteriaReportTable(const clsLog& log) {
    // The columns of the table that there is room for, in their order.
    constexpr CriteriaColumn kColumns[] = {CriteriaColumn::Title,         CriteriaColumn::LEX8h,
                                           CriteriaColumn::ProjectedDose, CriteriaColumn::ProjectedTWA,
                                           CriteriaColumn::Limits,        CriteriaColumn::Remark};
    ReportTable table;
    if (!criteriaOf(log, std::nullopt).LAeq) return table;
    const CriteriaTable criteria = criteriaTable(log);
    table.Heading = log.session().LoadText(Text::TabCriteria);
    for (const CriteriaColumn column : kColumns)
        table.Captions.push_back(criteria.Captions[static_cast<std::size_t>(column)]);
    for (const auto& cells : criteria.Rows) {
        std::vector<std::string>& row = table.Rows.emplace_back();
        for (const CriteriaColumn column : kColumns)
            row.push_back(cells[static_cast<std::size_t>(column)]);
    }
    return table;
}

} // namespace kestrane

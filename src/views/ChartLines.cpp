#include "views/ChartLines.h"

#include "calc/BandLevels.h"
#include "calc/CriterionRules.h"
#include "calc/PossibleLevel.h"
#include "calc/RowAnalysis.h"
#include "model/LogParameters.h"
#include "model/Session.h"
#include "model/SettingsText.h"
#include "platform/Numbers.h"
#include "views/ChartParts.h"
#include "views/Distribution.h"
#include "views/RangeTable.h"

#include <algorithm>
#include <array>
#include <map>
#include <utility>

namespace kestrane {

namespace {

constexpr std::string_view kSection = "Chart";
constexpr std::string_view kLimits = "LimitLines";
constexpr std::string_view kOwnLevels = "OwnLevels";
constexpr std::string_view kRunning = "RunningSeries";
constexpr std::string_view kFromBands = "LevelFromBands";
constexpr std::string_view kMarks = "SeriesMarks";
constexpr std::array<std::pair<LimitLines, const char*>, 5> kNames = {{{LimitLines::None, "None"},
                                                                       {LimitLines::Usual, "Usual"},
                                                                       {LimitLines::Criterion, "Criterion"},
                                                                       {LimitLines::Own, "Own"},
                                                                       {LimitLines::Criteria, "Criteria"}}};

// Directive 2003/10/EC, Article 3.
constexpr std::array kUsualLevels = {80.0, 85.0, 87.0};
constexpr std::array kUsualPeaks = {135.0, 137.0, 140.0};

void addLine(ChartData& chart, const Session& session, Text::Id text, double level) {
    chart.Lines.push_back({level, ReplaceText(session.LoadText(text), "^", shortNumber(session, level))});
}

void addCriteria(ChartData& chart, const clsLog& log) {
    constexpr double kSame = 100; // levels are compared in hundredths of a dB
    std::vector<CriterionRule> rules = criterionRules();
    if (log.Exchange > 0) rules.push_back(ownRule(log.Criterion, {}, log.Exchange));
    std::map<double, std::string> titles; // of the criteria, by level
    for (const CriterionRule& rule : rules) {
        for (const LimitRule& limit : rule.Limits) {
            std::string& title = titles[roundHalfAway(levelOfLimit(rule, limit) * kSame) / kSame];
            title += (title.empty() ? "" : ", ") + log.session().LoadText(rule.Title);
        }
    }
    for (const auto& [level, title] : titles) {
        addLine(chart, log.session(), Text::LimitLine, level);
        chart.Lines.back().Label += " (" + title + ")";
    }
}

bool hasCPeak(const clsLog& log) {
    const clsLogOptions options = displayOptions(log);
    return (log.FreqWeightA() == "C" && options.IsPlotted(kChannelA, kInterval, ePeak)) ||
           (log.IsChannelBOn && log.FreqWeightB() == "C" && options.IsPlotted(kChannelB, kInterval, ePeak));
}

void addLimits(ChartData& chart, const clsLog& log, const ChartLines& lines) {
    const Session& session = log.session();
    const bool isAWeighted = log.FreqWeightA() == "A";
    if (lines.Limits == LimitLines::Usual) {
        for (const double level : kUsualLevels)
            if (isAWeighted) addLine(chart, session, Text::LimitLine, level);
        for (const double level : kUsualPeaks)
            if (hasCPeak(log)) addLine(chart, session, Text::LimitLinePeak, level);
    } else if (lines.Limits == LimitLines::Criterion && isAWeighted) {
        addLine(chart, session, Text::LimitLine, log.Criterion);
    } else if (lines.Limits == LimitLines::Criteria && isAWeighted) {
        addCriteria(chart, log);
    } else if (lines.Limits == LimitLines::Own) {
        for (const double level : typedNumbers(lines.OwnLevels, kHighestLevel, session.locale).Numbers)
            addLine(chart, session, Text::LimitLine, level);
    }
}

// Where the exposure comes from: the levels of channel A, unless they are known to be weighted otherwise.
LevelsFrom exposureLevels(const clsLog& log) {
    return isExposureNotAWeighted(log, kChannelA, eLepdET) ? aWeightedLevels(log) : LevelsFrom::ChannelA;
}

std::string nameOfLevels(const clsLog& log, LevelsFrom origin) {
    if (origin == LevelsFrom::Bands) return log.session().LoadText(nameOfLAeqFromBands(log));
    const LogChannel channel = origin == LevelsFrom::ChannelB ? kChannelB : kChannelA;
    return VariableCaption(log.session(), eLeq, channel, kNoBand, &log);
}

// Without A-weighted levels there is no exposure: only the level of channel A is shown, under its own name.
void addRunning(ChartData& chart, const clsLog& log) {
    const Session& session = log.session();
    const LevelsFrom found = exposureLevels(log);
    const bool isLevelAlone = found == LevelsFrom::Nowhere;
    const LevelsFrom origin = isLevelAlone ? LevelsFrom::ChannelA : found;
    const std::vector<AnalysedRow> rows = analysedRows(log, origin);
    const std::vector<RunningFigures> figures = runningFigures(rows, log.Criterion, log.Exchange);
    const std::vector<float> none(chart.RowCount, kNullValue);
    const std::string name = nameOfLevels(log, origin);
    const std::string basis = origin == LevelsFrom::ChannelA ? std::string() : " (" + name + ")";
    const std::string dose =
        ReplaceText(ReplaceText(session.LoadText(Text::RunningDose), "^", std::to_string(log.Criterion)), "*",
                    std::to_string(log.Exchange));
    ChartSeries mean = {ReplaceText(session.LoadText(Text::RunningLAeq), "^", name), ChartAxis::Primary, none};
    ChartSeries lex = {session.LoadText(Text::RunningLex) + basis, ChartAxis::Primary, none};
    ChartSeries part = {dose + basis, ChartAxis::Secondary, none};
    for (std::size_t i = 0; i < rows.size(); ++i) {
        const auto row = static_cast<std::size_t>(rows[i].Number - 1);
        mean.Values[row] = static_cast<float>(figures[i].LAeq);
        if (figures[i].Lex8h) lex.Values[row] = static_cast<float>(*figures[i].Lex8h);
        if (figures[i].Dose) part.Values[row] = static_cast<float>(*figures[i].Dose);
    }
    chart.Series.push_back(std::move(mean));
    if (isLevelAlone) return;
    chart.Series.push_back(std::move(lex));
    chart.Series.push_back(std::move(part));
    const std::string percent = session.LoadText(Text::Percent);
    if (chart.SecondaryTitle.find(percent) == std::string::npos)
        chart.SecondaryTitle += (chart.SecondaryTitle.empty() ? "" : " / ") + percent;
    chart.HasSecondaryAxis = true;
}

void addFromBands(ChartData& chart, const clsLog& log) {
    std::vector<float> levels = levelsOfRowsFromBands(log, Quantity::LeqA, "A");
    if (log.FreqWeightA() == "A" || levels.empty()) return;
    std::ranges::transform(levels, levels.begin(), chartValue);
    chart.Series.push_back({log.session().LoadText(nameOfLAeqFromBands(log)), ChartAxis::Primary, std::move(levels)});
}

// A switch that is not understood is off.
bool readSwitch(const Session& session, std::string_view key) {
    bool isOn = false;
    try {
        fromSettingsText(session.settings.read(kSection, key, settingsText(false)), isOn);
    } catch (const RuntimeError&) { // it is no Boolean
        return false;
    }
    return isOn;
}

} // namespace

ChartLines readChartLines(const Session& session) {
    ChartLines lines;
    const std::string limits = session.settings.read(kSection, kLimits, kNames.front().second);
    for (const auto& [value, name] : kNames)
        if (limits == name) lines.Limits = value;
    lines.OwnLevels = session.settings.read(kSection, kOwnLevels, {});
    lines.IsRunningShown = readSwitch(session, kRunning);
    lines.IsFromBandsShown = readSwitch(session, kFromBands);
    lines.AreSeriesMarked = readSwitch(session, kMarks);
    return lines;
}

void storeChartLines(Session& session, const ChartLines& lines) {
    session.settings.write(kSection, kLimits, kNames.at(static_cast<std::size_t>(lines.Limits)).second);
    session.settings.write(kSection, kOwnLevels, lines.OwnLevels);
    session.settings.write(kSection, kRunning, settingsText(lines.IsRunningShown));
    session.settings.write(kSection, kFromBands, settingsText(lines.IsFromBandsShown));
    session.settings.write(kSection, kMarks, settingsText(lines.AreSeriesMarked));
}

void addChartLines(ChartData& chart, const clsLog& log, const ChartLines& lines) {
    addLimits(chart, log, lines);
    if (lines.IsFromBandsShown) addFromBands(chart, log);
    if (lines.IsRunningShown) addRunning(chart, log);
}

} // namespace kestrane

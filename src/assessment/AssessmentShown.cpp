#include "assessment/AssessmentShown.h"

#include "model/Captions.h"
#include "platform/Format.h"
#include "protection/RankTable.h"

#include <algorithm>
#include <cmath>

namespace kestrane {

namespace {

using Column = AssessmentColumn;
using Kind = AssessmentKind;

constexpr const char* kNone = "\u2013";

std::string number(const Session& session, const Figure& figure, std::string_view pattern) {
    return figure ? formatNumber(*figure, pattern, session.locale) : std::string(kNone);
}

std::string plainLevel(const Session& session, const Figure& level) {
    return level ? formatNumber(*level, "##0.0", session.locale) : std::string();
}

std::string& cell(AssessmentRow& row, Column column) {
    return row.Cells[static_cast<std::size_t>(column)];
}

class Rows {
public:
    Rows(const Session& session, const Assessment& assessment, const std::string& path, const Measurements& measured) :
        session_(session), assessment_(assessment), path_(path), measured_(measured) {}

    AssessmentRow ofGroup(std::size_t at, const GroupResult& result) const {
        const AssessmentGroup& group = assessment_.Groups[at];
        AssessmentRow row = entered({Kind::Group, at});
        cell(row, Column::Level) = plainLevel(session_, result.LEX8h);
        if (group.Strategy == Strategy::Task) {
            for (std::size_t task = 0; task < group.Tasks.size(); ++task)
                row.Children.push_back(ofTask(at, task, result));
        } else {
            addRows(row, group.Samples);
        }
        if (group.Week.empty()) return row;
        AssessmentRow week = entered({Kind::Week, at});
        cell(week, Column::Name) = session_.LoadText(Text::Week);
        cell(week, Column::Level) = plainLevel(session_, result.LEXw);
        for (std::size_t day = 0; day < group.Week.size(); ++day) {
            AssessmentRow of = entered({Kind::Day, at, {}, day});
            cell(of, Column::Level) =
                plainLevel(session_, group.Week[day].LEX8h ? group.Week[day].LEX8h : result.LEX8h);
            week.Children.push_back(std::move(of));
        }
        row.Children.push_back(std::move(week));
        return row;
    }

private:
    AssessmentRow entered(const AssessmentPlace& place) const {
        AssessmentRow row{place, {}, {}};
        for (std::size_t column = 0; column < kAssessmentColumns; ++column)
            row.Cells[column] = enteredText(session_, assessment_, place, static_cast<Column>(column));
        return row;
    }

    AssessmentRow ofTask(std::size_t group, std::size_t at, const GroupResult& result) const {
        AssessmentRow row = entered({Kind::Task, group, at});
        if (at < result.Tasks.size()) cell(row, Column::Level) = plainLevel(session_, result.Tasks[at].Leq);
        addRows(row, assessment_.Groups[group].Tasks[at].Samples);
        return row;
    }

    void addRows(AssessmentRow& parent, const std::vector<Sample>& samples) const {
        for (std::size_t i = 0; i < samples.size(); ++i) {
            const auto* rows = std::get_if<LogRows>(&samples[i]);
            if (rows == nullptr) continue;
            AssessmentRow row = entered({Kind::Rows, parent.Place.Group, parent.Place.Task, i});
            cell(row, Column::Name) = logName(*rows);
            if (cell(row, Column::Samples).empty()) cell(row, Column::Samples) = session_.LoadText(Text::AllRows);
            const MeasuredRows* found = measured_.rows(path_, *rows);
            if (found != nullptr) cell(row, Column::Level) = plainLevel(session_, found->Levels.Leq);
            parent.Children.push_back(std::move(row));
        }
    }

    const Session& session_;
    const Assessment& assessment_;
    const std::string& path_;
    const Measurements& measured_;
};

struct StateWords {
    const char* symbol;
    Text::Id words;
};

// By ActionState.
constexpr StateWords kStates[] = {{"\u2713", Text::StateBelow},
                                  {"\u25B2", Text::StateWithin},
                                  {"\u2717", Text::StateExceeded},
                                  {kNone, Text::StateNotMeasured},
                                  {"?", Text::StateUndecided}};

void add(std::vector<ShownAction>& shown, const Session& session, const std::vector<ActionResult>& actions,
         Text::Id of) {
    for (const ActionResult& action : actions) {
        const StateWords& state = kStates[static_cast<std::size_t>(action.State)];
        shown.push_back({ReplaceText(session.LoadText(of), "^", action.Name),
                         formatNumber(action.Limit, "##0", session.locale) + (action.IsPeak ? " dB(C)" : " dB"),
                         state.symbol,
                         session.LoadText(state.words) +
                             (action.IsUnderProtector ? " (" + session.LoadText(Text::UnderTheProtector) + ")" : ""),
                         action.State});
    }
}

std::string percent(const Session& session, const Figure& share) {
    return share ? formatNumber(*share, "##0 %", session.locale) : std::string(kNone);
}

} // namespace

std::string columnCaption(const Session& session, AssessmentColumn column) {
    constexpr Text::Id kCaptions[] = {Text::ColumnName,  Text::ColumnSamples, Text::ColumnLevel,
                                      Text::ColumnHours, Text::ColumnRange,   Text::ColumnPeak};
    return session.LoadText(kCaptions[static_cast<std::size_t>(column)]);
}

std::vector<AssessmentRow> assessmentRows(const Session& session, const Assessment& assessment, const std::string& path,
                                          const Measurements& measured, const std::vector<GroupResult>& results) {
    const Rows rows(session, assessment, path, measured);
    std::vector<AssessmentRow> all;
    for (std::size_t group = 0; group < assessment.Groups.size(); ++group)
        all.push_back(rows.ofGroup(group, results[group]));
    return all;
}

std::string levelText(const Session& session, const Figure& level) {
    return number(session, level, "##0.0 dB");
}

std::vector<ShownFigure> shownFigures(const Session& session, const GroupResult& group) {
    const auto text = [&](Text::Id id) { return session.LoadText(id); };
    std::vector<ShownFigure> figures = {
        {text(Text::FigureLex), levelText(session, group.LEX8h)},
        {text(Text::FigureUncertainty), levelText(session, group.Expanded)},
        {text(Text::FigureUpper), levelText(session, group.Upper)},
        {text(Text::FigurePoints), number(session, group.Points, "##0")},
        {text(Text::FigurePeak),
         group.CPeak ? number(session, group.CPeak, "##0.0 dB(C)") : text(Text::StateNotMeasured)},
    };
    if (!group.WeekActions.empty()) figures.push_back({text(Text::FigureWeek), levelText(session, group.LEXw)});
    if (group.C1u1) figures.push_back({text(Text::FigureSampling), levelText(session, group.C1u1)});
    if (!group.Protected) return figures;
    const ProtectedResult& worn = *group.Protected;
    const std::string method = worn.Method == "given" ? text(Text::ReductionGiven) : worn.Method;
    figures.push_back({text(Text::FigureProtected),
                       levelText(session, worn.Level) + (method.empty() ? std::string() : " (" + method + ")")});
    figures.push_back({text(Text::FigureEffective), levelText(session, worn.Effective)});
    figures.push_back({text(Text::FigureVerdict), verdictText(session, worn.Verdict)});
    return figures;
}

std::vector<ShownAction> shownActions(const Session& session, const GroupResult& group) {
    std::vector<ShownAction> shown;
    add(shown, session, group.Actions, Text::ActionOfDay);
    add(shown, session, group.WeekActions, Text::ActionOfWeek);
    return shown;
}

std::vector<std::string> shownWarnings(const Session& session, const GroupResult& group) {
    std::vector<std::string> shown;
    for (const AssessmentWarning& warning : group.Warnings)
        shown.push_back(warning.Task ? captioned(session, *warning.Task, warning.Text) : warning.Text);
    return shown;
}

std::vector<TaskBar> taskBars(const Session& session, const GroupResult& group) {
    std::vector<TaskBar> bars;
    for (const TaskResult& task : group.Tasks)
        bars.push_back(
            {task.Name, task.Share, levelText(session, task.Contribution) + ", " + percent(session, task.Share)});
    return bars;
}

ExposureScale exposureScale(const Session& session, const GroupResult& group) {
    constexpr double kStep = 5;
    constexpr double kLowest = 75; // of the scale, unless the day is lower
    constexpr double kHighest = 95;
    constexpr double kEnd = 200; // it goes no further, nor below 0
    ExposureScale scale;
    const double from = group.LEX8h ? *group.LEX8h - group.Expanded.value_or(0) : kLowest;
    const double to = group.Upper ? *group.Upper : group.LEX8h.value_or(kHighest);
    const double low = std::clamp(std::floor((from - 1) / kStep) * kStep, 0.0, kLowest);
    const double high = std::clamp(std::ceil((to + 1) / kStep) * kStep, kHighest, kEnd);
    const auto at = [&](double level) { return std::clamp((level - low) / (high - low), 0.0, 1.0); };
    for (const ActionResult& action : group.Actions)
        if (!action.IsPeak)
            scale.Marks.push_back({at(action.Limit), formatNumber(action.Limit, "##0", session.locale), true});
    for (int step = 0; low + step * kStep <= high; ++step) {
        const double level = low + step * kStep;
        const bool isTaken = std::ranges::any_of(
            scale.Marks, [&](const ExposureScale::Mark& mark) { return std::abs(mark.At - at(level)) < at(low + 3); });
        if (!isTaken) scale.Marks.push_back({at(level), formatNumber(level, "##0", session.locale), false});
    }
    if (!group.LEX8h) return scale;
    scale.Level = at(*group.LEX8h);
    scale.Words = levelText(session, group.LEX8h);
    if (!group.Expanded) return scale;
    scale.From = at(from);
    scale.To = at(to);
    scale.Words += " \u00B1 " + levelText(session, group.Expanded);
    return scale;
}

std::string spokenBars(const Session& session, std::span<const TaskBar> bars) {
    std::string text;
    for (const TaskBar& bar : bars)
        text += captioned(session, bar.Name, bar.Words) + ". ";
    return text;
}

std::string spokenResult(const Session& session, const GroupResult& group) {
    std::string text = group.Name + ". ";
    for (const ShownFigure& figure : shownFigures(session, group))
        text += captioned(session, figure.Caption, figure.Value) + ". ";
    return text + spokenBars(session, taskBars(session, group));
}

} // namespace kestrane

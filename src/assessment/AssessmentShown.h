// An assessment and its result in words and shapes: the rows of the tree, the figures of a group, its limits, and the
// bars of its tasks. The window and the report show these.
#pragma once

#include "assessment/Assess.h"
#include "assessment/AssessmentEdits.h"

#include <array>
#include <span>
#include <string>
#include <vector>

namespace kestrane {

struct AssessmentRow {
    AssessmentPlace Place;
    std::array<std::string, kAssessmentColumns> Cells; // by AssessmentColumn
    std::vector<AssessmentRow> Children;
};

std::string columnCaption(const Session& session, AssessmentColumn column);

// One row for each group. results is what assess() returned for the assessment.
std::vector<AssessmentRow> assessmentRows(const Session& session, const Assessment& assessment, const std::string& path,
                                          const Measurements& measured, const std::vector<GroupResult>& results);

struct ShownFigure {
    std::string Caption, Value;

    bool operator==(const ShownFigure&) const = default;
};

// LEX,8h with its uncertainty, points, week, peak and protector of a group. A missing figure is "–".
std::vector<ShownFigure> shownFigures(const Session& session, const GroupResult& group);

struct ShownAction {
    std::string Name, Limit, Symbol, Words; // Words: of the state, with what it is of
    ActionState State;
};

// The limits of the day, then those of the week.
std::vector<ShownAction> shownActions(const Session& session, const GroupResult& group);

// The name of the task comes first.
std::vector<std::string> shownWarnings(const Session& session, const GroupResult& group);

// The contribution of a task to the day, as a bar from 0 to Share, which is a fraction of 1.
struct TaskBar {
    std::string Name;
    Figure Share;
    std::string Words; // "78.0 dB, 14 %"
};

std::vector<TaskBar> taskBars(const Session& session, const GroupResult& group);

// LEX,8h on a scale of levels, with the band from LEX,8h less U to the upper limit. At is the place on the scale, from
// 0 to 1.
struct ExposureScale {
    struct Mark {
        double At;
        std::string Words;
        bool IsLimit; // it is one of the values that the day is compared with
    };

    std::vector<Mark> Marks;
    Figure Level, From, To;
    std::string Words; // "84.3 dB ± 3.2 dB"
};

ExposureScale exposureScale(const Session& session, const GroupResult& group);

// The bars, and the whole result, in sentences, for a user who cannot see them.
std::string spokenBars(const Session& session, std::span<const TaskBar> bars);
std::string spokenResult(const Session& session, const GroupResult& group);

std::string levelText(const Session& session, const Figure& level); // "84.3 dB", "–"

} // namespace kestrane

// What a user can do to an assessment, as functions from one state of it to the next. Nothing is computed here. An
// entry that is a number is accepted even when it makes no sense as a level or a time; the warnings then say so.
#pragma once

#include "assessment/Assessment.h"
#include "model/Session.h"
#include "resources/TextNames.h"

#include <optional>
#include <string>
#include <vector>

namespace kestrane {

enum class AssessmentKind { Group, Task, Rows, Week, Day };

// A row of the tree of an assessment.
struct AssessmentPlace {
    AssessmentKind Kind = AssessmentKind::Group;
    std::size_t Group = 0;
    std::optional<std::size_t> Task = std::nullopt; // of a task, and of rows that are a sample of one
    std::size_t Item = 0; // of a day: in the week; of rows: among the samples of their task or group

    bool operator==(const AssessmentPlace&) const = default;
};

// The columns of the tree. Samples are entered: levels, rows of a log, or the level of a day; Level is computed from
// them. Hours is the duration of a task or the effective day, and Range its shortest and longest.
enum class AssessmentColumn { Name, Samples, Level, Hours, Range, Peak };

constexpr std::size_t kAssessmentColumns = 6;

struct AssessmentEdit {
    Text::Id Title; // what was done
    Assessment Next;
    AssessmentPlace Place; // what is to be selected behind it
};

// Whether the cell in this column can be typed in.
bool isEntered(const Assessment& assessment, const AssessmentPlace& place, AssessmentColumn column);

// The text of the cell as it is typed: numbers are exact, and levels have blanks between them.
std::string enteredText(const Session& session, const Assessment& assessment, const AssessmentPlace& place,
                        AssessmentColumn column);

// Accepts an entry. Returns nothing when it does not fit the cell.
std::optional<AssessmentEdit> withEntry(const Session& session, const Assessment& assessment,
                                        const AssessmentPlace& place, AssessmentColumn column,
                                        const std::string& entry);

// Which part of an entry that was refused does not fit: a word of a list of levels, else the whole entry.
std::string refusedPart(const Session& session, const AssessmentPlace& place, AssessmentColumn column,
                        const std::string& entry);

AssessmentEdit withGroup(const Session& session, const Assessment& assessment);
AssessmentEdit withTask(const Session& session, const Assessment& assessment, std::size_t group);
AssessmentEdit withDay(const Session& session, const Assessment& assessment,
                       std::size_t group); // with the group's own level

// Adds rows as a sample to the task or group at a place. A group with tasks gets a new task of this name, whose
// duration is still to be entered. Without a place the last group gets them, and without a group a new one.
AssessmentEdit withRows(const Session& session, const Assessment& assessment, std::optional<AssessmentPlace> place,
                        const LogRows& rows, const std::string& name);

AssessmentEdit without(const Assessment& assessment, const AssessmentPlace& place);

// Accepts the data file of these rows as it is now.
AssessmentEdit withFileAsItIs(const Assessment& assessment, const AssessmentPlace& place);

// A field in the form of the document or of a group.
struct AssessmentField {
    Text::Id Caption;
    std::vector<std::string> Choices; // empty: it is typed
    std::string Value;                // one of the choices, if there are any
};

// The fields of the document, and those of a group with these protectors to choose from.
std::vector<AssessmentField> documentFields(const Assessment& assessment);
std::vector<AssessmentField> groupFields(const Session& session, const Assessment& assessment, std::size_t group,
                                         const std::vector<std::string>& protectors);

// Return nothing when the entry does not fit. A group has a protector when it has a reduction, or a name and the log of
// a spectrum; choosing a name takes the first log of the group.
AssessmentEdit withDocumentField(const Assessment& assessment, std::size_t field, const std::string& entry);
std::optional<AssessmentEdit> withGroupField(const Session& session, const Assessment& assessment, std::size_t group,
                                             std::size_t field, const std::string& entry);

// Why an entry of a field of a group was refused, with "^" for the entry.
Text::Id refusalOf(std::size_t field);

std::string strategyText(const Session& session, Strategy strategy);
std::string meterText(const Session& session, Meter meter);

// The log of rows in words, such as "shift.xml, L1I1F1".
std::string logName(const LogRows& rows);

} // namespace kestrane

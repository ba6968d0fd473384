#include "assessment/AssessmentEdits.h"

#include "assessment/Entries.h"

#include <algorithm>
#include <iterator>

namespace kestrane {

namespace {

using Kind = AssessmentKind;
using Column = AssessmentColumn;

AssessmentGroup& groupAt(Assessment& assessment, const AssessmentPlace& place) {
    return assessment.Groups[place.Group];
}

const AssessmentGroup& groupAt(const Assessment& assessment, const AssessmentPlace& place) {
    return assessment.Groups[place.Group];
}

// The samples of the task at a place, or those of the group when the place is in no task.
template <class Group>
auto& samplesAt(Group& group, const AssessmentPlace& place) {
    return place.Task ? group.Tasks[*place.Task].Samples : group.Samples;
}

template <class Group>
auto& rowsAt(Group& group, const AssessmentPlace& place) {
    return std::get<LogRows>(samplesAt(group, place)[place.Item]);
}

AssessmentPlace groupPlace(std::size_t group) {
    return {Kind::Group, group};
}

AssessmentPlace taskPlace(std::size_t group, std::size_t task) {
    return {Kind::Task, group, task};
}

// A name such as "Task 3" that no item has yet.
template <class Items>
std::string newName(const Session& session, Text::Id word, const Items& items) {
    for (std::size_t n = items.size() + 1;; ++n) {
        std::string name = ReplaceText(session.LoadText(word), "^", std::to_string(n));
        if (std::ranges::none_of(items, [&](const auto& item) { return item.Name == name; })) return name;
    }
}

// What a column shows for a kind of rows of the tree, and what is done with an entry there.
struct Cell {
    Kind kind;
    Column column;
    std::string (*text)(const Session& session, const AssessmentGroup& group, const AssessmentPlace& place);
    bool (*take)(const Session& session, AssessmentGroup& group, const AssessmentPlace& place,
                 const std::string& entry);
};

constexpr Cell kCells[] = {
    {Kind::Group, Column::Name,
     [](const Session&, const AssessmentGroup& group, const AssessmentPlace&) { return group.Name; },
     [](const Session&, AssessmentGroup& group, const AssessmentPlace&, const std::string& entry) {
         group.Name = entry;
         return true;
     }},
    {Kind::Group, Column::Samples,
     [](const Session& session, const AssessmentGroup& group, const AssessmentPlace&) {
         return levelsText(session, group.Samples);
     },
     [](const Session& session, AssessmentGroup& group, const AssessmentPlace&, const std::string& entry) {
         return takeLevels(session, entry, group.Samples);
     }},
    {Kind::Group, Column::Hours,
     [](const Session& session, const AssessmentGroup& group, const AssessmentPlace&) {
         return exact(session, group.EffectiveDay);
     },
     [](const Session& session, AssessmentGroup& group, const AssessmentPlace&, const std::string& entry) {
         group.EffectiveDay.reset();
         return entry.empty() || takeHours(session, entry, group.EffectiveDay.emplace());
     }},
    {Kind::Group, Column::Peak,
     [](const Session& session, const AssessmentGroup& group, const AssessmentPlace&) {
         return exact(session, group.CPeak);
     },
     [](const Session& session, AssessmentGroup& group, const AssessmentPlace&, const std::string& entry) {
         return takeLevel(session, entry, group.CPeak);
     }},
    {Kind::Task, Column::Name,
     [](const Session&, const AssessmentGroup& group, const AssessmentPlace& at) { return group.Tasks[*at.Task].Name; },
     [](const Session&, AssessmentGroup& group, const AssessmentPlace& at, const std::string& entry) {
         group.Tasks[*at.Task].Name = entry;
         return true;
     }},
    {Kind::Task, Column::Samples,
     [](const Session& session, const AssessmentGroup& group, const AssessmentPlace& at) {
         return levelsText(session, group.Tasks[*at.Task].Samples);
     },
     [](const Session& session, AssessmentGroup& group, const AssessmentPlace& at, const std::string& entry) {
         return takeLevels(session, entry, group.Tasks[*at.Task].Samples);
     }},
    {Kind::Task, Column::Hours,
     [](const Session& session, const AssessmentGroup& group, const AssessmentPlace& at) {
         return exact(session, group.Tasks[*at.Task].Hours);
     },
     [](const Session& session, AssessmentGroup& group, const AssessmentPlace& at, const std::string& entry) {
         return takeHours(session, entry, group.Tasks[*at.Task].Hours);
     }},
    {Kind::Task, Column::Range,
     [](const Session& session, const AssessmentGroup& group, const AssessmentPlace& at) {
         const auto& range = group.Tasks[*at.Task].HoursRange;
         return range ? exact(session, (*range)[0]) + " - " + exact(session, (*range)[1]) : std::string();
     },
     [](const Session& session, AssessmentGroup& group, const AssessmentPlace& at, const std::string& entry) {
         return takeRange(session, entry, group.Tasks[*at.Task].HoursRange);
     }},
    {Kind::Task, Column::Peak,
     [](const Session& session, const AssessmentGroup& group, const AssessmentPlace& at) {
         return exact(session, group.Tasks[*at.Task].CPeak);
     },
     [](const Session& session, AssessmentGroup& group, const AssessmentPlace& at, const std::string& entry) {
         return takeLevel(session, entry, group.Tasks[*at.Task].CPeak);
     }},
    {Kind::Rows, Column::Samples,
     [](const Session&, const AssessmentGroup& group, const AssessmentPlace& at) {
         return rowsText(rowsAt(group, at));
     },
     [](const Session&, AssessmentGroup& group, const AssessmentPlace& at, const std::string& entry) {
         return takeRows(entry, rowsAt(group, at));
     }},
    {Kind::Day, Column::Name,
     [](const Session&, const AssessmentGroup& group, const AssessmentPlace& at) { return group.Week[at.Item].Name; },
     [](const Session&, AssessmentGroup& group, const AssessmentPlace& at, const std::string& entry) {
         group.Week[at.Item].Name = entry;
         return true;
     }},
    {Kind::Day, Column::Samples,
     [](const Session& session, const AssessmentGroup& group, const AssessmentPlace& at) {
         return exact(session, group.Week[at.Item].LEX8h);
     },
     [](const Session& session, AssessmentGroup& group, const AssessmentPlace& at, const std::string& entry) {
         return takeLevel(session, entry, group.Week[at.Item].LEX8h);
     }},
};

const Cell* cellOf(const Assessment& assessment, const AssessmentPlace& place, Column column) {
    const bool isOfTasks = place.Kind == Kind::Group && groupAt(assessment, place).Strategy == Strategy::Task;
    if (isOfTasks && column == Column::Samples) return nullptr;
    const auto found = std::ranges::find_if(
        kCells, [&](const Cell& cell) { return cell.kind == place.Kind && cell.column == column; });
    return found == std::end(kCells) ? nullptr : found;
}

} // namespace

bool isEntered(const Assessment& assessment, const AssessmentPlace& place, AssessmentColumn column) {
    return cellOf(assessment, place, column) != nullptr;
}

std::string enteredText(const Session& session, const Assessment& assessment, const AssessmentPlace& place,
                        AssessmentColumn column) {
    const Cell* cell = cellOf(assessment, place, column);
    return cell == nullptr ? std::string() : cell->text(session, groupAt(assessment, place), place);
}

std::optional<AssessmentEdit> withEntry(const Session& session, const Assessment& assessment,
                                        const AssessmentPlace& place, AssessmentColumn column,
                                        const std::string& entry) {
    const Cell* cell = cellOf(assessment, place, column);
    if (cell == nullptr) return std::nullopt;
    AssessmentEdit edit{Text::EditEntry, assessment, place};
    const std::string text = trimmed(entry);
    if (text == cell->text(session, groupAt(assessment, place), place))
        return edit; // the figure itself is kept, not what is shown of it
    if (!cell->take(session, groupAt(edit.Next, place), place, text)) return std::nullopt;
    return edit;
}

std::string refusedPart(const Session& session, const AssessmentPlace& place, AssessmentColumn column,
                        const std::string& entry) {
    const bool isList = column == AssessmentColumn::Samples && (place.Kind == Kind::Group || place.Kind == Kind::Task);
    return isList ? noLevelIn(session, entry) : entry;
}

AssessmentEdit withGroup(const Session& session, const Assessment& assessment) {
    AssessmentEdit edit{Text::EditAddGroup, assessment, groupPlace(assessment.Groups.size())};
    AssessmentGroup& group = edit.Next.Groups.emplace_back();
    group.Name = newName(session, Text::NewGroupName, assessment.Groups);
    return edit;
}

AssessmentEdit withTask(const Session& session, const Assessment& assessment, std::size_t group) {
    const std::vector<AssessmentTask>& tasks = assessment.Groups[group].Tasks;
    AssessmentEdit edit{Text::EditAddTask, assessment, taskPlace(group, tasks.size())};
    edit.Next.Groups[group].Tasks.emplace_back().Name = newName(session, Text::NewTaskName, tasks);
    return edit;
}

AssessmentEdit withDay(const Session& session, const Assessment& assessment, std::size_t group) {
    const std::size_t days = assessment.Groups[group].Week.size();
    AssessmentEdit edit{Text::EditAddDay, assessment, {Kind::Day, group, {}, days}};
    edit.Next.Groups[group].Week.emplace_back().Name = formatDate(
        fromCivil({2024, 1, 1}) + static_cast<double>(days % 7), "ddd", session.dateWords); // from a Monday on
    return edit;
}

AssessmentEdit withRows(const Session& session, const Assessment& assessment, std::optional<AssessmentPlace> place,
                        const LogRows& rows, const std::string& name) {
    AssessmentEdit edit{Text::EditAddRows, assessment, {}};
    if (assessment.Groups.empty()) edit.Next = withGroup(session, assessment).Next;
    AssessmentPlace at = place.value_or(groupPlace(edit.Next.Groups.size() - 1));
    AssessmentGroup& group = groupAt(edit.Next, at);
    if (group.Strategy == Strategy::Task && !at.Task) {
        at.Task = group.Tasks.size();
        group.Tasks.emplace_back().Name = name;
    } else if (group.Strategy != Strategy::Task) {
        at.Task.reset();
    }
    samplesAt(group, at).emplace_back(rows);
    edit.Place = at.Task ? taskPlace(at.Group, *at.Task) : groupPlace(at.Group);
    return edit;
}

AssessmentEdit without(const Assessment& assessment, const AssessmentPlace& place) {
    AssessmentEdit edit{Text::EditRemove, assessment, groupPlace(place.Group)};
    AssessmentGroup& group = groupAt(edit.Next, place);
    const auto erase = [](auto& items, std::size_t at) {
        items.erase(items.begin() + static_cast<std::ptrdiff_t>(at));
    };
    switch (place.Kind) {
    case Kind::Group:
        erase(edit.Next.Groups, place.Group);
        edit.Place = groupPlace(place.Group == 0 ? 0 : place.Group - 1);
        break;
    case Kind::Task:
        erase(group.Tasks, *place.Task);
        break;
    case Kind::Rows:
        erase(samplesAt(group, place), place.Item);
        if (place.Task) edit.Place = taskPlace(place.Group, *place.Task);
        break;
    case Kind::Week:
        group.Week.clear();
        break;
    case Kind::Day:
        erase(group.Week, place.Item);
        break;
    }
    return edit;
}

AssessmentEdit withFileAsItIs(const Assessment& assessment, const AssessmentPlace& place) {
    AssessmentEdit edit{Text::EditTakeFile, assessment, place};
    const std::string file = rowsAt(groupAt(edit.Next, place), place).File;
    const auto take = [&](LogRows& rows) {
        if (rows.File == file) rows.Sha256.clear();
    };
    forEachSampleRows(edit.Next, take);
    for (AssessmentGroup& group : edit.Next.Groups)
        if (group.Protector && group.Protector->Spectrum) take(*group.Protector->Spectrum);
    return edit;
}

std::string logName(const LogRows& rows) {
    const std::string file = rows.File.substr(rows.File.find_last_of('/') + 1);
    return rows.Log.empty() ? file : file + ", " + rows.Log;
}

} // namespace kestrane

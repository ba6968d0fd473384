#include "assessment/AssessmentEdits.h"

#include "calc/ExposureTime.h"
#include "platform/Format.h"
#include "platform/Numbers.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <iterator>
#include <span>

namespace kestrane {

namespace {

using Kind = AssessmentKind;
using Column = AssessmentColumn;

constexpr std::string_view kExact = "##0.0#########";
constexpr const char* kDays[] = {"Mon", "Tue", "Wed", "Thu", "Fri", "Sat", "Sun"};

std::string exact(const Session& session, double value) {
    return formatNumber(value, kExact, session.locale);
}

std::string exact(const Session& session, const std::optional<double>& value) {
    return value ? exact(session, *value) : std::string();
}

std::string trimmed(std::string_view text) {
    const std::size_t first = text.find_first_not_of(" \t");
    return first == std::string_view::npos ? std::string()
                                           : std::string(text.substr(first, text.find_last_not_of(" \t") + 1 - first));
}

// The words of an entry, with blanks or semicolons between them.
std::vector<std::string> wordsOf(std::string_view entry) {
    std::vector<std::string> words;
    while (true) {
        const std::size_t first = entry.find_first_not_of(" ;\t");
        if (first == std::string_view::npos) return words;
        entry.remove_prefix(first);
        const std::size_t end = std::min(entry.find_first_of(" ;\t"), entry.size());
        words.emplace_back(entry.substr(0, end));
        entry.remove_prefix(end);
    }
}

// Each takes an entry, and is false when it does not fit. An empty one is none.
bool takeLevel(const Session& session, const std::string& entry, std::optional<double>& level) {
    level.reset();
    if (entry.empty()) return true;
    level = typedNumber(entry, session.locale);
    return level.has_value();
}

// Hours as "1.5" or "1:30".
bool takeHours(const Session& session, const std::string& entry, double& hours) {
    if (entry.find(':') == std::string::npos) {
        const auto number = typedNumber(entry, session.locale);
        hours = number.value_or(hours);
        return number.has_value();
    }
    const auto duration = durationHours(entry, session.locale);
    if (!duration) return false;
    constexpr double kSecondsOfAnHour = 3600; // the duration is a single
    hours = std::round(*duration * kSecondsOfAnHour) / kSecondsOfAnHour;
    return true;
}

// "4 6", "4-6" or "4 to 6".
bool takeRange(const Session& session, std::string entry, std::optional<std::array<double, 2>>& range) {
    range.reset();
    std::ranges::replace(entry, '-', ' ');
    std::vector<std::string> words = wordsOf(entry);
    if (words.empty()) return true;
    if (words.size() == 3) words.erase(words.begin() + 1);
    if (words.size() != 2) return false;
    std::array<double, 2> hours{};
    for (std::size_t i = 0; i < hours.size(); ++i)
        if (!takeHours(session, words[i], hours[i])) return false;
    range = hours;
    return true;
}

// The levels in front, then the rows that were there.
bool takeLevels(const Session& session, const std::string& entry, std::vector<Sample>& samples) {
    std::vector<Sample> taken;
    for (const std::string& word : wordsOf(entry)) {
        const auto level = typedNumber(word, session.locale);
        if (!level) return false;
        taken.emplace_back(*level);
    }
    std::ranges::copy_if(samples, std::back_inserter(taken),
                         [](const Sample& sample) { return std::holds_alternative<LogRows>(sample); });
    samples = std::move(taken);
    return true;
}

std::string levelsText(const Session& session, const std::vector<Sample>& samples) {
    std::string text;
    for (const Sample& sample : samples) {
        const double* level = std::get_if<double>(&sample);
        if (level != nullptr) text += (text.empty() ? "" : "  ") + exact(session, *level);
    }
    return text;
}

bool takeRow(std::string_view word, std::optional<std::int64_t>& row) {
    std::int64_t number = 0;
    const auto [end, error] = std::from_chars(word.data(), word.data() + word.size(), number);
    row = number;
    return error == std::errc() && end == word.data() + word.size();
}

// "1-60", "60"; nothing for all rows.
bool takeRows(std::string entry, LogRows& rows) {
    std::ranges::replace(entry, '-', ' ');
    const std::vector<std::string> words = wordsOf(entry);
    rows.From.reset();
    rows.To.reset();
    if (words.empty()) return true;
    return words.size() <= 2 && takeRow(words.front(), rows.From) && takeRow(words.back(), rows.To);
}

std::string rowsText(const LogRows& rows) {
    if (!rows.From && !rows.To) return {};
    return (rows.From ? std::to_string(*rows.From) : "1") + "-" + (rows.To ? std::to_string(*rows.To) : "");
}

AssessmentGroup& groupAt(Assessment& assessment, const AssessmentPlace& place) {
    return assessment.Groups[place.Group];
}

const AssessmentGroup& groupAt(const Assessment& assessment, const AssessmentPlace& place) {
    return assessment.Groups[place.Group];
}

// Of the task or of the group.
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

// "Task 3", the first number that is free.
template <class Items>
std::string newName(const Session& session, Text::Id word, const Items& items) {
    for (std::size_t n = items.size() + 1;; ++n) {
        std::string name = ReplaceText(session.LoadText(word), "^", std::to_string(n));
        if (std::ranges::none_of(items, [&](const auto& item) { return item.Name == name; })) return name;
    }
}

// A column of a kind of rows, in both directions.
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
    if (text == cell->text(session, groupAt(assessment, place), place)) return edit; // not rounded to what is shown
    if (!cell->take(session, groupAt(edit.Next, place), place, text)) return std::nullopt;
    return edit;
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

AssessmentEdit withDay(const Assessment& assessment, std::size_t group) {
    const std::size_t days = assessment.Groups[group].Week.size();
    AssessmentEdit edit{Text::EditAddDay, assessment, {Kind::Day, group, {}, days}};
    edit.Next.Groups[group].Week.emplace_back().Name = kDays[days % std::size(kDays)];
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

// ---- the forms

namespace {

struct DocumentField {
    Text::Id caption;
    std::string Assessment::*member;
};

constexpr DocumentField kDocumentFields[] = {{Text::AssessmentTitle, &Assessment::Title},
                                             {Text::Workplace, &Assessment::Workplace},
                                             {Text::Assessor, &Assessment::Assessor},
                                             {Text::AssessmentDate, &Assessment::Date}};

// What a member can be, in the order of its values; the words that it is chosen by.
constexpr Text::Id kStrategies[] = {Text::StrategyTasks, Text::StrategyJob, Text::StrategyFullDay};
constexpr Text::Id kMeters[] = {Text::MeterClass1, Text::MeterClass2, Text::MeterDosimeter};
constexpr Text::Id kModes[] = {Text::ModeHse, Text::ModeOsha, Text::ModeNiosh};
constexpr const char* kModeNames[] = {"hse", "osha", "niosh"};
constexpr Text::Id kCorrections[] = {Text::CorrectionNone, Text::Correction2StdDevs, Text::Correction4dB,
                                     Text::Correction1StdDev};

std::vector<std::string> wordsOf(const Session& session, std::span<const Text::Id> ids) {
    std::vector<std::string> words;
    for (const Text::Id id : ids)
        words.push_back(session.LoadText(id));
    return words;
}

// The place of a word among those; nothing when it is none of them.
std::optional<std::size_t> placeOf(const Session& session, std::span<const Text::Id> ids, const std::string& word) {
    const std::vector<std::string> words = wordsOf(session, ids);
    const auto found = std::ranges::find(words, word);
    return found == words.end() ? std::nullopt : std::optional(static_cast<std::size_t>(found - words.begin()));
}

// The logs that samples of the group are rows of, each once, by name.
std::vector<LogRows> logsOf(const AssessmentGroup& group) {
    std::vector<LogRows> logs;
    const auto add = [&](const LogRows& rows) {
        LogRows log;
        log.File = rows.File;
        log.Log = rows.Log;
        log.Sha256 = rows.Sha256;
        if (std::ranges::none_of(logs, [&](const LogRows& known) { return logName(known) == logName(log); }))
            logs.push_back(std::move(log));
    };
    if (group.Protector && group.Protector->Spectrum) add(*group.Protector->Spectrum);
    forEachSampleRows(group, add);
    return logs;
}

AssessmentProtector& protectorOf(AssessmentGroup& group) {
    return group.Protector ? *group.Protector : group.Protector.emplace();
}

// What the file can hold of a protector, or none. False when something is missing that was not there to be found.
bool completeProtector(AssessmentGroup& group, bool isWanted) {
    AssessmentProtector& worn = protectorOf(group);
    const std::vector<LogRows> logs = logsOf(group);
    if (!worn.Spectrum && !worn.Name.empty() && !logs.empty()) worn.Spectrum = logs.front();
    const bool isWhole = worn.Reduction || (!worn.Name.empty() && worn.Spectrum);
    if (!isWhole) group.Protector.reset();
    return isWhole || !isWanted;
}

struct GroupField {
    Text::Id caption;
    std::vector<std::string> (*choices)(const Session& session, const AssessmentGroup& group,
                                        const std::vector<std::string>& protectors); // null: it is typed
    std::string (*value)(const Session& session, const AssessmentGroup& group);
    bool (*take)(const Session& session, AssessmentGroup& group, const std::string& entry);
};

const GroupField kGroupFields[] = {
    {Text::StrategyLabel,
     [](const Session& session, const AssessmentGroup&, const std::vector<std::string>&) {
         return wordsOf(session, kStrategies);
     },
     [](const Session& session, const AssessmentGroup& group) { return strategyText(session, group.Strategy); },
     [](const Session& session, AssessmentGroup& group, const std::string& entry) {
         const auto place = placeOf(session, kStrategies, entry);
         if (place) group.Strategy = static_cast<Strategy>(*place);
         return place.has_value();
     }},
    {Text::MeterLabel,
     [](const Session& session, const AssessmentGroup&, const std::vector<std::string>&) {
         return wordsOf(session, kMeters);
     },
     [](const Session& session, const AssessmentGroup& group) { return meterText(session, group.Instrument); },
     [](const Session& session, AssessmentGroup& group, const std::string& entry) {
         const auto place = placeOf(session, kMeters, entry);
         if (place) group.Instrument = static_cast<Meter>(*place);
         return place.has_value();
     }},
    {Text::WorkersLabel, nullptr,
     [](const Session&, const AssessmentGroup& group) {
         return group.Workers ? std::to_string(*group.Workers) : std::string();
     },
     [](const Session&, AssessmentGroup& group, const std::string& entry) {
         std::optional<std::int64_t> workers;
         constexpr std::int64_t kMost = 1'000'000;
         if (!entry.empty() && (!takeRow(entry, workers) || *workers < 1 || *workers > kMost)) return false;
         group.Workers = workers ? std::optional(static_cast<int>(*workers)) : std::nullopt;
         return true;
     }},
    {Text::ProtectorLabel,
     [](const Session& session, const AssessmentGroup& group, const std::vector<std::string>& protectors) {
         std::vector<std::string> choices{session.LoadText(Text::NoProtector)};
         choices.insert(choices.end(), protectors.begin(), protectors.end());
         const std::string own = group.Protector ? group.Protector->Name : std::string();
         if (!own.empty() && std::ranges::find(choices, own) == choices.end()) choices.push_back(own);
         return choices;
     },
     [](const Session& session, const AssessmentGroup& group) {
         const bool isNamed = group.Protector && !group.Protector->Name.empty();
         return isNamed ? group.Protector->Name : session.LoadText(Text::NoProtector);
     },
     [](const Session& session, AssessmentGroup& group, const std::string& entry) {
         const bool isOne = entry != session.LoadText(Text::NoProtector);
         if (!isOne) {
             group.Protector.reset();
             return true;
         }
         protectorOf(group).Name = entry;
         return completeProtector(group, true);
     }},
    {Text::SpectrumLabel,
     [](const Session&, const AssessmentGroup& group, const std::vector<std::string>&) {
         std::vector<std::string> names{std::string()};
         for (const LogRows& log : logsOf(group))
             names.push_back(logName(log));
         return names;
     },
     [](const Session&, const AssessmentGroup& group) {
         return group.Protector && group.Protector->Spectrum ? logName(*group.Protector->Spectrum) : std::string();
     },
     [](const Session&, AssessmentGroup& group, const std::string& entry) {
         if (!group.Protector) return entry.empty();
         const std::vector<LogRows> logs = logsOf(group);
         const auto log = std::ranges::find_if(logs, [&](const LogRows& known) { return logName(known) == entry; });
         if (log == logs.end()) return false;
         group.Protector->Spectrum = *log;
         return true;
     }},
    {Text::ModeOfProtectorLabel,
     [](const Session& session, const AssessmentGroup&, const std::vector<std::string>&) {
         return wordsOf(session, kModes);
     },
     [](const Session& session, const AssessmentGroup& group) {
         const std::string mode = group.Protector ? group.Protector->Mode : kModeNames[0];
         return session.LoadText(kModes[std::ranges::find(kModeNames, mode) - std::begin(kModeNames)]);
     },
     [](const Session& session, AssessmentGroup& group, const std::string& entry) {
         const auto place = placeOf(session, kModes, entry);
         if (place && group.Protector) group.Protector->Mode = kModeNames[*place];
         return place.has_value();
     }},
    {Text::CorrectionLabel,
     [](const Session& session, const AssessmentGroup&, const std::vector<std::string>&) {
         return wordsOf(session, kCorrections);
     },
     [](const Session& session, const AssessmentGroup& group) {
         return session.LoadText(kCorrections[group.Protector ? group.Protector->Correction : 0]);
     },
     [](const Session& session, AssessmentGroup& group, const std::string& entry) {
         const auto place = placeOf(session, kCorrections, entry);
         if (place && group.Protector) group.Protector->Correction = static_cast<int>(*place);
         return place.has_value();
     }},
    {Text::ReductionLabel, nullptr,
     [](const Session& session, const AssessmentGroup& group) {
         return group.Protector ? exact(session, group.Protector->Reduction) : std::string();
     },
     [](const Session& session, AssessmentGroup& group, const std::string& entry) {
         return takeLevel(session, entry, protectorOf(group).Reduction) && completeProtector(group, false);
     }},
    {Text::WornLabel, nullptr,
     [](const Session& session, const AssessmentGroup& group) {
         return group.Protector ? exact(session, group.Protector->WornPercent) : std::string();
     },
     [](const Session& session, AssessmentGroup& group, const std::string& entry) {
         const auto percent = typedNumber(entry, session.locale);
         if (percent && group.Protector) group.Protector->WornPercent = *percent;
         return percent && group.Protector;
     }},
};

} // namespace

Text::Id refusalOf(std::size_t field) {
    return kGroupFields[field].caption == Text::ProtectorLabel ? Text::ProtectorNeedsMore : Text::EntryDoesNotFit;
}

std::string strategyText(const Session& session, Strategy strategy) {
    return session.LoadText(kStrategies[static_cast<std::size_t>(strategy)]);
}

std::string meterText(const Session& session, Meter meter) {
    return session.LoadText(kMeters[static_cast<std::size_t>(meter)]);
}

std::vector<AssessmentField> documentFields(const Assessment& assessment) {
    std::vector<AssessmentField> fields;
    for (const DocumentField& field : kDocumentFields)
        fields.push_back({field.caption, {}, assessment.*field.member});
    return fields;
}

std::vector<AssessmentField> groupFields(const Session& session, const Assessment& assessment, std::size_t group,
                                         const std::vector<std::string>& protectors) {
    const AssessmentGroup& shown = assessment.Groups[group];
    std::vector<AssessmentField> fields;
    for (const GroupField& field : kGroupFields) {
        fields.push_back(
            {field.caption,
             field.choices == nullptr ? std::vector<std::string>() : field.choices(session, shown, protectors),
             field.value(session, shown)});
    }
    return fields;
}

AssessmentEdit withDocumentField(const Assessment& assessment, std::size_t field, const std::string& entry) {
    AssessmentEdit edit{Text::EditEntry, assessment, {}};
    edit.Next.*kDocumentFields[field].member = entry;
    return edit;
}

std::optional<AssessmentEdit> withGroupField(const Session& session, const Assessment& assessment, std::size_t group,
                                             std::size_t field, const std::string& entry) {
    AssessmentEdit edit{Text::EditEntry, assessment, groupPlace(group)};
    const std::string text = trimmed(entry);
    if (text == kGroupFields[field].value(session, assessment.Groups[group])) return edit;
    if (!kGroupFields[field].take(session, edit.Next.Groups[group], text)) return std::nullopt;
    return edit;
}

} // namespace kestrane

// The forms of an assessment and of a group.
#include "assessment/AssessmentEdits.h"
#include "assessment/Entries.h"
#include "platform/Numbers.h"

#include <algorithm>
#include <iterator>
#include <span>

namespace kestrane {

namespace {

struct DocumentField {
    Text::Id caption;
    std::string Assessment::*member;
};

constexpr DocumentField kDocumentFields[] = {{Text::AssessmentTitle, &Assessment::Title},
                                             {Text::Workplace, &Assessment::Workplace},
                                             {Text::Assessor, &Assessment::Assessor},
                                             {Text::AssessmentDate, &Assessment::Date}};

// The words by which a user chooses the value of a member, in the order of the values.
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

// The place of a word among the texts of a list; nothing when it is none of them.
std::optional<std::size_t> placeOf(const Session& session, std::span<const Text::Id> ids, const std::string& word) {
    const std::vector<std::string> words = wordsOf(session, ids);
    const auto found = std::ranges::find(words, word);
    return found == words.end() ? std::nullopt : std::optional(static_cast<std::size_t>(found - words.begin()));
}

// The logs from which a group has samples, and the log of its protector's spectrum, each once.
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

// A protector can be saved with a reduction, or with a name and the log of a spectrum. Takes the first log of the group
// as the spectrum where one is needed, and removes a protector that stays incomplete. Returns false when one is wanted
// and there is none.
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
                                        const std::vector<std::string>& protectors); // null when the field is typed in
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
    AssessmentEdit edit{Text::EditEntry, assessment, AssessmentPlace{AssessmentKind::Group, group}};
    const std::string text = trimmed(entry);
    if (text == kGroupFields[field].value(session, assessment.Groups[group])) return edit;
    if (!kGroupFields[field].take(session, edit.Next.Groups[group], text)) return std::nullopt;
    return edit;
}

} // namespace kestrane

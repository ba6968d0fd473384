#include "app/StartUp.h"

#include "app/Assessments.h"
#include "app/Documents.h"
#include "app/DownloadHPD.h"
#include "app/Placement.h"
#include "model/SettingsText.h"
#include "platform/Files.h"
#include "platform/Paths.h"
#include "platform/RunningProgram.h"
#include "platform/RuntimeError.h"
#include "platform/Trimmed.h"
#include "platform/UserFolders.h"
#include "protection/ProtectorDatabase.h"

#include <algorithm>
#include <filesystem>
#include <set>
#include <system_error>

namespace kestrane {

namespace {

struct SampleWords {
    std::string_view FileName;
    Text::Id Sentence;
};

constexpr SampleWords kSamples[] = {
    {"brevik-short-form.xml", Text::SampleShortForm},   {"compressor-week.kxa", Text::SampleCompressor},
    {"foundry-job.kxa", Text::SampleFoundry},           {"machine-survey-octave.xml", Text::SampleSurvey},
    {"night-environment.xml", Text::SampleNight},       {"protector-ac.xml", Text::SampleProtector},
    {"roadworks-selection.xml", Text::SampleRoadworks}, {"shift-dosimeter.xml", Text::SampleShift},
    {"third-octave-2000.xml", Text::SampleThirdOctave}, {"welder-tasks.kxa", Text::SampleWelder},
};

// Takes one name off the beginning of an unquoted text. Positions count from 1, and 0 means none.
std::string takeUnquoted(std::string& text, const std::function<bool(const std::string&)>& exists) {
    const auto blankBehind = [&](std::size_t from) { return text.find(' ', from) + 1; }; // npos + 1 is 0
    std::size_t p = blankBehind(0);
    std::string candidate;
    while (p != 0) {
        candidate = text.substr(0, p - 1);
        p = blankBehind(p);
        if (exists(candidate)) {
            text = std::string(trimmed(std::string_view(text).substr(p)));
            return candidate;
        }
    }
    candidate = text;
    text.clear();
    return exists(candidate) ? candidate : std::string();
}

} // namespace

std::string commandLineText(const std::vector<std::string>& arguments) {
    std::string text;
    for (const std::string& argument : arguments) {
        if (!text.empty()) text += ' ';
        text += '"' + argument + '"';
    }
    return text;
}

std::vector<std::string> commandLineFiles(std::string text, const std::function<bool(const std::string&)>& exists) {
    std::vector<std::string> names;
    text = std::string(trimmed(text));
    while (!text.empty()) {
        const std::size_t before = text.size();
        std::string name;
        if (text.front() == '"') {
            const std::size_t close = text.find('"', 1);
            name = text.substr(1, close == std::string::npos ? close : close - 1);
            text = close == std::string::npos ? std::string()
                                              : std::string(trimmed(std::string_view(text).substr(close + 1)));
        } else {
            name = takeUnquoted(text, exists);
        }
        if (!name.empty()) names.push_back(name);
        if (text.size() >= before) break;
    }
    return names;
}

std::vector<std::string> namedFiles(const std::vector<std::string>& arguments) {
    std::vector<std::string> names = commandLineFiles(commandLineText(arguments), fileExists);
    std::ranges::transform(names, names.begin(), fullPath);
    return names;
}

std::string dataFolder() {
    return folderOfProgram() + "../share/kestrane/";
}

ProtectorCollection protectorsOfUser() {
    ProtectorCollection collection;
    collection.File = userDataFolder() + "kestrane/" + std::string(kDatabaseFile);
    collection.Original = dataFolder() + std::string(kDatabaseFile);
    return collection;
}

std::string fullPath(const std::string& name) {
    if (openFileNumber(name)) return name;
    std::error_code error;
    const auto path = std::filesystem::absolute(pathOf(name), error);
    return error ? name : path.lexically_normal().generic_string();
}

std::string defaultDataFolder(const std::string& program, const std::string& documents) {
    return documents.empty() || canWriteTo(program) ? program : documents + "/";
}

std::vector<std::string> sampleFiles() {
    std::vector<std::string> names;
    std::error_code failed; // then there are no samples
    for (const auto& entry : std::filesystem::directory_iterator(pathOf(dataFolder() + "samples"), failed))
        if (entry.path().extension() == ".xml" || isNamedAsAssessment(entry.path().string()))
            names.push_back(fullPath(entry.path().string()));
    std::ranges::sort(names);
    return names;
}

Text::Id sampleSentence(const std::string& path) {
    const std::string name = pathOf(path).filename().string();
    const auto* const row = std::ranges::find(kSamples, name, &SampleWords::FileName);
    return row == std::end(kSamples) ? Text::None : row->Sentence;
}

const Language& programLanguage(const SettingsStore& settings) {
    const std::string chosen = settings.read(kPreferences, kLanguageKey, {});
    return LanguageOf(chosen.empty() ? systemLanguage() : chosen);
}

void moveState(Session& session) {
    try {
        for (int i = 1; i <= static_cast<int>(kRecentFiles); ++i)
            moveSetting(session.settings, *session.state, kPreferences, recentFileKey(i));
        movePlacement(session.settings, *session.state);
    } catch (const RuntimeError&) {
        // The folder cannot be written. What was not moved stays in the settings.
    }
}

void readSettings(Session& session) {
    session.Options.DefaultDataDirectory = defaultDataFolder(folderOfProgram(), session.DocumentsFolder);
    for (const std::string& file : std::set{session.settings.Unreadable(), session.state->Unreadable()})
        if (!file.empty())
            session.ShowMessage(ReplaceText(session.LoadText(Text::SettingsNotRead), "^", file), kIconExclamation);
    for (const std::string& key : session.Options.GetFromRegistry(session.settings)) {
        session.ShowMessage(ReplaceText(session.LoadText(Text::SettingNotOfItsKind), "^", key), kIconExclamation);
    }
    for (int i = 1; i <= static_cast<int>(kRecentFiles); ++i) {
        const std::string name = session.state->read(kPreferences, recentFileKey(i), {});
        if (name.empty()) break;
        session.RecentFiles.push_back(name);
    }
}

std::vector<std::string> Main(Session& session, const std::vector<std::string>& arguments) {
    readSettings(session);
    if (session.protectors != nullptr) LoadHPD(session);
    std::vector<std::string> names = namedFiles(arguments);
    for (const std::string& name : names) {
        if (isNamedAsAssessment(name)) continue; // opened in a window of its own
        OpenFile(session, name, OpenSource::Named, &name == &names.back());
    }
    session.frame->SetPanel(Frame::Panel::Status, session.Options.CompanyName);
    return names;
}

} // namespace kestrane

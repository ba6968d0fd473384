#include "cli/Program.h"

#include "app/Documents.h"
#include "app/StartUp.h"
#include "calc/Recalculation.h"
#include "cli/Toolkit.h"
#include "platform/Files.h"
#include "platform/IniFile.h"
#include "platform/Interrupt.h"
#include "platform/UserFolders.h"
#include "server/LogLoading.h"

#include <iostream>
#include <map>
#include <utility>

namespace kestrane {

namespace {

std::unique_ptr<SettingsStore> settingsIn(const std::string& file) {
    try {
        return IniFile::ofCaller(file);
    } catch (const RuntimeError& error) {
        throw RuntimeError(error.Number, error.what() + (" (" + file + ")"));
    }
}

std::unique_ptr<SettingsStore> settingsOf(const GlobalOptions& options) {
    if (!options.settingsFile.empty()) return settingsIn(options.settingsFile);
    const std::string name = LoadSoftwareByFirm(options.company).SettingsAppName;
    return IniFile::ofUser(configFolder() + (name.empty() ? std::string(kApplicationTitle) : name) + ".ini");
}

Locale localeOf(const GlobalOptions& options) {
    Locale locale = systemLocale();
    if (options.decimalSeparator) locale.DecimalSeparator = *options.decimalSeparator;
    if (options.dateSeparator) locale.DateSeparator = *options.dateSeparator;
    return locale;
}

std::optional<Button> answerOf(const GlobalOptions& options) {
    static const std::map<std::string, Button> kAnswers = {{"yes", Button::Yes},
                                                           {"no", Button::No},
                                                           {"ok", Button::Ok},
                                                           {"cancel", Button::Cancel},
                                                           {"retry", Button::Retry}};
    return options.answer ? std::optional(kAnswers.at(*options.answer)) : std::nullopt;
}

} // namespace

Button ConsoleBoxes::show(const std::string& prompt, MessageFlags flags, const std::string& title) {
    text_.str({});
    const Button taken = boxes_.show(prompt, flags, title);
    const std::string line = text_.str();
    console_.tell(std::string_view(line).substr(0, line.size() - 1));
    return taken;
}

Program::Program(const GlobalOptions& options, Console& messages, EventPump& pump) :
    showsProgress(!options.isQuiet && !messages.areErrorsJson()),
    console(messages),
    settings_(settingsOf(options)),
    messages_(messages, answerOf(options)),
    pump_(pump),
    frame_(messages),
    server_(pump),
    session(options.company, localeOf(options), *settings_, messages_, pump, clock,
            {{}, LanguageOf(systemLanguage())}) {
    session.frame = &frame_;
    session.state = &state_;
    session.server = &server_;
    readSettings(session);
}

clsFile* Program::open(const std::string& name) {
    const std::string path = name == "-" ? kStandardInput : fullPath(name);
    if (!OpenFile(session, path, OpenSource::Named, true, readInput)) return nullptr;
    pump_.runUntil([&] { return noLogIsBusy(session); });
    clsFile* const file = openFileOfName(session, path);
    file->History.IsWanted = KeepsHistory || file->History.Kept > 0;
    bool hasFailed = false;
    forEachLog(*file, [&hasFailed](const clsLog& log) { hasFailed = hasFailed || log.HasFailedRecalc; });
    return hasFailed ? nullptr : file;
}

void Program::closeFiles() {
    pump_.runUntil([&] { return noLogIsBusy(session); });
    session.OpenFiles.clear();
}

int Program::forEachFile(const std::vector<std::string>& names,
                         const std::function<bool(clsFile&, std::size_t)>& work) {
    int status = kDone;
    console.NamesFile = console.NamesFile || names.size() > 1;
    for (std::size_t i = 0; i < names.size(); ++i) {
        if (Interrupt::hasCome()) return kFailed;
        console.File = names[i];
        bool isDone = false;
        try {
            clsFile* file = open(names[i]);
            isDone = file != nullptr && work(*file, i);
            closeFiles();
        } catch (const ResultError&) {
            throw;
        } catch (const RuntimeError& error) {
            console.tell(std::string(kApplicationTitle) + ": " + std::to_string(error.Number) + ": " + error.what(),
                         error.Number);
            closeFiles();
        }
        if (!isDone) status = kFailed;
    }
    console.File.clear();
    return status;
}

template <class Module>
Module* Program::moduleOf(std::unique_ptr<Module>& loaded) {
    if (!loaded) loaded = loadModule<Module>();
    if (!loaded)
        session.ShowMessage(ReplaceText(session.LoadText(Text::NeedsPackage), "^", Module::kPackage), kIconStop);
    return loaded.get();
}

Drawing* Program::drawing() {
    return moduleOf(drawing_);
}

bool Program::reachPorts(const std::string& onlyDevice) {
    Connection* const connection = moduleOf(connection_);
    if (connection != nullptr) comm_ = connection->serialPorts(session, onlyDevice);
    session.comm = comm_.get();
    return connection != nullptr;
}

bool Program::reachServers() {
    Connection* const connection = moduleOf(connection_);
    if (connection != nullptr) http_ = connection->http();
    session.http = http_.get();
    return connection != nullptr;
}

bool Program::recalculate(clsLog& log, CalcMode mode) {
    RecalcValues(log, mode);
    pump_.runUntil([&] { return !log.IntervalsRecalculating; });
    return !log.HasFailedRecalc;
}

bool Program::saveAs(clsFile& file, const std::string& output) {
    std::optional<std::string> name = fullPath(takeOutput(output)); // offered once: a second question gets no name
    return SaveFile(session, file, true, [&](const std::string&) { return std::exchange(name, std::nullopt); });
}

// The path of an output. Once a file goes to standard output, the printed result goes nowhere, so that the two do not
// mix.
std::string Program::takeOutput(const std::string& output) {
    if (isStandardOutput(output)) {
        std::cout.flush();
        isOutputTaken_ = true;
    }
    return outputPath(output);
}

std::ostream& Program::out() {
    return isOutputTaken_ ? nowhere_ : std::cout;
}

int Program::print(const Json& json) {
    out() << jsonText(json) << '\n';
    return kDone;
}

bool Program::write(const std::string& output, const std::function<void(const std::string& path)>& writer) {
    try {
        writer(takeOutput(output));
        return true;
    } catch (const RuntimeError& error) {
        session.ShowMessage(saveErrorText(session, error, fullPath(outputPath(output))), kIconExclamation);
        return false;
    }
}

} // namespace kestrane

#include "cli/Program.h"

#include "app/Documents.h"
#include "app/StartUp.h"
#include "calc/Recalculation.h"
#include "server/LogLoading.h"

#include <map>

namespace kestrane {

namespace {

IniSettings settingsOf(const GlobalOptions& options) {
    if (!options.settingsFile.empty()) return IniSettings::ofFile(options.settingsFile);
    const std::string name = LoadSoftwareByFirm(options.company).SettingsAppName;
    return IniSettings::ofApplication(name.empty() ? std::string(kApplicationTitle) : name);
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

Program::Program(const GlobalOptions& options, EventPump& pump) :
    isQuiet(options.isQuiet),
    settings_(settingsOf(options)),
    messages_(std::cerr, answerOf(options)),
    pump_(pump),
    server_(pump),
    comm_(settings_, [this](int id) { return session.LoadText(id); }),
    session(options.company, localeOf(options), settings_, messages_, pump, clock) {
    session.frame = &frame_;
    session.server = &server_;
    session.comm = &comm_;
    readSettings(session);
}

clsFile* Program::open(const std::string& name) {
    if (!OpenFile(session, fullPath(name), OpenSource::Named, true)) return nullptr;
    pump_.runUntil([&] { return noLogIsBusy(session); });
    clsFile* const file = openFileOfName(session, fullPath(name));
    bool hasFailed = false;
    forEachLog(*file, [&hasFailed](const clsLog& log) { hasFailed = hasFailed || log.HasFailedRecalc; });
    return hasFailed ? nullptr : file;
}

bool Program::recalculate(clsLog& log, int mode) {
    RecalcValues(log, mode);
    pump_.runUntil([&] { return !log.IntervalsRecalculating; });
    return !log.HasFailedRecalc;
}

bool Program::saveAs(clsFile& file, const std::string& output) {
    return SaveFile(session, file, true, [&](const std::string&) { return std::optional(fullPath(output)); });
}

bool Program::write(const std::string& output, const std::function<void()>& writer) {
    try {
        writer();
        return true;
    } catch (const RuntimeError& error) {
        session.ShowMessage(saveErrorText(session, error, fullPath(output)), kIconExclamation);
        return false;
    }
}

} // namespace kestrane

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

Program::Program(const GlobalOptions& options) :
    settings_(settingsOf(options)),
    messages_(std::cerr, answerOf(options)),
    server_(pump_),
    session(options.company, localeOf(options), settings_, messages_, pump_, clock_) {
    session.frame = &frame_;
    session.server = &server_;
    readSettings(session);
}

clsFile* Program::open(const std::string& name) {
    if (!OpenFile(session, fullPath(name), OpenSource::Named, true)) return nullptr;
    pump_.runUntil([&] { return noLogIsBusy(session); });
    return session.OpenFiles.back().get();
}

void Program::recalculate(clsLog& log, int mode) {
    RecalcValues(log, mode);
    pump_.runUntil([&] { return !log.IntervalsRecalculating; });
}

} // namespace kestrane

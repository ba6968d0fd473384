// kestrane-cli: the program without its windows. Standard output carries the result alone; what the program would show
// in a box goes to standard error. Exit status: 0 done, 1 the operation failed, 2 the call's words are wrong.
#include "cli/Verbs.h"
#include "platform/RuntimeError.h"
#include "platform/qt/QtEventPump.h"

#include <QCoreApplication>

#include <exception>
#include <iostream>

namespace kestrane {

namespace {

int runVerb(const RunVerb& verb, const GlobalOptions& globals, EventPump& pump) {
    try {
        Program program(globals, pump);
        const int status = verb(program);
        std::cout.flush();
        if (status == kDone && !std::cout) {
            std::cerr << "The result could not be written.\n";
            return kFailed;
        }
        return status;
    } catch (const RuntimeError& error) {
        std::cerr << kApplicationTitle << ": " << error.Number << ": " << error.what() << '\n';
    } catch (const std::exception& error) {
        std::cerr << kApplicationTitle << ": " << error.what() << '\n';
    }
    return kFailed;
}

void addGlobals(CLI::App& app, GlobalOptions& globals) {
    app.add_option("--company", globals.company, "company name of the version data, which chooses the brand");
    app.add_option("--settings", globals.settingsFile, "the settings store: this INI file");
    app.add_option("--decimal-separator", globals.decimalSeparator, "in place of the locale's");
    app.add_option("--date-separator", globals.dateSeparator, "in place of the locale's");
    app.add_option("--answer", globals.answer, "the button pressed on every question")
        ->check(CLI::IsMember({"yes", "no", "ok", "cancel", "retry"}));
    app.add_flag("--quiet", globals.isQuiet, "no progress on standard error");
}

int run(int argc, char** argv) {
    GlobalOptions globals;
    RunVerb chosen;
    bool needsLoop = false;
    CLI::App app("Noise analysis without windows", "kestrane-cli");
    app.set_version_flag("--version", "kestrane-cli " KESTRANE_VERSION_TEXT);
    app.require_subcommand(1);
    app.fallthrough();
    addGlobals(app, globals);
    for (const auto verbs :
         {documentVerbs(), viewVerbs(), protectionVerbs(), assessmentVerbs(), reportVerbs(), downloadVerbs()}) {
        for (const Verb& verb : verbs) {
            CLI::App* sub = app.add_subcommand(verb.name, verb.description);
            sub->callback([&, runs = verb.prepare(*sub)] {
                chosen = runs;
                needsLoop = verb.needsLoop;
            });
        }
    }
    try {
        app.parse(argc, argv);
    } catch (const CLI::ParseError& error) {
        return app.exit(error) == 0 ? kDone : kWrongWords;
    }
    if (needsLoop) {
        const QCoreApplication application(argc, argv);
        QtEventPump pump;
        return runVerb(chosen, globals, pump);
    }
    HeadlessEventPump pump;
    return runVerb(chosen, globals, pump);
}

} // namespace

} // namespace kestrane

int main(int argc, char** argv) {
    return kestrane::run(argc, argv);
}

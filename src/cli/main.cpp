// kestrane-cli: the program without its windows. Standard output carries only the result; what the program would show
// in a box goes to standard error. Exit status: 0 done, 1 the operation failed, 2 the words of the call are wrong.
#include "cli/CommandLine.h"
#include "platform/RuntimeError.h"
#include "platform/qt/QtEventPump.h"

#include <QCoreApplication>

#include <csignal>
#include <exception>
#include <iostream>
#include <utility>

#include <fcntl.h>
#include <unistd.h>

namespace kestrane {

namespace {

int runVerb(const Call& call, Console& console, EventPump& pump) {
    Program program(call.globals, console, pump);
    const int status = call.run(program);
    std::cout.flush();
    return status;
}

int parseAndRun(int argc, char** argv, Console& console) {
    Call call;
    CLI::App app("Noise analysis without windows", "kestrane-cli");
    declare(app, call);
    try {
        app.parse(argc, argv);
    } catch (const CLI::ParseError& error) {
        if (error.get_exit_code() == 0) { // help or version
            app.exit(error);
            std::cout.flush();
            return kDone;
        }
        throw WrongWords(hintOf(app, error));
    }
    if (call.needsLoop) {
        const QCoreApplication application(argc, argv);
        QtEventPump pump;
        return runVerb(call, console, pump);
    }
    HeadlessEventPump pump;
    return runVerb(call, console, pump);
}

// Opens a substitute for each standard stream that the caller has closed; otherwise the next file that is opened would
// take its number. The substitute can be neither read nor written as that stream would be, so messages are lost.
void takePlaceOfClosedStreams() {
    for (const auto& [stream, mode] :
         {std::pair(STDIN_FILENO, O_WRONLY), std::pair(STDOUT_FILENO, O_RDONLY), std::pair(STDERR_FILENO, O_WRONLY)})
        if (fcntl(stream, F_GETFD) < 0) open("/dev/null", mode);
}

int run(int argc, char** argv) {
    const bool areErrorsJson = asksForJsonErrors(argc, argv);
    Console console(areErrorsJson);
    const ResultBuffer results;
    const std::string title(kApplicationTitle);
    try {
        return parseAndRun(argc, argv, console);
    } catch (const WrongWords& error) {
        console.tell(areErrorsJson ? error.what() : std::string(error.what()) + "\nkestrane-cli --help tells more.");
        return kWrongWords;
    } catch (const RuntimeError& error) {
        console.tell(title + ": " + std::to_string(error.Number) + ": " + error.what(), error.Number);
    } catch (const std::exception& error) {
        console.tell(title + ": " + error.what());
    }
    return kFailed;
}

} // namespace

} // namespace kestrane

int main(int argc, char** argv) {
    kestrane::takePlaceOfClosedStreams();
    std::signal(SIGPIPE, SIG_IGN); // writing to a reader that has gone is then an ordinary error
    return kestrane::run(argc, argv);
}

// kestrane-cli: the program without its windows. Standard output carries only the result; what the program would show
// in a box goes to standard error. Exit status: 0 done, 1 the operation failed, 2 the words of the call are wrong.
#include "cli/CommandLine.h"
#include "cli/Toolkit.h"
#include "platform/RunningProgram.h"
#include "platform/RuntimeError.h"

#include <algorithm>
#include <exception>
#include <iostream>
#include <utility>

namespace kestrane {

namespace {

int runVerb(const Call& call, Console& console, EventPump& pump) {
    Program program(call.globals, console, pump);
    const int status = call.run(program);
    std::cout.flush();
    return status;
}

int parseAndRun(const std::vector<std::string>& called, Console& console) {
    Call call;
    CLI::App app("Noise analysis without windows", "kestrane-cli");
    declare(app, call);
    try {
        std::vector<std::string> words = withEmptyValues(called);
        std::ranges::reverse(words); // as the parser wants them
        app.parse(std::move(words));
    } catch (const CLI::ParseError& error) {
        if (error.get_exit_code() == 0) { // help or version
            app.exit(error);
            std::cout.flush();
            return kDone;
        }
        throw WrongWords(hintOf(app, error));
    }
    if (call.needsLoop) return withLoop([&](EventPump& pump) { return runVerb(call, console, pump); });
    HeadlessEventPump pump;
    return runVerb(call, console, pump);
}

int run(const std::vector<std::string>& words) {
    const bool areErrorsJson = asksForJsonErrors(words);
    Console console(areErrorsJson);
    const ResultBuffer results;
    const std::string title(kApplicationTitle);
    try {
        return parseAndRun(words, console);
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
    kestrane::prepareStandardStreams();
    return kestrane::run(kestrane::programArguments(argc, argv));
}

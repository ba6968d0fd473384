// kestrane-sim: an instrument on a pseudo-terminal, fed from a data file or a transcript. Prints the path of the
// terminal and serves until it is interrupted. Exit status: 0 done, 1 it could not begin, 2 the call's words are wrong.
#include "files/Loaders.h"
#include "model/Session.h"
#include "platform/RuntimeError.h"
#include "sim/BinaryInstrument.h"
#include "sim/CorvaneInstrument.h"
#include "sim/Faults.h"
#include "sim/Line.h"
#include "sim/MerrowanInstrument.h"
#include "sim/Replay.h"
#include "sim/TallixInstrument.h"

#include <CLI/CLI.hpp>

#include <csignal>
#include <fstream>
#include <iostream>

#include <sys/signalfd.h>
#include <unistd.h>

namespace kestrane {

namespace {

constexpr int kDone = 0;
constexpr int kFailed = 1;
constexpr int kWrongWords = 2;

template <BinaryFamily family>
std::unique_ptr<Instrument> binary(Holdings holdings) {
    return std::make_unique<BinaryInstrument>(family, std::move(holdings));
}

std::unique_ptr<Instrument> merrowan(Holdings holdings) {
    return std::make_unique<MerrowanInstrument>(std::move(holdings));
}

std::unique_ptr<Instrument> tallix(Holdings holdings) {
    return std::make_unique<TallixInstrument>(std::move(holdings), std::cerr);
}

std::unique_ptr<Instrument> corvane(Holdings holdings) {
    return std::make_unique<CorvaneInstrument>(std::move(holdings));
}

struct Family {
    std::string_view name;
    int baud;
    std::unique_ptr<Instrument> (*make)(Holdings holdings);
    std::vector<std::string> models; // the first one is the default
};

const std::vector<std::string> kBrevikModels = {
    "Brevik SE", "Brevik E", "Brevik S", "Auravox Essential SE", "Auravox Essential E", "Auravox Essential S"};
const std::vector<std::string> kHalcyrModels = {"TR360L", "TR350L", "TR312L", "TR312E"};
const Family kFamilies[] = {
    {"brevik", 19200, binary<BinaryFamily::Brevik>, kBrevikModels},
    {"brevik-early", 19200, binary<BinaryFamily::BrevikEarly>, kBrevikModels},
    {"halcyr", 19200, binary<BinaryFamily::Halcyr>, kHalcyrModels},
    {"halcyr-early", 19200, binary<BinaryFamily::HalcyrEarly>, kHalcyrModels},
    {"merrowan", 2400, merrowan, {"TR326", "TR320", "TR322", "TR324", "TR352"}},
    {"tallix", 2400, tallix, {"TR342", "TR310", "TR340"}},
    {"corvane", 19200, corvane, {"Corvane 5", "Corvane 4", "Corvane 3"}},
};

struct SimOptions {
    std::string family, model, from, fault, transcript;
    std::optional<int> baud;
};

// A handle that can be read when the program is told to end.
int stopHandle() {
    sigset_t signals;
    sigemptyset(&signals);
    sigaddset(&signals, SIGINT);
    sigaddset(&signals, SIGTERM);
    sigprocmask(SIG_BLOCK, &signals, nullptr);
    return signalfd(-1, &signals, SFD_CLOEXEC);
}

int serve(std::unique_ptr<Instrument> instrument, int baud, const SimOptions& options) {
    if (!options.fault.empty()) {
        instrument = std::make_unique<FaultyInstrument>(std::move(instrument), *parseFault(options.fault));
    }
    Line line;
    const int stop = stopHandle();
    std::cout << line.path() << std::endl;
    line.serve(*instrument, options.baud.value_or(baud), stop);
    close(stop);
    return kDone;
}

int replay(const SimOptions& options) {
    std::ifstream transcript(options.transcript);
    if (!transcript) {
        std::cerr << "The transcript cannot be read.\n";
        return kFailed;
    }
    return serve(std::make_unique<ReplayedInstrument>(transcript), 19200, options);
}

int simulate(const Family& family, const SimOptions& options) {
    const std::string model = options.model.empty() ? family.models.front() : options.model;
    if (std::find(family.models.begin(), family.models.end(), model) == family.models.end()) {
        std::cerr << "--model: one of";
        for (const std::string& known : family.models)
            std::cerr << " '" << known << "'";
        std::cerr << '\n';
        return kWrongWords;
    }
    MemorySettings settings;
    ScriptedMessages messages;
    HeadlessEventPump pump;
    SystemClock clock;
    Session session("Ordwyn Acoustics", Locale(), settings, messages, pump, clock);
    clsFile file(session, options.from);
    std::string message;
    if (!LoadDocument(file, message)) {
        std::cerr << message << '\n';
        return kFailed;
    }
    return serve(family.make(holdingsOf(file, model)), family.baud, options);
}

int run(int argc, char** argv) {
    SimOptions options;
    CLI::App app("An instrument on a pseudo-terminal, for trying downloads without a meter", "kestrane-sim");
    app.set_version_flag("--version", "kestrane-sim " KESTRANE_VERSION_TEXT);
    std::vector<std::string> names;
    for (const Family& family : kFamilies)
        names.emplace_back(family.name);
    auto* family = app.add_option("--family", options.family, "whose protocol it speaks")->check(CLI::IsMember(names));
    auto* from = app.add_option("--from", options.from, "the data file whose logs it holds");
    app.add_option("--model", options.model, "which model of the family it says it is");
    app.add_option("--speed", options.baud, "baud of the line, 0 for at once; without it, the family's own")
        ->check(CLI::Range(0, 4000000));
    app.add_option("--fault", options.fault, "silence[=N], error[=N], echo, split, noise, cut=N or hangup=N")
        ->check([](const std::string& text) {
            return parseFault(text) ? std::string() : "no fault of this name: " + text;
        });
    auto* transcript = app.add_option("--replay", options.transcript, "replay this transcript of a download");
    family->needs(from)->excludes(transcript);
    from->needs(family);
    app.footer("Prints the path of the terminal, and serves until it is interrupted.");
    try {
        app.parse(argc, argv);
    } catch (const CLI::ParseError& error) {
        return app.exit(error) == 0 ? kDone : kWrongWords;
    }
    if (!options.transcript.empty()) return replay(options);
    const auto* const chosen = std::find_if(std::begin(kFamilies), std::end(kFamilies),
                                            [&](const Family& f) { return f.name == options.family; });
    if (chosen != std::end(kFamilies)) return simulate(*chosen, options);
    std::cerr << "Say --family and --from, or --replay.\n";
    return kWrongWords;
}

} // namespace

} // namespace kestrane

int main(int argc, char** argv) {
    try {
        return kestrane::run(argc, argv);
    } catch (const std::exception& error) {
        std::cerr << "kestrane-sim: " << error.what() << '\n';
        return 1;
    }
}

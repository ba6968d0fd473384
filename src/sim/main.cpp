// kestrane-sim: an instrument on a pseudo-terminal, fed from a data file or a transcript. It prints the path of the
// terminal and serves until it is interrupted. Exit status: 0 done, 1 it could not start, 2 the words of the call are
// wrong.
#include "files/Loaders.h"
#include "model/InstrumentFamilies.h"
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

#include <algorithm>
#include <csignal>
#include <fstream>
#include <iostream>
#include <span>

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

// The simulators of each family. --family accepts the name in this table, because early firmware, which speaks
// differently, has rows of its own.
struct Simulator {
    Family family;
    std::string_view name;
    int baud;
    std::unique_ptr<Instrument> (*make)(Holdings holdings);
    std::span<const std::string_view> models; // the first one is the default
};

constexpr std::string_view kBrevikModels[] = {
    "Brevik SE", "Brevik E", "Brevik S", "Auravox Essential SE", "Auravox Essential E", "Auravox Essential S"};
constexpr std::string_view kHalcyrModels[] = {"TR360L", "TR350L", "TR312L", "TR312E"};
constexpr std::string_view kMerrowanModels[] = {"TR326", "TR320", "TR322", "TR324", "TR352"};
constexpr std::string_view kTallixModels[] = {"TR342", "TR310", "TR340"};
constexpr std::string_view kCorvaneModels[] = {"Corvane 5", "Corvane 4", "Corvane 3"};
constexpr Simulator kSimulators[] = {
    {Family::Brevik, "brevik", 19200, binary<BinaryFamily::Brevik>, kBrevikModels},
    {Family::Brevik, "brevik-early", 19200, binary<BinaryFamily::BrevikEarly>, kBrevikModels},
    {Family::Halcyr, "halcyr", 19200, binary<BinaryFamily::Halcyr>, kHalcyrModels},
    {Family::Halcyr, "halcyr-early", 19200, binary<BinaryFamily::HalcyrEarly>, kHalcyrModels},
    {Family::Merrowan, "merrowan", 2400, merrowan, kMerrowanModels},
    {Family::OldTallix, "tallix", 2400, tallix, kTallixModels},
    {Family::Corvane, "corvane", 19200, corvane, kCorvaneModels},
};

constexpr bool isEveryFamilySimulated() {
    std::size_t families = 0;
    for (std::size_t family = 0; family < kFamilyCount; ++family)
        families += std::any_of(std::begin(kSimulators), std::end(kSimulators),
                                [&](const Simulator& s) { return s.family == static_cast<Family>(family); });
    return families == kFamilyCount;
}

static_assert(isEveryFamilySimulated());

struct SimOptions {
    std::string family, model, from, fault, transcript;
    std::optional<int> baud;
};

// A handle that becomes readable when the program receives a request to end.
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
    line.serve(options.baud.value_or(baud), *instrument, stop);
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

int simulate(const Simulator& simulator, const SimOptions& options) {
    const std::string model = options.model.empty() ? std::string(simulator.models.front()) : options.model;
    if (std::find(simulator.models.begin(), simulator.models.end(), model) == simulator.models.end()) {
        std::cerr << "--model: one of";
        for (const std::string_view known : simulator.models)
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
    return serve(simulator.make(holdingsOf(file, model)), simulator.baud, options);
}

int run(int argc, char** argv) {
    SimOptions options;
    CLI::App app("An instrument on a pseudo-terminal, for trying downloads without a meter", "kestrane-sim");
    app.set_version_flag("--version", "kestrane-sim " KESTRANE_VERSION_TEXT);
    std::vector<std::string> names;
    for (const Simulator& simulator : kSimulators)
        names.emplace_back(simulator.name);
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
    const auto* const chosen = std::find_if(std::begin(kSimulators), std::end(kSimulators),
                                            [&](const Simulator& s) { return s.name == options.family; });
    if (chosen != std::end(kSimulators)) return simulate(*chosen, options);
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

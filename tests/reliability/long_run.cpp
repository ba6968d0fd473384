// Uses the core of the program for as long as is wanted, and writes how much memory and how many handles it has:
//     long_run SAMPLES SECONDS   opens the samples, recalculates every log by another criterion, makes its chart and
//                                table, undoes and redoes that, and closes the files, again and again
//     long_run SAMPLES many N    opens N files at once, and measures the tree and the rules of all commands
// Exit status 1 says that memory or handles have grown, or that something took longer than it may.
#include "TestSession.h"
#include "app/Documents.h"
#include "app/Menus.h"
#include "calc/Recalculation.h"
#include "explorer/Edits.h"
#include "explorer/ExplorerTree.h"
#include "explorer/NodeKeys.h"
#include "platform/TemporaryFolder.h"
#include "server/KestraneThread.h"
#include "server/LogLoading.h"
#include "views/IntervalTable.h"
#include "views/TimeChart.h"

#include <algorithm>
#include <charconv>
#include <chrono>
#include <cstdio>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <iterator>

namespace kestrane {
namespace {

constexpr const char* kSamples[] = {"shift-dosimeter.xml", "machine-survey-octave.xml", "night-environment.xml",
                                    "brevik-short-form.xml", "roadworks-selection.xml"};
constexpr double kMostMilliseconds = 100; // for the tree or the rules, with all files open
constexpr double kMostGrowth = 1.05;      // of memory, from the second tenth of a run to its end

using Clock = std::chrono::steady_clock;

double secondsSince(Clock::time_point begin) {
    return std::chrono::duration<double>(Clock::now() - begin).count();
}

struct Used {
    double Megabytes = 0;
    long Handles = 0;
};

Used used() {
    Used now;
    std::ifstream status("/proc/self/status");
    for (std::string word; status >> word;)
        if (word == "VmRSS:") status >> now.Megabytes; // in kilobytes
    now.Megabytes /= 1024;
    const std::filesystem::directory_iterator handles("/proc/self/fd");
    now.Handles = std::distance(begin(handles), end(handles));
    return now;
}

struct Program : TestSession {
    TemporaryFolder folder;
    BackgroundServer server{pump, 2};
    std::string samples;

    explicit Program(std::string from) : samples(std::move(from)) {
        session.server = &server;
        session.StateFolder = folder.file("state/");
    }

    ~Program() { session.OpenFiles.clear(); }

    Program(const Program&) = delete;
    Program& operator=(const Program&) = delete;

    void wait() {
        pump.runUntil([this] { return noLogIsBusy(session); });
    }

    void open(std::size_t number) {
        const char* const sample = kSamples[number % std::size(kSamples)];
        const std::string name = folder.file(std::to_string(number) + sample);
        std::filesystem::copy_file(samples + "/" + sample, name, std::filesystem::copy_options::skip_existing);
        if (!OpenFile(session, name, OpenSource::Named, true)) throw std::runtime_error(name);
        wait();
    }

    void use(clsFile& file) {
        forEachLog(file, [this](clsLog& log) {
            editLog(log, Text::StepCalculation, [&log] {
                setCriterion(log, {80, 5});
                RecalcValues(log, kCalcFull);
                return true;
            });
            wait();
            fullLogChart(&log, {});
            IntervalTable(log, kChannelA, {}).copiedRows();
        });
        for (const Direction direction : {Direction::Undo, Direction::Redo, Direction::Undo}) {
            while (exchangeStep(session, &file, direction))
                wait();
        }
    }

    void close() {
        messages.Answers.assign(session.OpenFiles.size(), Button::No);
        CloseFile(session, nullptr, [](const std::string&) { return std::nullopt; });
        messages.Boxes.clear();
    }
};

int runFor(const std::string& samples, double seconds) {
    Program program(samples);
    const auto start = Clock::now();
    Used early;
    std::size_t files = 0;
    std::printf("| seconds | files | memory, MB | handles |\n|---|---|---|---|\n");
    for (int tenth = 1; tenth <= 10; ++tenth) {
        while (secondsSince(start) < seconds * tenth / 10) {
            for (std::size_t i = 0; i < std::size(kSamples); ++i)
                program.open(i);
            for (const auto& file : program.session.OpenFiles)
                program.use(*file);
            files += program.session.OpenFiles.size();
            program.close();
        }
        const Used now = used();
        std::printf("| %.0f | %zu | %.1f | %ld |\n", secondsSince(start), files, now.Megabytes, now.Handles);
        std::fflush(stdout);
        if (tenth == 2) early = now;
    }
    const Used late = used();
    const bool isFlat = late.Handles <= early.Handles && late.Megabytes <= early.Megabytes * kMostGrowth;
    std::puts(isFlat ? "flat" : "GROWING");
    return isFlat ? 0 : 1;
}

int openMany(const std::string& samples, std::size_t count) {
    Program program(samples);
    for (std::size_t i = 0; i < count; ++i)
        program.open(i);
    const auto slowest = [](const auto& work) {
        double most = 0;
        for (int i = 0; i < 5; ++i) {
            const auto start = Clock::now();
            work();
            most = std::max(most, secondsSince(start) * 1000);
        }
        return most;
    };
    const clsFile& last = *program.session.OpenFiles.back();
    MenuState state;
    state.HasExplorer = state.IsTreeActive = true;
    state.SelectedKey = logKeys(last).back();
    state.Displayed = state.InView = resolve(program.session, state.SelectedKey).log;
    std::size_t nodes = 0;
    const double tree = slowest([&] { nodes = buildTree(program.session).size(); });
    const double rules = slowest([&] {
        for (const MenuItem& item : menuItems())
            IsMenuEnabled(program.session, item.command, state);
    });
    const Used now = used();
    std::printf("%zu files open, %ld handles, %.1f MB: tree %.1f ms, rules of all commands %.1f ms\n", nodes,
                now.Handles, now.Megabytes, tree, rules);
    return nodes == count && std::max(tree, rules) <= kMostMilliseconds ? 0 : 1;
}

} // namespace
} // namespace kestrane

int main(int argc, char** argv) {
    const bool isMany = argc == 4 && std::strcmp(argv[2], "many") == 0;
    int number = 0;
    const char* const text = argc >= 3 ? argv[argc - 1] : "";
    if (!(isMany || argc == 3) || std::from_chars(text, text + std::strlen(text), number).ec != std::errc() ||
        number <= 0) {
        std::fprintf(stderr, "usage: long_run SAMPLES (SECONDS | many N)\n");
        return 2;
    }
    return isMany ? kestrane::openMany(argv[1], static_cast<std::size_t>(number)) : kestrane::runFor(argv[1], number);
}

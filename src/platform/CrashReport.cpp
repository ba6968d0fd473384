#include "platform/CrashReport.h"

#include "platform/Faults.h"
#include "platform/Paths.h"

#include <algorithm>
#include <array>
#include <atomic>
#include <chrono>
#include <cstdlib>
#include <cstring>
#include <exception>
#include <filesystem>
#include <system_error>
#include <thread>
#include <utility>
#include <vector>

namespace kestrane {

namespace {

namespace fs = std::filesystem;

constexpr std::size_t kCommands = 20;
constexpr std::size_t kReports = 5;
constexpr std::string_view kBegin = "crash-"; // of the name of a report
constexpr std::string_view kTold = "crashes"; // the folder of the reports that were told

// A text in memory of its own, cut where it does not fit.
template <std::size_t size>
class SetAside {
public:
    void set(std::string_view text) {
        const std::size_t length = std::min(text.size(), size);
        std::memcpy(text_.data(), text.data(), length);
        length_ = length;
    }

    std::string_view view() const { return {text_.data(), length_}; }

private:
    std::array<char, size> text_{};
    std::size_t length_ = 0;
};

// Everything that a report needs.
struct Known {
    SetAside<4096> path;
    SetAside<64> version;
    SetAside<8192> files;
    std::array<SetAside<80>, kCommands> commands;
    std::size_t commandsNoted = 0;
    std::atomic<bool> isWritten = false;
    std::thread::id owner;
    std::function<void()> lastWords;
};

Known known;

struct Fault {
    std::string_view Kind; // such as "signal 11"
    std::string_view What; // more of an exception; empty of a fault
};

// Takes neither memory nor a lock.
void report(const Fault& fault) {
    if (known.isWritten.exchange(true)) return;
    ReportFile file(known.path.view().data());
    file.put("kestrane ");
    file.put(known.version.view());
    file.put("\n");
    file.put(fault.Kind);
    file.put(fault.What);
    file.put("\n\nopen files:\n");
    file.put(known.files.view());
    file.put("\nlast commands, the oldest first:\n");
    const std::size_t count = std::min(known.commandsNoted, kCommands);
    for (std::size_t i = known.commandsNoted - count; i < known.commandsNoted; ++i) {
        file.put(known.commands[i % kCommands].view());
        file.put("\n");
    }
    file.put("\nstack:\n");
    file.putStack();
}

void onFault(std::string_view kind) {
    report({kind, {}});
}

} // namespace

void installCrashReport(const std::string& folder, std::string_view version) {
    std::error_code ignored; // without a folder there is no report
    fs::create_directories(pathOf(folder), ignored);
    known.path.set(folder + std::string(kBegin) + processNumber() + ".txt" + '\0');
    known.version.set(version);
    known.owner = std::this_thread::get_id();
    catchFaults(onFault);
    std::set_terminate(endByException);
}

void noteCommand(std::string_view name) {
    known.commands[known.commandsNoted % kCommands].set(name);
    ++known.commandsNoted;
}

void noteOpenFiles(std::string_view names) {
    known.files.set(names);
}

void setLastWords(std::function<void()> words) {
    known.lastWords = std::move(words);
}

void endByException() noexcept {
    std::string_view what = "of an unknown kind";
    const std::exception_ptr current = std::current_exception();
    try {
        if (current) std::rethrow_exception(current);
        what = "none: the program was told to end";
    } catch (const std::exception& error) {
        what = error.what();
    } catch (...) {
        what = "of an unknown kind";
    }
    report({"exception: ", what});
    try {
        if (known.lastWords && std::this_thread::get_id() == known.owner) std::exchange(known.lastWords, {})();
    } catch (...) {
        what = {}; // nobody is left to be told
    }
    std::abort();
}

std::string takeCrashReport(const std::string& folder) {
    const auto reportsIn = [](const std::string& place) {
        std::vector<fs::path> reports;
        std::error_code failed;
        for (fs::directory_iterator at(pathOf(place), failed), end; !failed && at != end; at.increment(failed))
            if (at->path().filename().string().starts_with(kBegin)) reports.push_back(at->path());
        const auto written = [](const fs::path& path) {
            std::error_code unknown;
            return fs::last_write_time(path, unknown);
        };
        std::ranges::sort(reports, std::ranges::greater{}, written);
        return reports;
    };
    std::string newest;
    const std::string told = folder + std::string(kTold) + "/";
    std::error_code failed;
    for (const fs::path& report : reportsIn(folder)) {
        fs::create_directories(pathOf(told), failed);
        const auto written = std::chrono::file_clock::to_sys(fs::last_write_time(report, failed));
        const auto seconds = std::chrono::duration_cast<std::chrono::seconds>(written.time_since_epoch()).count();
        const std::string path = told + report.stem().string() + "-" + std::to_string(seconds) + ".txt";
        fs::rename(report, pathOf(path), failed);
        if (!failed && newest.empty()) newest = path;
    }
    const std::vector<fs::path> old = reportsIn(told);
    for (std::size_t i = kReports; i < old.size(); ++i)
        fs::remove(old[i], failed);
    return newest;
}

} // namespace kestrane

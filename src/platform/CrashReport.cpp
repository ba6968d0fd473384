#include "platform/CrashReport.h"

#include <algorithm>
#include <array>
#include <atomic>
#include <chrono>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <exception>
#include <filesystem>
#include <system_error>
#include <thread>
#include <utility>
#include <vector>

#include <execinfo.h>
#include <fcntl.h>
#include <unistd.h>

namespace kestrane {

namespace {

namespace fs = std::filesystem;

constexpr std::size_t kCommands = 20;
constexpr std::size_t kReports = 5;
constexpr int kFrames = 64;
constexpr int kSignals[] = {SIGSEGV, SIGBUS, SIGFPE, SIGILL, SIGABRT};
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
    alignas(16) std::array<char, 65536> stack{}; // for the handler, since a fault may be of the stack
};

Known known;

// From here to report() nothing takes memory or a lock.
void put(int file, std::string_view text) {
    while (!text.empty()) {
        const auto count = ::write(file, text.data(), text.size());
        if (count <= 0) return;
        text.remove_prefix(static_cast<std::size_t>(count));
    }
}

// The number of a signal.
void putNumber(int file, unsigned char number) {
    const char digits[] = {static_cast<char>('0' + number / 10), static_cast<char>('0' + number % 10)};
    put(file, {digits, sizeof digits});
}

// signal is 0 for an exception, of which what says more.
void report(int signal, std::string_view what) {
    if (known.isWritten.exchange(true)) return;
    const int file = ::open(known.path.view().data(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC | O_NOFOLLOW, 0600);
    if (file < 0) return;
    put(file, "kestrane ");
    put(file, known.version.view());
    put(file, signal == 0 ? "\nexception: " : "\nsignal ");
    if (signal != 0) putNumber(file, static_cast<unsigned char>(signal));
    put(file, what);
    put(file, "\n\nopen files:\n");
    put(file, known.files.view());
    put(file, "\nlast commands, the oldest first:\n");
    const std::size_t count = std::min(known.commandsNoted, kCommands);
    for (std::size_t i = known.commandsNoted - count; i < known.commandsNoted; ++i) {
        put(file, known.commands[i % kCommands].view());
        put(file, "\n");
    }
    put(file, "\nstack:\n");
    void* frames[kFrames];
    backtrace_symbols_fd(frames, backtrace(frames, kFrames), file);
    ::fsync(file);
    ::close(file);
}

void onFault(int signal) {
    report(signal, {});
    // The handler is gone by now (SA_RESETHAND), so that this ends the program as the fault would have.
    ::raise(signal);
}

} // namespace

void installCrashReport(const std::string& folder, std::string_view version) {
    std::error_code ignored; // without a folder there is no report
    fs::create_directories(folder, ignored);
    known.path.set(folder + std::string(kBegin) + std::to_string(::getpid()) + ".txt" + '\0');
    known.version.set(version);
    known.owner = std::this_thread::get_id();
    void* frame = nullptr;
    backtrace(&frame, 1); // the first call loads a library, which a handler must not

    stack_t own{};
    own.ss_sp = known.stack.data();
    own.ss_size = known.stack.size();
    sigaltstack(&own, nullptr);

    struct sigaction action {};

    action.sa_handler = onFault;
    action.sa_flags = static_cast<int>(SA_ONSTACK | SA_RESETHAND);
    sigemptyset(&action.sa_mask);
    for (const int signal : kSignals)
        sigaction(signal, &action, nullptr);
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
    report(0, what);
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
        for (fs::directory_iterator at(place, failed), end; !failed && at != end; at.increment(failed))
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
        fs::create_directories(told, failed);
        const auto written = std::chrono::file_clock::to_sys(fs::last_write_time(report, failed));
        const auto seconds = std::chrono::duration_cast<std::chrono::seconds>(written.time_since_epoch()).count();
        const std::string path = told + report.stem().string() + "-" + std::to_string(seconds) + ".txt";
        fs::rename(report, path, failed);
        if (!failed && newest.empty()) newest = path;
    }
    const std::vector<fs::path> old = reportsIn(told);
    for (std::size_t i = kReports; i < old.size(); ++i)
        fs::remove(old[i], failed);
    return newest;
}

} // namespace kestrane

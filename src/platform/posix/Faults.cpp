#include "platform/Faults.h"

#include <array>
#include <csignal>

#include <execinfo.h>
#include <fcntl.h>
#include <unistd.h>

namespace kestrane {

namespace {

constexpr int kFrames = 64;
constexpr int kSignals[] = {SIGSEGV, SIGBUS, SIGFPE, SIGILL, SIGABRT};

void (*toReport)(std::string_view kind) = nullptr;
alignas(16) std::array<char, 65536> handlersStack{}; // since a fault may be of the stack

void onSignal(int signal) {
    const char kind[] = {
        's', 'i', 'g', 'n', 'a', 'l', ' ', static_cast<char>('0' + signal / 10), static_cast<char>('0' + signal % 10)};
    toReport({kind, sizeof kind});
    // The handler is gone by now (SA_RESETHAND), so that this ends the program as the fault would have.
    ::raise(signal);
}

} // namespace

ReportFile::ReportFile(const char* path) :
    file_(::open(path, O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC | O_NOFOLLOW, 0600)) {}

ReportFile::~ReportFile() {
    if (file_ < 0) return;
    ::fsync(file_);
    ::close(file_);
}

void ReportFile::put(std::string_view text) {
    while (!text.empty()) {
        const auto count = ::write(file_, text.data(), text.size());
        if (count <= 0) return;
        text.remove_prefix(static_cast<std::size_t>(count));
    }
}

void ReportFile::putStack() {
    void* frames[kFrames];
    if (file_ >= 0) backtrace_symbols_fd(frames, backtrace(frames, kFrames), file_);
}

void catchFaults(void (*report)(std::string_view kind)) {
    toReport = report;
    void* frame = nullptr;
    backtrace(&frame, 1); // the first call loads a library, which a handler must not

    stack_t own{};
    own.ss_sp = handlersStack.data();
    own.ss_size = handlersStack.size();
    sigaltstack(&own, nullptr);

    struct sigaction action {};

    action.sa_handler = onSignal;
    action.sa_flags = static_cast<int>(SA_ONSTACK | SA_RESETHAND);
    sigemptyset(&action.sa_mask);
    for (const int signal : kSignals)
        sigaction(signal, &action, nullptr);
}

std::string processNumber() {
    return std::to_string(::getpid());
}

} // namespace kestrane

#include "Measure.h"

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstdlib>

#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

namespace kestrane::bench {

namespace {

[[noreturn]] void giveUp(const char* what) {
    std::perror(what);
    std::exit(1);
}

Measured runChild(const std::function<double()>& work) {
    int ends[2];
    if (pipe(ends) != 0) giveUp("pipe");
    std::fflush(nullptr);
    const pid_t child = fork();
    if (child < 0) giveUp("fork");
    if (child == 0) {
        const double figure = work();
        const bool isSent = write(ends[1], &figure, sizeof figure) == sizeof figure;
        _exit(isSent ? 0 : 1);
    }
    close(ends[1]);
    Measured measured;
    const bool isRead = read(ends[0], &measured.figure, sizeof measured.figure) == sizeof measured.figure;
    close(ends[0]);
    int status = 0;

    struct rusage usage {};

    if (wait4(child, &status, 0, &usage) != child || status != 0 || !isRead) {
        std::fprintf(stderr, "A measurement failed.\n");
        std::exit(1);
    }
    measured.peakMemory = static_cast<std::size_t>(usage.ru_maxrss) * 1024;
    return measured;
}

void keepBest(Measured& best, const Measured& next, bool isFirst) {
    best.figure = isFirst ? next.figure : std::min(best.figure, next.figure);
    best.peakMemory = std::max(best.peakMemory, next.peakMemory);
}

} // namespace

Measured measure(const std::function<double()>& work) {
    const std::size_t idle = runChild([] { return 0.0; }).peakMemory;
    Measured measured = runChild(work);
    measured.peakMemory -= std::min(idle, measured.peakMemory);
    return measured;
}

Compared compare(int times, const std::function<double()>& work, const std::function<double()>& yardstick) {
    Compared best;
    for (int i = 0; i < times; ++i) {
        keepBest(best.work, measure(work), i == 0);
        keepBest(best.yardstick, measure(yardstick), i == 0);
    }
    return best;
}

double secondsOf(const std::function<void()>& work) {
    const auto begin = std::chrono::steady_clock::now();
    work();
    return std::chrono::duration<double>(std::chrono::steady_clock::now() - begin).count();
}

void use(double value) {
    volatile double sink = value;
    static_cast<void>(sink);
}

Table::Table() {
    std::printf("%-58s %12s %12s  %-4s %7s %9s\n", "what", "figure", "yardstick", "", "ratio", "required");
}

void Table::line(const std::string& what, double figure, double yardstick, const char* unit, bool isAtMost,
                 double required) {
    const double ratio = figure / yardstick;
    const bool isMet = isAtMost ? ratio <= required : ratio >= required;
    if (!isMet) ++missed_;
    std::printf("%-58s %12.3f %12.3f  %-4s %7.2f   %s %4.2f  %s\n", what.c_str(), figure, yardstick, unit, ratio,
                isAtMost ? "<=" : ">=", required, isMet ? "ok" : "MISSED");
    std::fflush(stdout);
}

} // namespace kestrane::bench

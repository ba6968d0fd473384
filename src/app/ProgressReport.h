// The progress of a download in words, for the progress dialog and the command line. Each download has its own report.
// It estimates the remaining time from the logs read so far, assuming that all logs take equally long.
#pragma once

#include "download/DownloadUser.h"
#include "model/Session.h"
#include "platform/MonotonicClock.h"

#include <chrono>
#include <optional>
#include <string>

namespace kestrane {

// A text is empty when it is not known.
struct ProgressWords {
    std::string Label;
    std::string Log;
    std::string Received;
    std::string TimeLeft;
    std::optional<int> Percent;
};

class ProgressReport {
public:
    ProgressReport(const Session& session, const MonotonicClock& clock) : session_(session), clock_(clock) {}

    ProgressWords WordsOf(const DownloadProgress& progress);

private:
    std::string receivedText(std::int64_t bytes) const;
    std::string timeLeftText(double done);

    const Session& session_;
    const MonotonicClock& clock_;
    std::optional<std::chrono::milliseconds> begin_; // when the first log began
    double doneAtBegin_ = 0;
};

} // namespace kestrane

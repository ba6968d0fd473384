// How a download stands, in words: what the progress dialog and the command line show. One report goes with one
// download; it estimates the time left from the logs read so far, taking all for equally long.
#pragma once

#include "download/DownloadUser.h"
#include "model/Session.h"
#include "platform/MonotonicClock.h"

#include <chrono>
#include <optional>
#include <string>

namespace kestrane {

// What is not known is empty.
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
    std::optional<std::chrono::milliseconds> begin_; // of the first log
    double doneAtBegin_ = 0;
};

} // namespace kestrane

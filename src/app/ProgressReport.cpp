#include "app/ProgressReport.h"

#include "platform/Format.h"

#include <algorithm>
#include <cmath>

namespace kestrane {

namespace {

using Seconds = std::chrono::duration<double>;

constexpr Seconds kFirstEstimate{3}; // an estimate is shown after this time, once kLeastDone has been done since
constexpr double kLeastDone = 0.01;
constexpr int kTellSilence = 3; // seconds

// The part of all chosen logs that has been read, 0..1; nothing when no log is being read.
std::optional<double> doneOf(const DownloadProgress& progress) {
    if (progress.Log < 1 || progress.Logs < 1) return std::nullopt;
    double done = progress.Log - 1;
    if (progress.LogBytesTotal > 0) {
        done +=
            std::clamp(static_cast<double>(progress.LogBytes) / static_cast<double>(progress.LogBytesTotal), 0.0, 1.0);
    }
    return std::min(done / progress.Logs, 1.0);
}

// A duration such as "5 secs", "1 min" or "3 hours", rounded up; seconds to a multiple of five.
std::string durationText(const Session& session, double seconds) {
    struct Unit {
        double below; // seconds
        double length;
        int step;
        Text::Id many, one;
    };

    constexpr Unit kUnits[] = {{55, 1, 5, Text::Seconds, Text::OneSecond},
                               {5400, 60, 1, Text::Minutes, Text::OneMinute},
                               {HUGE_VAL, 3600, 1, Text::Hours, Text::OneHour}};
    const Unit& unit =
        *std::find_if(std::begin(kUnits), std::end(kUnits), [&](const Unit& u) { return seconds < u.below; });
    const int count =
        std::max(1, static_cast<int>(std::ceil(std::min(seconds / unit.length, 1e6) / unit.step))) * unit.step;
    return count == 1 ? session.texts.LoadMessage(unit.one)
                      : ReplaceText(session.texts.LoadMessage(unit.many), "*", std::to_string(count));
}

} // namespace

ProgressWords ProgressReport::WordsOf(const DownloadProgress& progress) {
    ProgressWords words;
    words.Label = progress.Label;
    words.Received = receivedText(progress.BytesReceived);
    if (const auto done = doneOf(progress)) {
        const std::string log = ReplaceText(session_.LoadText(Text::LogOf), "^", std::to_string(progress.Log));
        words.Log = ReplaceText(log, "*", std::to_string(progress.Logs));
        words.Percent = static_cast<int>(std::floor(*done * 100));
        words.TimeLeft = timeLeftText(*done);
    } else {
        begin_.reset();
    }
    if (progress.SilentSeconds >= kTellSilence)
        words.TimeLeft = ReplaceText(session_.LoadText(Text::NoDataFor), "^", std::to_string(progress.SilentSeconds));
    return words;
}

std::string ProgressReport::receivedText(std::int64_t bytes) const {
    constexpr std::int64_t kLargestCount = 9999;
    constexpr double kThousand = 1000;
    if (bytes == 0) return {};
    if (bytes <= kLargestCount) return ReplaceText(session_.LoadText(Text::BytesReceived), "^", std::to_string(bytes));
    const std::string number = formatNumber(static_cast<double>(bytes) / kThousand, "0.0", session_.locale);
    return ReplaceText(session_.LoadText(Text::KBReceived), "^", number);
}

std::string ProgressReport::timeLeftText(double done) {
    if (!begin_) {
        begin_ = clock_.now();
        doneAtBegin_ = done;
    }
    const Seconds elapsed = clock_.now() - *begin_;
    const double since = done - doneAtBegin_;
    if (elapsed < kFirstEstimate || since < kLeastDone) return {};
    return ReplaceText(session_.LoadText(Text::AboutLeft), "^",
                       durationText(session_, elapsed.count() * (1 - done) / since));
}

} // namespace kestrane

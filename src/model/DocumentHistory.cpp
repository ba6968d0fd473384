#include "model/DocumentHistory.h"

#include "model/Session.h"
#include "model/UndoStack.h"
#include "platform/Format.h"

#include <algorithm>
#include <utility>

namespace kestrane {

HistoryLine historyLine(const Session& session, std::string what) {
    const CalendarTime now = session.clock.now();
    return {.Time = formatDate(now, "yyyy-mm-dd") + "T" + formatDate(now, "hh:nn:ss"),
            .What = std::move(what),
            .Log = {},
            .Identity = {},
            .Before = {},
            .After = {},
            .Reason = {},
            .OfFile = {}};
}

void DocumentHistory::add(HistoryLine line, const EditStep* step) {
    settle();
    lines_.push_back(std::move(line));
    step_ = step;
}

void DocumentHistory::settle() {
    if (const EditStep* const step = std::exchange(step_, nullptr); step != nullptr) step->describe(lines_.back());
}

std::vector<HistoryLine> DocumentHistory::lines() const {
    std::vector<HistoryLine> lines = lines_;
    if (step_ != nullptr) step_->describe(lines.back());
    return lines;
}

std::vector<HistoryLine> DocumentHistory::oldestFirst() const {
    struct Timed {
        std::string Time; // of the line before, for one that could not be read
        HistoryLine Line;
    };

    std::vector<Timed> timed;
    timed.reserve(lines_.size());
    for (HistoryLine& line : lines()) {
        const std::string before = timed.empty() ? std::string() : timed.back().Time;
        timed.push_back({line.Time.empty() ? before : line.Time, std::move(line)});
    }
    std::ranges::stable_sort(timed, {}, &Timed::Time);
    std::vector<HistoryLine> sorted;
    sorted.reserve(timed.size());
    for (Timed& each : timed)
        sorted.push_back(std::move(each.Line));
    return sorted;
}

const HistoryLine* DocumentHistory::lastOfFile() const {
    const auto found = std::find_if(lines_.rbegin(), lines_.rend(), [](const auto& line) { return line.OfFile; });
    return found == lines_.rend() ? nullptr : &*found;
}

std::string historyNameOf(const std::string& dataFile) {
    return dataFile + ".history.jsonl";
}

} // namespace kestrane

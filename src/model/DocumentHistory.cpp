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
    std::vector<HistoryLine> sorted = lines();
    std::ranges::stable_sort(sorted, {}, &HistoryLine::Time);
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

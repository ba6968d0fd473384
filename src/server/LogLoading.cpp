#include "server/LogLoading.h"

#include "model/LogParameters.h"
#include "server/KestraneThread.h"

#include <algorithm>

namespace kestrane {

namespace {

void countFinishedRange(clsLog& log, const RowsComplete& complete) {
    Session& session = log.session();
    if (++log.FinishedRanges < static_cast<int>(log.LoadRanges.size())) return;
    log.LogIntervals.ApplySelection();
    SetPlottableValues(log);
    log.IntervalsToLoad = false;
    log.IntervalsLoading = false;
    log.LoadRanges.clear();
    log.IntervalNodes.reset();
    if (complete) complete(log);
    log.RaiseLogValuesChanged();
    TellWhenLoaded(session);
}

} // namespace

void TellWhenLoaded(const Session& session) {
    if (!noLogIsBusy(session)) return;
    session.frame->SetPanel(Frame::Panel::Status, session.LoadText(Text::LoadingCompleted));
    session.frame->EnableMenusAndButtons();
}

void LoadWaitingIntervals(Session& session, const RowsComplete& complete) {
    forEachLog(session, [&](clsLog& log) {
        if (log.IntervalsToLoad && !log.IntervalsLoading) CreateLoadThreads(log, complete);
    });
}

void CreateLoadThreads(clsLog& log, const RowsComplete& complete) {
    Session& session = log.session();
    log.IntervalsLoading = true;
    session.frame->SetPanel(Frame::Panel::Status, session.LoadText(Text::LoadingIntervals));
    session.frame->EnableMenusAndButtons();
    log.FinishedRanges = 0;
    log.LogIntervals.setArraySize(log.IntervalNodes->Count());
    log.LoadThreads.assign(log.LoadRanges.size(), nullptr);
    for (std::size_t n = 0; n < log.LoadRanges.size(); ++n) {
        LoadRequest request{log.IntervalNodes, log.Mode(), log.IsChannelBOn, log.LoadRanges[n].From,
                            log.LoadRanges[n].To};
        LoadEvents events;
        events.ThreadLoadResults = [&log, n, complete](const IntervalColumns& rows, std::int64_t first,
                                                       std::int64_t last) {
            // A single range holds all rows, so its columns are shared.
            log.LogIntervals.copyData(rows, log.LoadRanges.size() == 1 ? 0 : first, last);
            log.LoadThreads[n].reset();
            countFinishedRange(log, complete);
        };
        events.Error = [&log, n, complete](const ThreadError& error) {
            log.session().frame->SetPanel(
                Frame::Panel::Error, threadErrorText(log.session(), error.iErrNo, error.sDescription, error.iLine));
            log.HasUnreadIntervals = true;
            log.LoadThreads[n].reset();
            countFinishedRange(log, complete);
        };
        log.LoadThreads[n] = session.server->Load(std::move(request), std::move(events));
    }
}

std::string threadErrorText(const Session& session, std::int64_t number, const std::string& description, int line) {
    const std::string place =
        line != 0 ? ReplaceText(session.LoadText(Text::LinePrefix), "^", std::to_string(line)) : std::string();
    return "  " + place + std::to_string(number) + ": " + description + "  ";
}

bool noLogIsBusy(const Session& session) {
    return std::none_of(session.OpenFiles.rbegin(), session.OpenFiles.rend(),
                        [](const auto& file) { return file->IsBusy(); });
}

} // namespace kestrane

// Loading the rows of logs behind an open document: which ranges are asked of the background server, and what happens
// when they come.
#pragma once

#include "model/Session.h"

#include <functional>

namespace kestrane {

class clsLog;

// Starts the load of every log that has rows to load and none under way. A log's rows are complete when all ranges have
// reported; a range that failed stays empty and its error is shown in the frame's panel.
// complete, if given, is then called for the log, before its change event.
using RowsComplete = std::function<void(clsLog& log)>;
void LoadWaitingIntervals(Session& session, const RowsComplete& complete = {});

// Starts the load of one log.
void CreateLoadThreads(clsLog& log, const RowsComplete& complete = {});

// The text of an error event for the frame's panel.
std::string threadErrorText(const Session& session, std::int64_t number, const std::string& description, int line);

// No log of any open file loads, waits for loading or recalculates.
bool noLogIsBusy(const Session& session);

} // namespace kestrane

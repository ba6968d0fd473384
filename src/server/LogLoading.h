// Loads the rows of logs in the background while their document is open: which ranges the background server is asked
// for, and what happens when they arrive.
#pragma once

#include "model/Session.h"

#include <functional>

namespace kestrane {

class clsLog;

// Starts loading the rows of every log that waits for its rows and is not loading them yet. The rows of a log are
// complete when all ranges have reported; a range that failed stays empty and its error is shown in the frame's panel.
// complete, if given, is then called for the log, before its change event.
using RowsComplete = std::function<void(clsLog& log)>;
void LoadWaitingIntervals(Session& session, const RowsComplete& complete = {});

// Starts loading the rows of one log.
void CreateLoadThreads(clsLog& log, const RowsComplete& complete = {});

// The text of an error event for the frame's panel; line 0 means that no line is known.
std::string threadErrorText(const Session& session, std::int64_t number, const std::string& description, int line);

// Says in the frame's panel that all is loaded, once no open file is busy any more.
void TellWhenLoaded(const Session& session);

// True when no log of any open file is loading, waiting for loading or recalculating, and no file is being hashed.
bool noLogIsBusy(const Session& session);

} // namespace kestrane

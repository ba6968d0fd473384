// The logs that are measured, and the session they live in.
#pragma once

#include "model/Session.h"
#include "server/KestraneThread.h"

#include <cstdint>
#include <memory>
#include <string>

namespace kestrane::bench {

// A session without windows, with its server.
class BenchSession {
public:
    BenchSession();

    // Waits until no log loads or recalculates.
    void finishWork();

private:
    MemorySettings settings_;
    ScriptedMessages messages_;
    HeadlessEventPump pump_;
    SystemClock clock_;
    BackgroundServer server_;

public:
    Session session;
};

// Rows of levels that walk about as a measurement's do, with one decimal, in every band.
IntervalColumns walkingRows(LogMode mode, std::size_t count);

// A document with one log of such rows, opened into the session.
clsFile& addDocument(Session& session, const std::string& name, LogMode mode, std::size_t rows);

} // namespace kestrane::bench

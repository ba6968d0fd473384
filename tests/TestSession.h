// A session without windows for a test, all its services in memory.
#pragma once

#include "model/Session.h"

namespace kestrane {

struct TestSession {
    MemorySettings settings;
    ScriptedMessages messages;
    HeadlessEventPump pump;
    SystemClock clock;
    Session session;

    explicit TestSession(Locale locale = {}, const Wording& wording = {}) :
        session("Ordwyn Acoustics", std::move(locale), settings, messages, pump, clock, wording) {}
};

} // namespace kestrane

// The event pump on the Qt event loop: posted events and the user's own events (clicks, keys, timers) run in the same
// loop. It must be created on the thread of the application object, which is the owner thread.
#pragma once

#include "platform/EventPump.h"

#include <QObject>

namespace kestrane {

class QtEventPump : public EventPump {
public:
    void post(std::function<void()> event) override;
    void yield() override;
    void wait(std::chrono::milliseconds atMost) override;

private:
    QObject receiver_; // lives on the owner thread; events that have not run are dropped with it
};

} // namespace kestrane

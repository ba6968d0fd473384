// The event pump: how results of background work reach the thread that owns the documents (the owner thread), and how
// long work on that thread yields. The desktop form drives the Qt loop (platform/qt); the headless form is a queue.
#pragma once

#include <chrono>
#include <condition_variable>
#include <deque>
#include <functional>
#include <mutex>

namespace kestrane {

class EventPump {
public:
    virtual ~EventPump() = default;

    // Any thread: run the event on the owner thread, after those posted before it.
    virtual void post(std::function<void()> event) = 0;

    // Owner thread: run all events that are due. Events may post, and may call yield.
    virtual void yield() = 0;

    // Owner thread: sleep until an event is due, or the time is up, then yield.
    virtual void wait(std::chrono::milliseconds atMost) = 0;

    // Owner thread: run events until done() is true.
    void runUntil(const std::function<bool()>& done);
};

class HeadlessEventPump : public EventPump {
public:
    void post(std::function<void()> event) override;
    void yield() override;
    void wait(std::chrono::milliseconds atMost) override;

private:
    std::mutex mutex_;
    std::condition_variable posted_;
    std::deque<std::function<void()>> events_;
};

} // namespace kestrane

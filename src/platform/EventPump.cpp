#include "platform/EventPump.h"

#include <utility>

namespace kestrane {

void EventPump::runUntil(const std::function<bool()>& done) {
    constexpr std::chrono::milliseconds kStep{50}; // done() may depend on more than events
    while (!done())
        wait(kStep);
}

void HeadlessEventPump::post(std::function<void()> event) {
    {
        const std::lock_guard lock(mutex_);
        events_.push_back(std::move(event));
    }
    posted_.notify_one();
}

void HeadlessEventPump::yield() {
    std::unique_lock lock(mutex_);
    // Only as many as there are now: an event that posts itself again must not hold the caller for ever.
    for (std::size_t due = events_.size(); due > 0 && !events_.empty(); --due) {
        const std::function<void()> event = std::move(events_.front());
        events_.pop_front();
        lock.unlock();
        event();
        lock.lock();
    }
}

void HeadlessEventPump::wait(std::chrono::milliseconds atMost) {
    {
        std::unique_lock lock(mutex_);
        posted_.wait_for(lock, atMost, [this] { return !events_.empty(); });
    }
    yield();
}

} // namespace kestrane

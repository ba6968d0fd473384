// A time that never goes back, counted from an arbitrary start: for waits and transcripts. It is an interface so that a
// test need not wait.
#pragma once

#include <chrono>

namespace kestrane {

class MonotonicClock {
public:
    virtual ~MonotonicClock() = default;
    virtual std::chrono::milliseconds now() const = 0;
};

class SteadyClock : public MonotonicClock {
public:
    std::chrono::milliseconds now() const override {
        return std::chrono::duration_cast<std::chrono::milliseconds>(
            std::chrono::steady_clock::now().time_since_epoch());
    }
};

} // namespace kestrane

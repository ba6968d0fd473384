// What every event pump promises; each kind of pump is put through it.
#pragma once

#include "platform/EventPump.h"

#include <gtest/gtest.h>

#include <thread>
#include <vector>

namespace kestrane {

inline void expectEventsOfThreadsInOrder(EventPump& pump) {
    constexpr int kEvents = 2000;
    const auto owner = std::this_thread::get_id();
    std::vector<int> last(4, -1);
    std::vector<std::thread> threads;
    for (std::size_t t = 0; t < last.size(); ++t) {
        threads.emplace_back([&, t] {
            for (int i = 0; i < kEvents; ++i)
                pump.post([&, t, i] {
                    EXPECT_EQ(std::this_thread::get_id(), owner);
                    EXPECT_EQ(last[t], i - 1);
                    last[t] = i;
                });
        });
    }
    pump.runUntil([&] { return last == std::vector<int>(4, kEvents - 1); });
    for (std::thread& thread : threads)
        thread.join();
}

inline void expectEventsToPostAndYield(EventPump& pump) {
    std::vector<int> order;
    pump.post([&] {
        order.push_back(1);
        pump.post([&] { order.push_back(3); });
        pump.yield();
        order.push_back(4);
    });
    pump.post([&] { order.push_back(2); });
    pump.yield();
    EXPECT_EQ(order, (std::vector<int>{1, 2, 3, 4}));
}

} // namespace kestrane

#include "platform/EventPump.h"

#include <gtest/gtest.h>

#include <atomic>
#include <thread>
#include <vector>

namespace kestrane {
namespace {

TEST(HeadlessEventPump, RunsWhatThreadsPostOnTheOwnerThreadInOrder) {
    constexpr int kThreads = 4;
    constexpr int kEvents = 2000;
    HeadlessEventPump pump;
    const auto owner = std::this_thread::get_id();
    std::vector<int> last(kThreads, -1);
    int run = 0;
    std::vector<std::thread> threads;
    for (int t = 0; t < kThreads; ++t) {
        threads.emplace_back([&, t] {
            for (int i = 0; i < kEvents; ++i)
                pump.post([&, t, i] {
                    EXPECT_EQ(std::this_thread::get_id(), owner);
                    EXPECT_EQ(last[t], i - 1);
                    last[t] = i;
                    ++run;
                });
        });
    }
    pump.runUntil([&] { return run == kThreads * kEvents; });
    for (std::thread& thread : threads)
        thread.join();
}

TEST(HeadlessEventPump, EventsMayPostAndYield) {
    HeadlessEventPump pump;
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

    // One that posts itself for ever does not hold the caller.
    int rounds = 0;
    std::function<void()> again = [&] {
        ++rounds;
        pump.post(again);
    };
    pump.post(again);
    pump.yield();
    EXPECT_EQ(rounds, 1);
}

TEST(HeadlessEventPump, WaitEndsWithAnEventOrTheTime) {
    HeadlessEventPump pump;
    pump.wait(std::chrono::milliseconds(1));
    bool hasRun = false;
    std::thread thread([&] { pump.post([&] { hasRun = true; }); });
    pump.wait(std::chrono::minutes(5));
    EXPECT_TRUE(hasRun);
    thread.join();
}

TEST(HeadlessEventPump, GoesOnBehindAnEventThatRaises) {
    HeadlessEventPump pump;
    bool hasRun = false;
    pump.post([] { throw std::runtime_error("event"); });
    pump.post([&] { hasRun = true; });
    EXPECT_THROW(pump.yield(), std::runtime_error);
    pump.yield();
    EXPECT_TRUE(hasRun);
}

} // namespace
} // namespace kestrane

#include "platform/qt/QtEventPump.h"

#include <QTimer>

#include <gtest/gtest.h>

#include <thread>
#include <vector>

namespace kestrane {
namespace {

TEST(QtEventPump, RunsWhatThreadsPostOnTheOwnerThreadInOrder) {
    constexpr int kEvents = 2000;
    QtEventPump pump;
    const auto owner = std::this_thread::get_id();
    std::vector<int> last(3, -1);
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
    pump.runUntil([&] { return last == std::vector<int>(3, kEvents - 1); });
    for (std::thread& thread : threads)
        thread.join();
}

TEST(QtEventPump, YieldsToNestedEventsAndTimers) {
    QtEventPump pump;
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

    bool hasRung = false;
    QTimer::singleShot(5, [&] { hasRung = true; });
    pump.runUntil([&] { return hasRung; });
}

TEST(QtEventPump, WaitEndsWithAnEventOrTheTime) {
    QtEventPump pump;
    const auto begin = std::chrono::steady_clock::now();
    pump.wait(std::chrono::milliseconds(20)); // nothing else is due
    EXPECT_LT(std::chrono::steady_clock::now() - begin, std::chrono::seconds(20));

    int run = 0;
    std::thread thread([&] { pump.post([&] { ++run; }); });
    while (run == 0)
        pump.wait(std::chrono::minutes(5));
    thread.join();
}

} // namespace
} // namespace kestrane

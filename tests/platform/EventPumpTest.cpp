#include "platform/EventPumpTests.h"

namespace kestrane {
namespace {

TEST(HeadlessEventPump, RunsWhatIsPostedInOrder) {
    HeadlessEventPump pump;
    expectEventsOfThreadsInOrder(pump);
    expectEventsToPostAndYield(pump);

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

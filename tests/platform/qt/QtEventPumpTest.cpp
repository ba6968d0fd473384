#include "platform/qt/QtEventPump.h"

#include "platform/EventPumpTests.h"

#include <QTimer>

namespace kestrane {
namespace {

TEST(QtEventPump, RunsWhatIsPostedInOrderAndTimers) {
    QtEventPump pump;
    expectEventsOfThreadsInOrder(pump);
    expectEventsToPostAndYield(pump);

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

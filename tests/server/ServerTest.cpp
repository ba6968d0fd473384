#include "server/KestraneThread.h"
#include "server/LogLoading.h"

#include "TestSession.h"
#include "WatchedFrame.h"
#include "platform/RuntimeError.h"

#include <gtest/gtest.h>

namespace kestrane {
namespace {

void fill(IntervalColumns& rows, Quantity quantity, int band, const std::vector<float>& levels) {
    rows.resize(levels.size(), levels.size());
    for (std::size_t i = 0; i < levels.size(); ++i)
        rows.setLevel(quantity, band, i, {levels[i], levels[i]});
}

TEST(RecalculateRows, MeansByEnergyAndRowLengthWithoutAbsentLevels) {
    struct Case {
        std::vector<float> levels;
        std::vector<std::int32_t> lengths; // of the rows, 0: the log's
        float mean;
    };

    const Case cases[] = {
        {{}, {}, 0},
        {{0, 0}, {}, 0},
        {{72.5F}, {}, 72.5F},
        {{80, 80, 0}, {}, 80},
        {{80, 90}, {}, 87.40363F},        // (1 + 10) / 2
        {{80, 90}, {540, 60}, 82.78754F}, // (9 + 10) / 10
        {{80, 90}, {540, 0}, 82.78754F},
        {{80, 90}, {60, 60}, 87.40363F},
        {{-10, -20}, {}, -12.596373F}, // (10 + 1) / 2 of 10^-2
        {std::vector<float>(1500, 94), {}, 94},
    };
    for (const Case& c : cases) {
        RecalcRequest request;
        request.Interval = 60;
        fill(request.rows, Quantity::LeqA, 0, c.levels);
        for (std::size_t i = 0; i < c.lengths.size(); ++i)
            request.rows.set(request.rows.IntervalLength, i, c.lengths[i]);
        EXPECT_FLOAT_EQ(recalculateRows(request).zLeqCumA.front(), c.mean);
    }
}

TEST(RecalculateRows, EachBandAndChannelHasItsOwnFigures) {
    RecalcRequest request;
    request.Mode = modeFullOctave;
    fill(request.rows, Quantity::LeqA, 11, {70, 70});
    fill(request.rows, Quantity::LminA, 5, {-3, 0});
    fill(request.rows, Quantity::LmaxA, 5, {-3, 0});
    fill(request.rows, Quantity::LeqB, 0, {60, 60});
    fill(request.rows, Quantity::PeakB, 0, {99, 100});
    RecalcResults results = recalculateRows(request);
    ASSERT_EQ(results.zLeqCumA.size(), 12U);
    EXPECT_FLOAT_EQ(results.zLeqCumA[11], 70);
    EXPECT_EQ(results.zLeqCumA[0], 0);
    EXPECT_EQ(results.zLminCumA[5], -3);
    EXPECT_EQ(results.zLmaxCumA[5], -3) << "0 is absent, not larger";
    EXPECT_EQ(results.zLeqCumB, 0) << "off";
    request.IsChannelBOn = true;
    results = recalculateRows(request);
    EXPECT_FLOAT_EQ(results.zLeqCumB, 60);
    EXPECT_EQ(results.zPeakCumB, 100);
    EXPECT_EQ(results.zDoseETCumA, 0) << "derived afterwards";

    fill(request.rows, Quantity::LeqA, 0, {4000, 60});
    EXPECT_THROW(recalculateRows(request), RuntimeError);
    request.CutIntervals = {{1, 1}};
    EXPECT_FLOAT_EQ(recalculateRows(request).zLeqCumA[0], 60);
}

// Rows whose level is their number; a range that holds row `bad` raises.
struct NumberedRows : IntervalSource {
    std::int64_t count = 0;
    std::int64_t bad = 0;

    std::int64_t Count() const override { return count; }

    IntervalColumns load(LogMode, bool, std::int64_t from, std::int64_t to) const override {
        if (from <= bad && bad <= to) throw RuntimeError(kErrorTypeMismatch, "Type mismatch");
        std::vector<float> levels;
        for (std::int64_t row = from; row <= to; ++row)
            levels.push_back(static_cast<float>(row));
        IntervalColumns rows;
        fill(rows, Quantity::LeqA, 0, levels);
        return rows;
    }
};

class LoadingTest : public ::testing::Test, protected TestSession {
protected:
    WatchedFrame frame;
    BackgroundServer server{pump, 3};

    LoadingTest() {
        session.frame = &frame;
        session.server = &server;
    }

    clsLog& addLog(std::int64_t bad) {
        auto rows = std::make_shared<NumberedRows>();
        rows->count = 250;
        rows->bad = bad;
        session.OpenFiles.push_back(std::make_unique<clsFile>(session, "/a.xml"));
        session.OpenFiles.back()->InstrumentDatas.push_back(std::make_unique<clsInsData>(session));
        LogCollection& logs = session.OpenFiles.back()->InstrumentDatas.back()->Locations;
        logs.push_back(std::make_unique<clsLog>(session));
        logs.back()->IntervalNodes = rows;
        logs.back()->IntervalsToLoad = true;
        logs.back()->LoadRanges = {{1, 100}, {101, 200}, {201, 250}};
        return *logs.back();
    }

    void load() {
        LoadWaitingIntervals(session);
        pump.runUntil([&] { return noLogIsBusy(session); });
    }
};

TEST_F(LoadingTest, RangesComeTogetherInPlaceAndAFailedOneStaysEmpty) {
    clsLog& whole = addLog(0);
    clsLog& damaged = addLog(150);
    EXPECT_FALSE(noLogIsBusy(session)) << "waiting";
    EXPECT_TRUE(session.IsIdle());
    LoadWaitingIntervals(session);
    EXPECT_FALSE(session.IsIdle());
    EXPECT_EQ(frame.Status, (std::vector<std::string>{"Loading Intervals", "Loading Intervals"}));
    LoadWaitingIntervals(session); // starts nothing twice
    EXPECT_EQ(frame.Status.size(), 2U);
    pump.runUntil([&] { return noLogIsBusy(session); });

    EXPECT_EQ(frame.Status.size(), 3U) << "told once, by the last log";
    EXPECT_EQ(frame.Status.back(), "Loading Completed");
    EXPECT_EQ(frame.Errors, std::vector<std::string>{"  13: Type mismatch  "});
    EXPECT_EQ(frame.Changes, 2);
    EXPECT_FALSE(whole.HasUnreadIntervals);
    EXPECT_TRUE(damaged.HasUnreadIntervals);
    ASSERT_EQ(damaged.LogIntervals.Count(), 250);
    for (const std::int64_t row : {1, 100, 101, 200, 201, 250}) {
        const bool isLost = row > 100 && row <= 200;
        EXPECT_EQ(whole.LogIntervals.Item(row).LeqA(0).Value(), static_cast<float>(row));
        EXPECT_EQ(damaged.LogIntervals.Item(row).LeqA(0).Value(), isLost ? 0 : static_cast<float>(row));
    }
}

TEST_F(LoadingTest, TheSelectionAndThePlottableTableTakeEffectWithTheRows) {
    clsLog& log = addLog(0);
    log.LogIntervals.CutIntervals = {"2~3"};
    load();
    EXPECT_EQ(log.LogIntervals.IncludedCount(), 248);
    EXPECT_TRUE(log.objLogOptions.Plottable(kChannelA, kInterval, eLeq));
    EXPECT_FALSE(log.objLogOptions.Plottable(kChannelA, kInterval, ePeak));
    EXPECT_EQ(log.LeqCumA(0).CalcValue(), 0) << "no figure changes";
}

TEST_F(LoadingTest, AnErrorTextNamesTheLineWhenThereIsOne) {
    EXPECT_EQ(threadErrorText(session, 13, "Type mismatch", 0), "  13: Type mismatch  ");
    EXPECT_EQ(threadErrorText(session, 13, "Type mismatch", 7), "  Line: 7. 13: Type mismatch  ");
}

TEST_F(LoadingTest, AJobEndsOnceThoughItsEndRaises) {
    int ends = 0;
    const auto work = server.Run([] {},
                                 [&ends] {
                                     ++ends;
                                     raiseOverflow();
                                 });
    pump.runUntil([&] { return ends > 0; });
    pump.yield();
    EXPECT_EQ(ends, 1);
}

TEST_F(LoadingTest, DroppedWorkReportsNothing) {
    bool hasReported = false;
    LoadRequest request;
    request.source = std::make_shared<NumberedRows>();
    LoadEvents events;
    events.ThreadLoadResults = [&](const IntervalColumns&, std::int64_t, std::int64_t) { hasReported = true; };
    events.Error = [&](const ThreadError&) { hasReported = true; };
    for (int i = 0; i < 50; ++i)
        server.Load(request, events).reset();
    for (int i = 0; i < 20; ++i)
        pump.wait(std::chrono::milliseconds(1));
    EXPECT_FALSE(hasReported);
}

} // namespace
} // namespace kestrane

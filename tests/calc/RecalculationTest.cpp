#include "calc/Recalculation.h"

#include "TestSession.h"
#include "WatchedFrame.h"
#include "server/KestraneThread.h"

#include <gtest/gtest.h>

namespace kestrane {
namespace {

// One hour by the instrument's own clock, 85 dB against a criterion of 85 dB, an exposure of 8 hours.
class RecalculationTest : public ::testing::Test, protected TestSession {
protected:
    WatchedFrame frame;
    clsLog log{session};

    RecalculationTest() {
        session.frame = &frame;
        log.Criterion = 85;
        log.MeasurementTimeFromInstrument = 3600;
        log.FreqWeightA("A");
        log.LeqCumA(0).Value(85);
    }

    void run(const char* endTime) {
        log.StartDate.setDate("26/11/2024", {});
        log.EndDate.setDate("26/11/2024", {});
        log.EndTime.setTime(endTime, {});
    }
};

TEST_F(RecalculationTest, DerivesTheExposureFiguresFromTheLevel) {
    RecalcValues(log, kCalcFull);
    EXPECT_FLOAT_EQ(log.LepdETCumA.CalcValue(), 85);
    EXPECT_FLOAT_EQ(log.LepdMTCumA.CalcValue(), 75.9691F); // an eighth of the day: 9.0309 less
    EXPECT_FLOAT_EQ(log.DoseETCumA.CalcValue(), 100);
    EXPECT_FLOAT_EQ(log.DoseMTCumA.CalcValue(), 12.5F);
    EXPECT_FLOAT_EQ(log.SELCumA.CalcValue(), 120.56303F);  // 35.563 above, the decibels of 3600
    EXPECT_FLOAT_EQ(log.Pa2hCumA.CalcValue(), 0.1264911F); // 4E-10 * 10^8.5
    EXPECT_EQ(log.TWACumA.CalcValue(), 0) << "by the dose as it stood";
    EXPECT_EQ(log.DoseHourA.CalcValue(), 0) << "by the dose as it stood";
    EXPECT_EQ(log.LeqCumB.CalcValue(), 0);
    EXPECT_EQ(log.SELCumB.CalcValue(), 0) << "channel B is off";

    RecalcValues(log, kCalcFull);
    EXPECT_FLOAT_EQ(log.TWACumA.CalcValue(), 85);
    EXPECT_FLOAT_EQ(log.DoseHourA.CalcValue(), 12.5F);
    EXPECT_EQ(frame.Changes, 2);
}

TEST_F(RecalculationTest, DosesByCriterionExchangeAndExposure) {
    struct Case {
        float level;
        std::int16_t exchange;
        float exposure, dose, lepd, twa;
    };

    const Case cases[] = {
        {85, 3, 8, 100, 85, 85},      {85, 3, 4, 50.0F, 81.9897F, 82}, // half the dose, 3 dB less
        {90, 5, 8, 200, 90, 90},      {90, 5, 2, 50, 83.9794F, 80},
        {88, 3, 8, 200.0F, 88, 88},   {85, 0, 8, 85, 85, 85}, // no exchange rate: the level itself
        {3, 3, 1, 7.3919E-8F, 0, -6},                         // a LEP,d below 0 shows 0, a dose is as it comes
    };
    for (const Case& c : cases) {
        log.LeqCumA(0).Value(c.level);
        log.Exchange = c.exchange;
        log.objLogOptions.ExposureTime = c.exposure;
        RecalcValues(log, kCalcFull);
        EXPECT_NEAR(log.DoseETCumA.CalcValue(), c.dose, c.dose * 0.002) << c.level;
        EXPECT_NEAR(log.LepdETCumA.CalcValue(), c.lepd, 0.0001) << c.level;
        EXPECT_NEAR(CalcTWACumA(log), c.twa, 0.03) << c.level;
    }
    log.FreqWeightA("Z");
    log.FreqWeightB("A");
    EXPECT_EQ(CalcTWACumA(log), 0) << "whatever the dose";
}

TEST_F(RecalculationTest, Twa8NormalisesTheMeasuredDoseByTheWholeRun) {
    run("01:00:00");
    RecalcValues(log, kCalcFull);
    EXPECT_FLOAT_EQ(TWA8CumA(log), 85); // 12.5 % in one hour is 100 % in eight
    run("02:00:00");
    EXPECT_NEAR(TWA8CumA(log), 81.9897, 0.02);
    run("00:00:00");
    EXPECT_EQ(TWA8CumA(log), 0) << "no time";
    log.FreqWeightA("");
    EXPECT_EQ(TWA8CumA(log), 0);
}

TEST_F(RecalculationTest, EachModeKeepsOrOverwritesWhatIsThere) {
    struct Case {
        CalcMode mode;
        float lepdET, doseET, lepdMT, sel, twa;
        bool isMarked;
        int changes;
    };

    const Case cases[] = {
        {kCalcExposureTime, 85, 100, 70, 0, 33, false, 1},           // the two figures of the exposure alone
        {kCalcFromIntervals, 71, 72, 70, 0, 33, false, 0},           // without rows: nothing
        {kCalcAfterZoom, 71, 72, 70, 120.56303F, 83.576F, false, 1}, // what is missing; TWA is always computed
        {kCalcUnmarked, 85, 100, 75.9691F, 120.56303F, 83.576F, false, 1},
        {kCalcFull, 85, 100, 75.9691F, 120.56303F, 83.576F, true, 1},
    };
    for (const Case& c : cases) {
        log.LepdETCumA.Value(71);
        log.DoseETCumA.Value(72);
        log.LepdMTCumA.Value(70);
        log.SELCumA.Value(0);
        log.TWACumA.Value(33);
        log.FullyCalculated = false;
        frame.Changes = 0;
        RecalcValues(log, c.mode);
        EXPECT_FLOAT_EQ(log.LepdETCumA.CalcValue(), c.lepdET) << c.mode;
        EXPECT_FLOAT_EQ(log.DoseETCumA.CalcValue(), c.doseET) << c.mode;
        EXPECT_FLOAT_EQ(log.LepdMTCumA.CalcValue(), c.lepdMT) << c.mode;
        EXPECT_FLOAT_EQ(log.SELCumA.CalcValue(), c.sel) << c.mode;
        EXPECT_NEAR(log.TWACumA.CalcValue(), c.twa, 0.01) << c.mode; // of 72 %
        EXPECT_EQ(log.FullyCalculated, c.isMarked) << c.mode;
        EXPECT_EQ(frame.Changes, c.changes) << c.mode;
        EXPECT_EQ(log.LepdETCumA.Value(), 71) << "as reported";
    }
    log.SELCumA.Value(1);
    RecalcValues(log, static_cast<CalcMode>(5));
    EXPECT_FLOAT_EQ(log.SELCumA.CalcValue(), 120.56303F) << "goes on as the mode before";
    log.LepdETCumA.Value(-4);
    log.DoseETCumA.Value(-4);
    log.SELCumA.Value(-4);
    log.TWACumA.Value(33);
    RecalcValues(log, kCalcAfterZoom);
    EXPECT_EQ(log.LepdETCumA.CalcValue(), 0) << "a kept figure is not negative";
    EXPECT_EQ(log.DoseETCumA.CalcValue(), 0);
    EXPECT_EQ(log.SELCumA.CalcValue(), -4);
    EXPECT_EQ(log.TWACumA.CalcValue(), 33) << "no level gives a negative dose";
}

TEST_F(RecalculationTest, WhatCannotBeComputedStays) {
    for (clsValue* value : {&log.LepdETCumA, &log.LepdMTCumA, &log.DoseMTCumA, &log.SELCumA, &log.Pa2hCumA}) {
        value->Value(7);
    }
    log.objLogOptions.ExposureTime = 0;
    log.MeasurementTimeFromInstrument = -3600;
    RecalcValues(log, kCalcFull);
    EXPECT_EQ(log.LepdETCumA.CalcValue(), 7) << "no time";
    EXPECT_EQ(log.DoseETCumA.CalcValue(), 0) << "no time, no dose";
    EXPECT_EQ(log.LepdMTCumA.CalcValue(), 7) << "no logarithm";
    EXPECT_EQ(log.SELCumA.CalcValue(), 7);

    log.MeasurementTimeFromInstrument = 0; // by start and end, which are a century apart
    log.EndDate.setDate("26/11/2024", {});
    RecalcValues(log, kCalcFull);
    EXPECT_EQ(log.LepdMTCumA.CalcValue(), 7);

    log.EndDate = clsDate();
    RecalcValues(log, kCalcFull);
    EXPECT_EQ(log.SELCumA.CalcValue(), 0) << "no time, no sound";

    log.MeasurementTimeFromInstrument = 3600;
    log.LeqCumA(0).Value(4000);
    log.Pa2hCumA.Value(7);
    RecalcValues(log, kCalcFull);
    EXPECT_EQ(log.Pa2hCumA.CalcValue(), 7) << "past single precision";
    EXPECT_FLOAT_EQ(log.SELCumA.CalcValue(), 4035.563F);
}

TEST_F(RecalculationTest, AnOldDoseMeterGetsItsLeqFromItsLepd) {
    log.InsName = "TR342 B";
    log.MeasurementTimeFromInstrument = 4 * 3600;
    log.LepdETCumA.Value(85);
    RecalcValues(log, kCalcFull);
    EXPECT_FLOAT_EQ(log.LeqCumA(0).CalcValue(), 88.0103F);
    EXPECT_EQ(log.LepdETCumA.CalcValue(), 85);
    EXPECT_FLOAT_EQ(log.LepdMTCumA.CalcValue(), 85);
    EXPECT_FLOAT_EQ(log.SELCumA.CalcValue(), 129.59393F) << "by the new level";

    log.objLogOptions.ExposureTime = 12;
    EXPECT_EQ(reportedNote(log, kChannelA, eLepdET), "as reported (not for 12:00:00)");
    RecalcValues(log, kCalcExposureTime);
    for (const char* when : {"made anew", "saved and opened"}) {
        RecalcValues(log, kCalcFull);
        EXPECT_FLOAT_EQ(log.LeqCumA(0).CalcValue(), 88.0103F) << when;
        EXPECT_FLOAT_EQ(log.LepdETCumA.CalcValue(), 89.7712F) << when; // 1.7609 above, the decibels of 12 / 8
        EXPECT_EQ(reportedNote(log, kChannelA, eLepdET), "") << when;
        for (clsValue* value : {&log.LeqCumA(0), &log.LepdETCumA})
            value->Value(value->CalcValue());
    }
}

// A pass takes both from the dose of the pass before.
TEST_F(RecalculationTest, FiguresOfAnEarlierDoseAreToBeRecalculated) {
    const auto areStale = [&] {
        return std::pair(isToBeRecalculated(log, kChannelA, eTWA), isToBeRecalculated(log, kChannelA, eDoseHour));
    };
    RecalcValues(log, kCalcFull);
    RecalcValues(log, kCalcFull);
    EXPECT_EQ(areStale(), std::pair(false, false));
    setCriterion(log, {90, 3});
    RecalcValues(log, kCalcFull);
    EXPECT_EQ(areStale(), std::pair(true, true));
    RecalcValues(log, kCalcFull);
    EXPECT_EQ(areStale(), std::pair(false, false));
    log.InsName = "TR350"; // keeps the dose per hour that it reported
    log.DoseHourA.Value(70);
    RecalcValues(log, kCalcFull);
    EXPECT_FALSE(areStale().second);
}

TEST_F(RecalculationTest, AFigureThatTheInstrumentMadeByAnotherCriterionSaysSo) {
    const auto noteOf = [&](Parameter parameter) { return reportedNote(log, kChannelA, parameter); };
    log.InsName = "TR350";
    ASSERT_TRUE(log.IsHalcyrMeter());
    for (clsValue* figure : {&log.DoseETCumA, &log.DoseHourA, &log.LAvgCumA})
        figure->Value(70);
    RecalcValues(log, kCalcFull);
    EXPECT_EQ(noteOf(eDoseET), "");
    setCriterion(log, {90, 3});
    setCriterion(log, {80, 3});
    RecalcValues(log, kCalcFull);
    EXPECT_EQ(log.DoseETCumA.CalcValue(), 70);
    EXPECT_EQ(noteOf(eDoseET), "as reported (85 dB, 3 dB)");
    EXPECT_EQ(noteOf(eDoseHour), "as reported (85 dB, 3 dB)");
    EXPECT_EQ(noteOf(eDoseMT), "") << "computed";
    EXPECT_EQ(noteOf(eLepdET), "") << "knows no criterion";
    EXPECT_EQ(noteOf(eLAvg), "") << "the exchange rate is the same";

    log.objLogOptions.ExposureTime = 4;
    RecalcValues(log, kCalcExposureTime);
    EXPECT_EQ(noteOf(eDoseET), "");
    setCriterion(log, {85, 5});
    RecalcValues(log, kCalcFull);
    EXPECT_FLOAT_EQ(log.DoseETCumA.CalcValue(), 50) << "no longer the instrument's";
    EXPECT_EQ(noteOf(eLAvg), "as reported (85 dB, 3 dB)");
    setCriterion(log, {85, 3});
    EXPECT_EQ(noteOf(eLAvg) + noteOf(eDoseHour), "");
}

TEST_F(RecalculationTest, AFigureThatIsNotOfTheExposureTimeSaysSo) {
    const auto noteOf = [&](Parameter parameter) { return reportedNote(log, kChannelA, parameter); };
    log.InsName = "TR350";
    log.DoseETCumA.Value(70);
    RecalcValues(log, kCalcFull);
    EXPECT_EQ(noteOf(eDoseET), "") << "8 hours";
    log.objLogOptions.ExposureTime = 12;
    RecalcValues(log, kCalcFull);
    EXPECT_EQ(log.DoseETCumA.CalcValue(), 70);
    EXPECT_EQ(noteOf(eDoseET), "as reported (not for 12:00:00)");
    EXPECT_EQ(noteOf(eLepdET) + noteOf(eDoseMT), "");
    setCriterion(log, {82, 3});
    EXPECT_EQ(noteOf(eDoseET), "as reported (85 dB, 3 dB, not for 12:00:00)");
    RecalcValues(log, kCalcExposureTime);
    EXPECT_NEAR(log.DoseETCumA.CalcValue(), 300, 0.6); // half as long again, at 3 dB above the criterion
    EXPECT_EQ(noteOf(eDoseET), "");
    log.DoseETCumA.Value(log.DoseETCumA.CalcValue()); // saved and opened
    log.CriterionDose = log.ExchangeDose = 0;
    RecalcValues(log, kCalcFull);
    EXPECT_EQ(noteOf(eDoseET), "");
    setCriterion(log, {85, 3});
    EXPECT_EQ(noteOf(eDoseET), "as reported (82 dB, 3 dB)");

    log.InsName = "Corvane";
    log.objLogOptions.ExposureTime = 4;
    RecalcValues(log, kCalcAfterZoom);
    EXPECT_EQ(noteOf(eLepdET), "as reported (not for 04:00:00)") << "kept";
    RecalcValues(log, kCalcFull);
    EXPECT_EQ(noteOf(eLepdET) + noteOf(eDoseET), "");
}

TEST_F(RecalculationTest, AHalcyrMeterKeepsItsFiguresUnlessZoomedAndHasNoExposureOnChannelB) {
    log.InsName = "TR350";
    log.IsChannelBOn = true;
    log.LeqCumB.Value(85);
    for (const CalcMode mode : {kCalcFull, kCalcExposureTime}) {
        for (clsValue* value : {&log.Pa2hCumA, &log.DoseETCumA, &log.DoseHourA, &log.LepdETCumB, &log.LepdMTCumB,
                                &log.DoseETCumB, &log.DoseHourB, &log.SELCumB}) {
            value->Value(7);
        }
        RecalcValues(log, mode);
        const bool isFull = mode == kCalcFull;
        EXPECT_EQ(log.Pa2hCumA.CalcValue(), 7);
        EXPECT_FLOAT_EQ(log.DoseETCumA.CalcValue(), isFull ? 7 : 100);
        EXPECT_EQ(log.DoseHourA.CalcValue(), 7);
        EXPECT_EQ(log.LepdETCumB.CalcValue(), 0);
        EXPECT_EQ(log.DoseETCumB.CalcValue(), 0);
        EXPECT_EQ(log.LepdMTCumB.CalcValue(), isFull ? 0 : 7);
        EXPECT_EQ(log.DoseHourB.CalcValue(), isFull ? 0 : 7);
        EXPECT_FLOAT_EQ(log.SELCumB.CalcValue(), isFull ? 120.56303F : 7);
    }
    EXPECT_FLOAT_EQ(log.DoseMTCumB.CalcValue(), 12.5F);
    EXPECT_FLOAT_EQ(log.Pa2hCumB.CalcValue(), 0.1264911F);
    log.IsZoomed = true;
    RecalcValues(log, kCalcFull);
    EXPECT_FLOAT_EQ(log.Pa2hCumA.CalcValue(), 0.1264911F);
    EXPECT_FLOAT_EQ(log.DoseHourA.CalcValue(), 12.5F);
}

TEST_F(RecalculationTest, ABrevikMeterTakesPa2HrFromTheExposureTime) {
    log.InsName = "Brevik SE";
    RecalcValues(log, kCalcFull);
    EXPECT_FLOAT_EQ(log.Pa2hCumA.CalcValue(), 8 * 0.1264911F);
}

TEST_F(RecalculationTest, BandsAddUpToTheOverallFigure) {
    log.Mode(modeFullOctave);
    log.LeqCumA(2).Value(80);
    log.LeqCumA(11).Value(80);
    log.LminCumA(0).Value(50);
    log.LminCumA(1).Value(40);
    log.LmaxCumA(0).Value(90);
    RecalcValues(log, kCalcAfterZoom);
    EXPECT_FLOAT_EQ(log.LeqCumA(0).CalcValue(), 83.0103F) << "bands at 0 are absent";
    EXPECT_EQ(log.LminCumA(0).CalcValue(), 50) << "kept";
    RecalcValues(log, kCalcFull);
    EXPECT_FLOAT_EQ(log.LminCumA(0).CalcValue(), 40);
    EXPECT_EQ(log.LmaxCumA(0).CalcValue(), 90) << "no band";
    log.LeqCumA(3).Value(4000);
    RecalcValues(log, kCalcFull);
    EXPECT_FLOAT_EQ(log.LeqCumA(0).CalcValue(), 83.0103F) << "past single precision";
}

TEST_F(RecalculationTest, ACollectionAsksBeforeLongWork) {
    struct Case {
        bool bForce, recalcOnOpen, isCalculated, isLong;
        std::vector<Button> answers;
        std::size_t questions;
        bool isRun;
    };

    const Case cases[] = {
        {false, true, true, false, {}, 0, true},
        {false, true, false, true, {Button::No}, 1, false},
        {false, true, false, true, {Button::Yes}, 1, true},
        {false, false, true, true, {}, 0, false},
        {false, false, false, true, {}, 0, true},
        {true, false, true, true, {}, 0, true},
    };
    BackgroundServer server(pump, 1);
    session.server = &server;
    for (const Case& c : cases) {
        clsInsData data(session);
        data.Locations.push_back(std::make_unique<clsLog>(session));
        clsLog& item = *data.Locations.front();
        if (c.isLong) item.LogIntervals.setArraySize(1001);
        item.FullyCalculated = c.isCalculated;
        session.Options.RecalcOnOpen = c.recalcOnOpen;
        messages.Answers = c.answers;
        messages.Boxes.clear();
        RecalcValues(data, c.bForce);
        EXPECT_EQ(item.RecalcMode == kCalcFull, c.isRun);
        pump.runUntil([&] { return !item.IntervalsRecalculating; });
        EXPECT_EQ(messages.Boxes.size(), c.questions);
    }
}

// ---- with rows: the background pass

class RowsTest : public RecalculationTest {
protected:
    BackgroundServer server{pump, 2};

    RowsTest() {
        session.server = &server;
        log.MeasurementTimeFromInstrument = 0;
        log.Interval = 3600;
        levels({80, 90, 0, 80});
    }

    void levels(const std::vector<float>& leq) {
        log.LogIntervals.Clear();
        for (const float level : leq) {
            clsLogInterval row;
            row.Initialize(log.objLogShared);
            row.LeqA(0).Value(level);
            row.LminA(0).Value(level == 0 ? 0 : level - 10);
            row.LmaxA(0).Value(level == 0 ? 0 : level + 10);
            row.PeakA.Value(level == 0 ? 0 : level + 20);
            log.LogIntervals.Add(row);
        }
    }

    void recalculate(CalcMode mode) {
        RecalcValues(log, mode);
        pump.runUntil([&] { return !log.IntervalsRecalculating; });
    }
};

TEST_F(RowsTest, FiguresComeFromTheRowsThatAreIncluded) {
    struct Case {
        std::vector<std::string> ranges;
        bool toBeIncluded;
        float leq, lmin, lmax, peak, sel;
    };

    const Case cases[] = {
        {{}, false, 86.0206F, 70, 100, 110, 127.6042F}, // 12/3 of 10^8; four hours, the absent row among them
        {{"2~2"}, false, 80, 70, 90, 100, 120.3342F},   // three hours
        {{"2~2"}, true, 90, 80, 100, 110, 125.563F},    {{"1~1", "4~9"}, true, 80, 70, 90, 100, 118.5733F},
        {{"3~3"}, true, 85, 40, 130, 140, 120.563F}, // rows without figures change none
    };
    for (const Case& c : cases) {
        log.LeqCumA(0).Value(85);
        log.LminCumA(0).Value(40);
        log.LmaxCumA(0).Value(130);
        log.PeakCumA.Value(140);
        log.LogIntervals.CutIntervals = c.ranges;
        log.LogIntervals.IntervalsToBeIncluded = c.toBeIncluded;
        recalculate(kCalcFull);
        EXPECT_FLOAT_EQ(log.LeqCumA(0).CalcValue(), c.leq);
        EXPECT_EQ(log.LminCumA(0).CalcValue(), c.lmin);
        EXPECT_EQ(log.LmaxCumA(0).CalcValue(), c.lmax);
        EXPECT_EQ(log.PeakCumA.CalcValue(), c.peak);
        EXPECT_NEAR(log.SELCumA.CalcValue(), c.sel, 0.0001);
        for (std::int64_t row = 1; row <= 4; ++row) {
            bool isNamed = false;
            for (const RowRange& range : selectionRanges(c.ranges))
                isNamed = isNamed || (row >= range.From && row <= range.To);
            EXPECT_EQ(log.LogIntervals.Item(row).isExcluded, !c.ranges.empty() && isNamed != c.toBeIncluded) << row;
        }
    }
    EXPECT_EQ(frame.Status.back(), "Calculating Completed");
    recalculate(kCalcFromIntervals);
    EXPECT_EQ(log.LeqCumA(0).CalcValue(), 85) << "kept";
    log.PeakCumA.Value(0);
    log.LogIntervals.CutIntervals.clear();
    recalculate(kCalcFromIntervals);
    EXPECT_EQ(log.PeakCumA.CalcValue(), 110) << "filled in";
}

TEST_F(RowsTest, ASecondRecalculationDropsTheFirst) {
    RecalcValues(log, kCalcFull);
    levels({60});
    RecalcValues(log, kCalcUnmarked);
    pump.runUntil([&] { return !log.IntervalsRecalculating; });
    for (int i = 0; i < 20; ++i)
        pump.wait(std::chrono::milliseconds(1));
    EXPECT_EQ(log.LeqCumA(0).CalcValue(), 60);
    EXPECT_EQ(frame.Changes, 1);
    EXPECT_FALSE(log.FullyCalculated);
}

TEST_F(RowsTest, AFailureIsShownAndLeavesTheFigures) {
    levels({80, 4000});
    recalculate(kCalcFull);
    EXPECT_EQ(frame.Errors, std::vector<std::string>{"  6: Overflow  "});
    EXPECT_EQ(frame.Status, std::vector<std::string>{"Calculating Completed"});
    EXPECT_EQ(log.LeqCumA(0).CalcValue(), 85);
    EXPECT_EQ(log.SELCumA.CalcValue(), 0);
    EXPECT_EQ(frame.Changes, 0);
}

} // namespace
} // namespace kestrane

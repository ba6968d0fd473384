#include "calc/ExposureTime.h"

#include "TestSession.h"
#include "WatchedFrame.h"
#include "calc/Recalculation.h"

#include <gtest/gtest.h>

namespace kestrane {
namespace {

TEST(ExposureTime, EntriesAreDurationsOrHours) {
    const struct {
        const char* entry;
        float hours;
        const char* shown;
    } kEntries[] = {
        {"8", 8, "08:00:00"},       {" 7:30:00 ", 7.5F, "07:30:00"},
        {"7.5", 7.5F, "07:30:00"},  {"7,5", 7.5F, "07:30:00"},
        {"24.1", 0, "24.1"},        {" 24:00:01", 0, "24:00:01"},
        {"-1.5", 0, "-1.5"},        {"eight ", 0, "eight"},
        {"9.9E99", 0, "9.9E99"},    {"   ", 0, ""},
        {"7:30", 7.5F, "07:30:00"},
    };

    for (const auto& row : kEntries) {
        EXPECT_FLOAT_EQ(exposureTimeHours(row.entry, {}), row.hours) << row.entry;
        EXPECT_EQ(shownExposureTime(row.entry, {}), row.shown) << row.entry;
    }
    EXPECT_FLOAT_EQ(exposureTimeHours("7.5", Locale{",", "/"}), 7.5F);
    const TestSession test;
    EXPECT_EQ(understoodExposureTime(test.session, "7:30"), "= 7 hours 30 mins");
    EXPECT_EQ(understoodExposureTime(test.session, "7.75:0"), "Exposure Time must be between 0 and 24 hours");
}

TEST(ExposureTime, EveryTimeOfTheDayReadsBackAsShown) {
    for (int second = 1; second <= 24 * 3600; ++second) {
        const std::string text = exposureTimeText(static_cast<float>(second / 3600.0));
        ASSERT_EQ(exposureTimeText(exposureTimeHours(text, {})), text);
        ASSERT_EQ(std::stoi(text.substr(0, 2)) * 3600 + std::stoi(text.substr(3, 2)) * 60 + std::stoi(text.substr(6)),
                  second);
    }
}

TEST(ExposureTime, FaultsNameTheirText) {
    EXPECT_EQ(exposureTimeFault(0, 0), Text::ExposureTimeOutOfRange);
    EXPECT_EQ(exposureTimeFault(-1, 0), Text::ExposureTimeOutOfRange);
    EXPECT_EQ(exposureTimeFault(24.1F, 0), Text::ExposureTimeOutOfRange);
    EXPECT_EQ(exposureTimeFault(24, 24), Text::None);
    EXPECT_EQ(exposureTimeFault(1, 2), Text::ExposureTimeTooShort);
    EXPECT_EQ(exposureTimeFault(1, 0), Text::None);
    EXPECT_EQ(exposureTimeFault(exposureTimeHours("0:20:00", {}), 0.33333337F), Text::None); // the same second
}

// 85 dB with criterion 85 and exchange rate 3: 8 hours are a dose of 100 % and LEP,d 85; 4 hours a half, and 3.0103
// less.
struct BrevikLog : TestSession {
    WatchedFrame frame;
    clsLog log{session};

    explicit BrevikLog(const char* name = "Brevik SE") {
        log.InsName = name;
        log.Criterion = 85;
        log.FreqWeightA("A");
        log.LeqCumA(0).Value(85);
        log.MeasurementTimeFromInstrument = 3600;
        RecalcValues(log, kCalcFull);
        session.frame = &frame;
    }
};

TEST(ExposureTime, AChangeDerivesTheFiguresAgain) {
    BrevikLog brevik;
    clsLog& log = brevik.log;
    ASSERT_NEAR(log.LepdETCumA.CalcValue(), 85, 0.001);
    const float pa2h = log.Pa2hCumA.CalcValue();
    log.DoseLogIntervals.resize(2);

    SetLogExposureTime(log, 4);
    EXPECT_EQ(log.objLogOptions.ExposureTime, 4);
    EXPECT_NEAR(log.LepdETCumA.CalcValue(), 85 - 3.0103, 0.001);
    EXPECT_NEAR(log.DoseETCumA.CalcValue(), 50, 0.01);
    EXPECT_EQ(log.Pa2hCumA.CalcValue(), pa2h); // not before everything is derived
    EXPECT_EQ(brevik.frame.Changes, 1);
    EXPECT_EQ(log.DoseLogIntervals[0].Duration.hh_mm_ss(), "04:00:00");
    EXPECT_EQ(log.DoseLogIntervals[1].Duration.hh_mm_ss(), "00:00:00");

    EXPECT_TRUE(changeExposureTime(log, 2));
    EXPECT_NEAR(log.DoseETCumA.CalcValue(), 25, 0.01);
    EXPECT_NEAR(log.Pa2hCumA.CalcValue(), pa2h / 4, 0.001);
}

TEST(ExposureTime, OfOtherLogsIsAskedAboutAndNamedBesideTheEightHours) {
    BrevikLog other("Tallix");
    clsLog& log = other.log;
    EXPECT_EQ(exposureTimeLabel(log), "08:00:00");
    other.messages.Answers = {Button::No, Button::Yes};
    EXPECT_FALSE(changeExposureTime(log, 4));
    EXPECT_EQ(other.messages.Boxes.back().Prompt, "Proceed with calculation?");
    EXPECT_EQ(log.objLogOptions.ExposureTime, 8);
    EXPECT_EQ(other.frame.Changes, 0);
    EXPECT_TRUE(changeExposureTime(log, 4));
    EXPECT_NEAR(log.LepdETCumA.CalcValue(), 85 - 3.0103, 0.001);
    EXPECT_EQ(exposureTimeLabel(log), "08:00:00 (figures: 04:00:00)");

    BrevikLog brevik;
    brevik.log.objLogOptions.ExposureTime = 7.6F;
    EXPECT_EQ(exposureTimeLabel(brevik.log), "07:36:00");
}

TEST(ExposureTime, AFullRecalculationUnderWayEndsAsItBegan) {
    BrevikLog brevik;
    clsLog& log = brevik.log;
    log.RecalcMode = kCalcFull;
    log.OverwriteStoredValues = true;
    log.IntervalsRecalculating = true;
    EXPECT_TRUE(changeExposureTime(log, 4));
    EXPECT_EQ(log.RecalcMode, kCalcFull);
    EXPECT_EQ(brevik.frame.Changes, 0);
    CompleteRecalcProcess(log); // as the end of the pass does
    EXPECT_NEAR(log.DoseETCumA.CalcValue(), 50, 0.01);
}

} // namespace
} // namespace kestrane

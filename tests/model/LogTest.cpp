#include "ErrorOf.h"
#include "TestSession.h"
#include "model/InstrumentFamilies.h"
#include "model/clsLog.h"

#include <gtest/gtest.h>

namespace kestrane {
namespace {

struct LogTest : testing::Test, TestSession {
    clsLog log{session};

    // Rows of a minute from 10:00 on 26 November 2024, the level of row n being n.
    void addRows(int count) {
        for (int i = 1; i <= count; ++i) {
            clsLogInterval row;
            row.Initialize(log.objLogShared);
            row.StartDate.setDate("26/11/2024", {});
            row.StartTime.setTimeFromSeconds(36000 + 60 * (i - 1));
            row.LeqA(0).Value(static_cast<float>(i));
            log.LogIntervals.Add(row);
        }
    }
};

TEST_F(LogTest, StartsWithItsDefaults) {
    session.Options.objLogOptions.ExposureTime = 7.5F;
    const clsLog fresh(session);
    EXPECT_EQ(fresh.Mode(), modeBroadband);
    EXPECT_EQ(fresh.LeqCumA.last(), 0);
    EXPECT_EQ(fresh.objLogOptions.ExposureTime, 7.5F);
    EXPECT_EQ(log.objLogOptions.ExposureTime, 8);
}

TEST_F(LogTest, HasTheBandsOfItsMode) {
    log.Mode(modeFullOctave);
    EXPECT_EQ(&log.LeqCumA(11), &log.LeqCumA("16k"));
    EXPECT_EQ(&log.LeqCumA(11), &log.LeqCumA("Last"));
    EXPECT_EQ(&log.LeqCumA(0), &log.LeqCumA("20k"));
    log.LeqCumA(11).Value(60);
    log.LnCumA(10, 11).Value(61);
    log.LnNumberA(10, 90);
    for (const int outside : {-1, 12})
        EXPECT_EQ(errorOf([&] { log.LeqCumA(outside); }), kErrorIndexOutOfRange);
    for (const int outside : {0, 11}) {
        EXPECT_EQ(errorOf([&] { log.LnCumA(outside, 0); }), kErrorIndexOutOfRange);
        EXPECT_EQ(errorOf([&] { log.LnNumberA(outside, 1); }), kErrorIndexOutOfRange);
        EXPECT_EQ(errorOf([&] { static_cast<void>(log.LnNumberA(outside)); }), kErrorIndexOutOfRange);
    }
    EXPECT_EQ(log.LeqCumA(11).Value(), 60);

    log.Mode(modeThirdOctave);
    EXPECT_EQ(log.LeqCumA.last(), 33);
    EXPECT_EQ(log.LeqCumA(11).Value() + log.LnCumA(10, 11).Value(), 0);
    EXPECT_EQ(log.LnNumberA(10), 0);
    EXPECT_EQ(log.ModeText(), "Third Octave");
}

TEST_F(LogTest, LocationTypeIsFixedForSomeModels) {
    struct Case {
        const char *name, *stored, *shown, *tested;
    };

    const Case cases[] = {{"TR350", "ENV", "ENV", "ENV"}, {"TR350", "", "", ""},     {"TR 360L", "", "", "IND"},
                          {"TR360L", "ENV", "", "ENV"},   {"TR312E", "", "", "ENV"}, {"TR312E", "IND", "", "IND"},
                          {"TR312", "IND", "IND", "IND"}};
    for (const Case& c : cases) {
        log.InsName = c.name;
        log.LocationType(c.stored);
        EXPECT_EQ(log.LocationType(), c.shown) << c.name;
        EXPECT_EQ(log.TestLocationType(), c.tested) << c.name;
    }
}

TEST(Families, AreToldByTheName) {
    struct Case {
        const char *name, *families;
    };

    // c Corvane, m Merrowan, t old Tallix, d old dose meter, h Halcyr, e 116E, l Halcyr dose meter, v valid
    const Case cases[] = {{"my corVANE 3", "cv"},  {"COR VANE", "cv"},      {"T R 3 2 2 X", "mv"}, {"TR352 B", "mv"},
                          {"tr320", ""},           {"xTR320", ""},          {"TR310", "tv"},       {"TR342 V2", "tdv"},
                          {"CORVANE TR320", "cv"}, {"TR340 Corvane", "cv"}, {" TR312E", "hev"},    {"TR312 e", "hv"},
                          {"TR360 L", "hlv"},      {"TR350", "hv"},         {"Brevik S", ""},      {"", ""}};
    for (const Case& c : cases) {
        std::string families;
        if (IsCorvane(c.name)) families += 'c';
        if (IsMerrowan(c.name)) families += 'm';
        if (IsOldTallix(c.name)) families += 't';
        if (IsOldDoseMeter(c.name)) families += 'd';
        if (IsHalcyrMeter(c.name)) families += 'h';
        if (IsHalcyrMeter116E(c.name)) families += 'e';
        if (IsHalcyrDoseMeter(c.name)) families += 'l';
        if (IsValidInstrument(c.name)) families += 'v';
        EXPECT_EQ(families, c.families) << c.name;
    }
}

TEST_F(LogTest, WarnsOfSlowRecalculation) {
    for (const auto& [mode, most] : {std::pair(modeBroadband, 1000), {modeFullOctave, 500}, {modeThirdOctave, 300}}) {
        log.Mode(mode);
        log.LogIntervals.setArraySize(most);
        EXPECT_FALSE(log.Warn());
        log.LogIntervals.setArraySize(most + 1);
        EXPECT_TRUE(log.Warn());
    }
}

TEST_F(LogTest, WholeCopySharesNothing) {
    log.Mode(modeFullOctave);
    log.OctaveType(AutoOctave);
    log.Name = "Press";
    log.FreqWeightA("C");
    log.LnNumberA(2, 50);
    log.LeqCumA(3).Value(60);
    log.LeqCumA(3).CalcValue(61);
    log.MeasurementTimeFromInstrument = 90;
    log.Peaks.resize(2);
    log.DoseLogIntervals.resize(1);
    log.DoseLogIntervals[0].Leq.Value(80);
    addRows(3);

    clsLog copy(session);
    copy.Copy(log, 0, 0);
    EXPECT_EQ(copy.Name + copy.FreqWeightA() + copy.OctaveType(), "PressCAuto");
    EXPECT_EQ(copy.Mode(), modeFullOctave);
    EXPECT_EQ(copy.LnNumberA(2), 50);
    EXPECT_EQ(copy.LeqCumA(3).Value(), 60);
    EXPECT_EQ(copy.LeqCumA(3).CalcValue(), 61);
    EXPECT_EQ(copy.MeasurementTimeFromInstrument, 90);
    EXPECT_EQ(copy.Peaks.size(), 2U);
    EXPECT_EQ(copy.DoseLogIntervals.at(0).Dose.Value(), 80);
    EXPECT_EQ(copy.LogIntervals.Count(), 3);
    log.Mode(modeBroadband);
    log.LogIntervals.Commit(log.LogIntervals.Item(3), 1);
    log.objLogOptions.ExposureTime = 1;
    EXPECT_EQ(copy.Mode(), modeFullOctave);
    EXPECT_EQ(copy.LogIntervals.Item(1).Mode(), modeFullOctave);
    EXPECT_EQ(copy.LogIntervals.Item(1).LeqA(0).Value(), 1);
    EXPECT_EQ(copy.objLogOptions.ExposureTime, 8);

    clsLog part(session);
    EXPECT_EQ(errorOf([&] { part.Copy(copy, 2, 4); }), kErrorIndexOutOfRange);
    copy.IntervalsToLoad = true;
    EXPECT_EQ(errorOf([&] { part.Copy(copy, 0, 0); }), kErrorApplication);
}

} // namespace
} // namespace kestrane

#include "model/LogParameters.h"
#include "TestSession.h"

#include <gtest/gtest.h>

#include <set>

namespace kestrane {
namespace {

struct LogParametersTest : testing::Test, TestSession {
    clsLog log{session};
};

TEST_F(LogParametersTest, CaptionsCarryWeightBandAndChannel) {
    log.FreqWeightA("A");
    log.FreqWeightB("C");
    log.LnNumberA(2, 50);

    struct Case {
        Parameter parameter;
        LogChannel channel;
        std::string_view band;
        const char *withoutLog, *ofLog, *ofTwoChannels;
    };

    const Case cases[] = {{eLeq, kChannelA, kNoBand, "Leq", "LAeq", "LAeq (CHA)"},
                          {eLeq, kChannelA, "", "Leq", "LAeq", "LAeq (CHA)"},
                          {eLmin, kChannelA, "1k", "Lmin 1k Hz", "Amin 1k Hz", "Amin 1k Hz (CHA)"},
                          {eLmax, kChannelB, kNoBand, "Lmax", "", "Cmax (CHB)"},
                          {eLmax, kNoChannel, "63", "Lmax 63 Hz", "Lmax 63 Hz", "Lmax 63 Hz"},
                          {ePeak, kChannelB, "63", "Peak", "", "Cpeak (CHB)"},
                          {eLepdET, kChannelA, "63", "LEP,d(ET)", "LEP,d(ET)", "LEP,d(ET) (CHA)"},
                          {eLepdMT, kChannelB, kNoBand, "LEP,d(MT)", "LEP,d(MT)", "LEP,d(MT) (CHB)"},
                          {eDoseET, kNoChannel, kNoBand, "Dose %(ET)", "Dose %(ET)", "Dose %(ET)"},
                          {eLe_Sel, kNoChannel, "63", "LE", "LE", "LE"},
                          {eLn(2), kChannelA, "125", "Ln2 125 Hz", "L50 125 Hz", "L50 125 Hz (CHA)"},
                          {eLn(10), kNoChannel, kNoBand, "Ln10", "L0", "L0"}};
    for (const Case& c : cases) {
        log.IsChannelBOn = false;
        EXPECT_EQ(VariableCaption(session, c.parameter, c.channel, c.band, nullptr), c.withoutLog);
        EXPECT_EQ(VariableCaption(session, c.parameter, c.channel, c.band, &log), c.ofLog) << c.withoutLog;
        log.IsChannelBOn = true;
        EXPECT_EQ(VariableCaption(session, c.parameter, c.channel, c.band, &log), c.ofTwoChannels) << c.withoutLog;
    }
}

TEST_F(LogParametersTest, FiguresStandUnderTheirParameters) {
    log.Mode(modeFullOctave);
    log.LmaxCumA(11).Value(1);
    log.LnCumA(10, 2).Value(2);
    log.LepdMTCumA.Value(3);
    EXPECT_EQ(cumulativeValue(log, kChannelA, eLmax, 11).Value(), 1);
    EXPECT_EQ(cumulativeValue(log, kChannelA, eLn(10), 2).Value(), 2);
    EXPECT_EQ(cumulativeValue(log, kChannelA, eLepdMT, 9).Value(), 3) << "without bands, any band is the figure";
    for (const Parameter parameter : {eLtm3, eLn1, eTWA})
        EXPECT_EQ(cumulativeValue(log, kChannelB, parameter, 0).Value(), 0) << "channel B has none";
    log.IsLoggingOverLoaded = true;
    EXPECT_EQ(cumulativeValue(log, kChannelA, eOverload, 0).CalcValue(), -1);

    clsLogInterval row;
    row.Initialize(log.objLogShared);
    row.PeakB.Value(5);
    row.PeakB.CalcValue(6);
    row.OverloadedB = true;
    log.LogIntervals.setArraySize(2);
    log.LogIntervals.Commit(row, 2);
    EXPECT_EQ(intervalValue(log, 2, kChannelB, ePeak, 9).Value(), 5);
    EXPECT_EQ(intervalValue(log, 2, kChannelB, ePeak, 9).CalcValue(), 6);
    EXPECT_EQ(intervalValue(log, 2, kChannelB, eOverload, 0).CalcValue(), -1);
    EXPECT_EQ(intervalValue(log, 2, kChannelA, eOverload, 0).CalcValue(), 0);
    EXPECT_EQ(intervalValue(log, 2, kChannelA, eLepdMT, 0).Value(), 0);
}

TEST_F(LogParametersTest, OnlyWhatTheLogHoldsIsPlottable) {
    log.Mode(modeFullOctave);
    log.MeasurementTimeFromInstrument = 300;
    log.LeqCumA(11).Value(60); // one band is enough
    log.LmaxCumA(0).Value(70);
    log.LmaxCumA(0).CalcValue(0);
    log.LnNumberA(1, 10); // in use, and long enough: its figures are not looked at
    log.LepdMTCumB.Value(1);
    log.Ltm3CumA.Value(60);
    session.Options.objLogOptions.Plottable.set(kChannelA, kCumulative, eLtm3, false);
    SetPlottableValues(log);
    const auto plottable = [&](LogChannel channel, FigureKind kind) {
        std::set<int> parameters;
        for (const Parameter parameter : kParameters)
            if (log.objLogOptions.Plottable(channel, kind, parameter)) parameters.insert(parameter);
        return parameters;
    };
    EXPECT_EQ(plottable(kChannelA, kCumulative), (std::set<int>{eLeq, eLn1}));
    EXPECT_EQ(plottable(kChannelB, kCumulative), (std::set<int>{eLepdMT}));
    EXPECT_TRUE(log.objLogOptions.IsPlotted(kChannelA, kCumulative, eLeq));
    EXPECT_FALSE(log.objLogOptions.IsPlotted(kChannelA, kCumulative, eLmin));
    EXPECT_TRUE(log.objLogOptions.Plottable(kChannelA, kInterval, eLmin)) << "without rows these stay";
    EXPECT_TRUE(log.objLogOptions.IsPlotted(kChannelA, kInterval, eLmin));

    clsLogInterval row;
    row.Initialize(log.objLogShared);
    row.LminA(4).Value(40);
    row.LnA(2, 0).Value(50);
    row.OverloadedB = true;
    log.LogIntervals.Add(row);
    SetPlottableValues(log);
    EXPECT_EQ(plottable(kChannelA, kInterval), (std::set<int>{eLmin, eLn(2)}));
    EXPECT_EQ(plottable(kChannelB, kInterval), (std::set<int>{eOverload}));
    EXPECT_FALSE(log.objLogOptions.IsPlotted(kChannelA, kInterval, eLeq));

    for (const auto& [location, hasLmax] : {std::pair(EnvironmentLocation, true), {NoiseAtWorkLocation, false}}) {
        log.InsName = "TR350";
        log.LocationType(location);
        log.LmaxCumA(0).Value(70);
        SetPlottableValues(log);
        EXPECT_EQ(log.objLogOptions.Plottable(kChannelA, kCumulative, eLmax), hasLmax) << location;
        EXPECT_FALSE(log.objLogOptions.Plottable(kChannelA, kInterval, eLmin)) << location;
    }
}

TEST_F(LogParametersTest, BrevikModelsShowWhatTheyRecord) {
    // n never, y always, s as the application's options have it, - as it stands
    struct Case {
        const char *name, *location;
        char percentiles, exposure; // of channel A
        char le;
    };

    const Case cases[] = {{"Brevik S", "", 'n', 's', 'n'},     {"Auravox Essential S", "ENV", 'n', 's', 'n'},
                          {"Brevik E", "IND", 'n', 's', 'n'},  {"brevik e", "", 's', 'n', 's'},
                          {"Brevik SE", "ENV", 's', 'n', 's'}, {"Brevik SE", "", 's', '-', '-'}};
    for (const Case& c : cases) {
        for (const bool inApplication : {false, true}) {
            for (const FigureKind kind : kFigureKinds) {
                clsLogOptions options;
                for (const Parameter parameter : kParameters) {
                    for (const LogChannel channel : kChannels) {
                        session.Options.objLogOptions.Plottable.set(channel, kind, parameter, inApplication);
                        options.Plottable.set(channel, kind, parameter, !inApplication);
                    }
                }
                RestrictToBrevik(session, options, c.name, c.location);
                const auto expect = [&](LogChannel channel, Parameter parameter, char rule) {
                    const bool wanted =
                        rule == 'y' || (rule == 's' && inApplication) || (rule == '-' && !inApplication);
                    EXPECT_EQ(options.Plottable(channel, kind, parameter), wanted)
                        << c.name << c.location << ' ' << channel << kind << ' ' << parameter;
                };
                for (const Parameter parameter : {eLepdET, eLepdMT, eDoseET, eDoseMT, eDoseHour, ePa2Hr}) {
                    expect(kChannelA, parameter, c.exposure);
                    expect(kChannelB, parameter, 'n');
                }
                for (int ln = 1; ln <= NumberOfLns; ++ln) {
                    expect(kChannelA, eLn(ln), ln <= 3 ? c.percentiles : 'n');
                    expect(kChannelB, eLn(ln), 'n');
                }
                for (const auto& [parameter, rule] :
                     {std::pair(eLeq, 's'), {eLmax, 's'}, {eLmin, 'y'}, {eLtm3, 'n'}, {eLtm5, 'n'}, {eOverload, '-'}}) {
                    expect(kChannelA, parameter, rule);
                    expect(kChannelB, parameter, rule);
                }
                for (const Parameter parameter : {eTWA, eLAvg}) {
                    expect(kChannelA, parameter, kind == kCumulative ? 'y' : '-');
                    expect(kChannelB, parameter, '-');
                }
                expect(kChannelA, ePeak, 'n');
                expect(kChannelB, ePeak, 's');
                expect(kChannelA, eLe_Sel, c.le);
                expect(kChannelB, eLe_Sel, 'n');
            }
        }
    }
    log.InsName = "Brevik S";
    EXPECT_TRUE(log.objLogOptions.IsPlotted(kChannelA, kCumulative, ePeak));
    EXPECT_FALSE(displayOptions(log).IsPlotted(kChannelA, kCumulative, ePeak));
    EXPECT_TRUE(displayOptions(log).IsPlotted(kChannelB, kCumulative, ePeak));
    log.InsName = "Corvane";
    EXPECT_TRUE(displayOptions(log).IsPlotted(kChannelA, kCumulative, ePeak));
}

} // namespace
} // namespace kestrane

#include "model/LogParameters.h"
#include "TestSession.h"

#include <gtest/gtest.h>

#include <set>

namespace kestrane {
namespace {

struct LogParametersTest : testing::Test, TestSession {
    clsLog log{session};

    static bool isPlottable(const clsLogOptions& options, int channel, int kind, int parameter) {
        return options.Plottable(channel, kind, parameter);
    }
};

TEST_F(LogParametersTest, CaptionsCarryWeightBandAndChannel) {
    log.FreqWeightA("A");
    log.FreqWeightB("C");
    log.LnNumberA(2, 50);

    struct Case {
        int parameter, channel;
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

// Every figure of a log and of a row is found under its own parameter and no other.
TEST_F(LogParametersTest, FiguresStandUnderTheirParameters) {
    log.Mode(modeFullOctave);

    struct Figure {
        int channel, parameter, band;
        clsValue* value;
    };

    const Figure figures[] = {
        {1, eLeq, 3, &log.LeqCumA(3)},     {1, eLmin, 0, &log.LminCumA(0)},     {1, eLmax, 11, &log.LmaxCumA(11)},
        {1, ePeak, 0, &log.PeakCumA},      {1, eLepdET, 0, &log.LepdETCumA},    {1, eLepdMT, 0, &log.LepdMTCumA},
        {1, eDoseET, 0, &log.DoseETCumA},  {1, eDoseMT, 0, &log.DoseMTCumA},    {1, eDoseHour, 0, &log.DoseHourA},
        {1, eLtm3, 0, &log.Ltm3CumA},      {1, eLtm5, 0, &log.Ltm5CumA},        {1, eLe_Sel, 0, &log.SELCumA},
        {1, ePa2Hr, 0, &log.Pa2hCumA},     {1, eLAvg, 0, &log.LAvgCumA},        {1, eTWA, 0, &log.TWACumA},
        {1, eLn(1), 2, &log.LnCumA(1, 2)}, {1, eLn(10), 0, &log.LnCumA(10, 0)}, {2, eLeq, 0, &log.LeqCumB},
        {2, eLmin, 0, &log.LminCumB},      {2, eLmax, 0, &log.LmaxCumB},        {2, ePeak, 0, &log.PeakCumB},
        {2, eLepdET, 0, &log.LepdETCumB},  {2, eLepdMT, 0, &log.LepdMTCumB},    {2, eDoseET, 0, &log.DoseETCumB},
        {2, eDoseMT, 0, &log.DoseMTCumB},  {2, eDoseHour, 0, &log.DoseHourB},   {2, eLe_Sel, 0, &log.SELCumB},
        {2, ePa2Hr, 0, &log.Pa2hCumB}};
    float next = 0;
    for (const Figure& figure : figures)
        figure.value->Value(++next);
    next = 0;
    for (const Figure& f : figures)
        EXPECT_EQ(cumulativeValue(log, f.channel, f.parameter, f.band).Value(), ++next) << f.parameter;
    for (const int parameter : {static_cast<int>(eLtm3), static_cast<int>(eLn(1)), static_cast<int>(eTWA)})
        EXPECT_EQ(cumulativeValue(log, kChannelB, parameter, 0).Value(), 0);
    log.IsLoggingOverLoaded = true;
    EXPECT_EQ(cumulativeValue(log, kChannelA, eOverload, 0).CalcValue(), -1);

    clsLogInterval row;
    row.Initialize(log.objLogShared);
    row.LminA(2).Value(1);
    row.LnA(3, 4).Value(2);
    row.SELA.Value(3);
    row.Pa2hB.Value(4);
    row.PeakB.Value(5);
    row.PeakB.CalcValue(6);
    row.OverloadedB = true;
    log.LogIntervals.setArraySize(2);
    log.LogIntervals.Commit(row, 2);
    EXPECT_EQ(intervalValue(log, 2, kChannelA, eLmin, 2).Value(), 1);
    EXPECT_EQ(intervalValue(log, 2, kChannelA, eLn(3), 4).Value(), 2);
    EXPECT_EQ(intervalValue(log, 2, kChannelA, eLe_Sel, 0).Value(), 3);
    EXPECT_EQ(intervalValue(log, 2, kChannelB, ePa2Hr, 0).Value(), 4);
    EXPECT_EQ(intervalValue(log, 2, kChannelB, ePeak, 9).Value(), 5);
    EXPECT_EQ(intervalValue(log, 2, kChannelB, ePeak, 9).CalcValue(), 6);
    EXPECT_EQ(intervalValue(log, 2, kChannelB, eOverload, 0).CalcValue(), -1);
    EXPECT_EQ(intervalValue(log, 2, kChannelA, eOverload, 0).CalcValue(), 0);
    EXPECT_EQ(intervalValue(log, 2, kChannelA, eLepdMT, 0).Value(), 0);
    EXPECT_EQ(intervalValue(log, 1, kChannelA, eLmin, 2).Value(), 0);
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
    const auto plottable = [&](int channel, int kind) {
        std::set<int> parameters;
        for (int parameter = 1; parameter <= ParameterCount; ++parameter)
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
                          {"Brevik SE", "IND", 'n', 's', 'n'}, {"Brevik E", "IND", 'n', 's', 'n'},
                          {"brevik e", "", 's', 'n', 's'},     {"Brevik SE", "ENV", 's', 'n', 's'},
                          {"Brevik SE", "", 's', '-', '-'}};
    for (const Case& c : cases) {
        for (const bool inApplication : {false, true}) {
            for (const bool asItStands : {false, true}) {
                clsLogOptions options;
                for (int parameter = 1; parameter <= ParameterCount; ++parameter) {
                    for (const int channel : {kChannelA, kChannelB}) {
                        for (const int kind : {kCumulative, kInterval}) {
                            session.Options.objLogOptions.Plottable.set(channel, kind, parameter, inApplication);
                            options.Plottable.set(channel, kind, parameter, asItStands);
                        }
                    }
                }
                RestrictToBrevik(session, options, c.name, c.location);
                const auto expect = [&](int channel, int kind, int parameter, char rule) {
                    const bool wanted = rule == 'y' || (rule == 's' && inApplication) || (rule == '-' && asItStands);
                    EXPECT_EQ(options.Plottable(channel, kind, parameter), wanted)
                        << c.name << c.location << ' ' << channel << kind << ' ' << parameter;
                };
                for (const int kind : {kCumulative, kInterval}) {
                    for (const int parameter : {eLepdET, eLepdMT, eDoseET, eDoseMT, eDoseHour, ePa2Hr}) {
                        expect(kChannelA, kind, parameter, c.exposure);
                        expect(kChannelB, kind, parameter, 'n');
                    }
                    for (int ln = 1; ln <= NumberOfLns; ++ln) {
                        expect(kChannelA, kind, eLn(ln), ln <= 3 ? c.percentiles : 'n');
                        expect(kChannelB, kind, eLn(ln), 'n');
                    }
                    for (const int channel : {kChannelA, kChannelB}) {
                        expect(channel, kind, eLeq, 's');
                        expect(channel, kind, eLmax, 's');
                        expect(channel, kind, eLmin, 'y');
                        expect(channel, kind, eLtm3, 'n');
                        expect(channel, kind, eLtm5, 'n');
                        expect(channel, kind, eOverload, '-');
                        expect(channel, kind, eTWA, channel == kChannelA && kind == kCumulative ? 'y' : '-');
                        expect(channel, kind, eLAvg, channel == kChannelA && kind == kCumulative ? 'y' : '-');
                    }
                    expect(kChannelA, kind, ePeak, 'n');
                    expect(kChannelB, kind, ePeak, 's');
                    expect(kChannelA, kind, eLe_Sel, c.le);
                    expect(kChannelB, kind, eLe_Sel, 'n');
                }
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

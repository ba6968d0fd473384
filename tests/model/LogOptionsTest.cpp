#include "ErrorOf.h"
#include "model/clsOptions.h"

#include <gtest/gtest.h>

namespace kestrane {
namespace {

TEST(LogOptions, StartWithTheirDefaults) {
    const clsLogOptions options;
    for (const FigureKind kind : kFigureKinds) {
        EXPECT_TRUE(options.Plottable(kChannelB, kind, eLe_Sel) && !options.IsPlotted(kChannelB, kind, eLe_Sel));
        EXPECT_TRUE(options.IsPlotted(kChannelA, kind, eLn(3)) && !options.IsPlotted(kChannelA, kind, eLn(4)));
        EXPECT_TRUE(options.Plottable(kChannelA, kind, eLn(10)) && !options.Plottable(kChannelB, kind, eLn(1)));
        EXPECT_TRUE(options.Plottable(kChannelA, kind, eLtm3) && !options.Plottable(kChannelB, kind, eLtm3));
        EXPECT_EQ(options.Plottable(kChannelA, kind, eLepdMT), kind == kCumulative);
        EXPECT_EQ(options.IsPlotted(kChannelB, kind, eDoseHour), kind == kCumulative);
        EXPECT_TRUE(options.Plottable(kChannelB, kind, eTWA) && !options.IsPlotted(kChannelB, kind, eTWA));
    }
    for (const auto& [channel, kind, parameter] :
         {std::tuple(0, 1, 1), {3, 1, 1}, {1, 0, 1}, {1, 3, 1}, {1, 1, 0}, {1, 1, 27}}) {
        EXPECT_EQ(errorOf([&] {
                      static_cast<void>(options.IsPlotted(static_cast<LogChannel>(channel),
                                                          static_cast<FigureKind>(kind),
                                                          static_cast<Parameter>(parameter)));
                  }),
                  kErrorIndexOutOfRange);
    }
}

TEST(LogOptions, AreKeptUnderTheirKeys) {
    MemorySettings store;
    clsOptions options;
    options.objLogOptions.IsPlotted = PlotTable();
    options.objLogOptions.IsPlotted.set(kChannelA, kCumulative, eLeq, true);
    options.objLogOptions.IsPlotted.set(kChannelB, kInterval, eDoseMT, true);
    options.objLogOptions.ExposureTime = 7.5F;
    options.objLogOptions.ChartStyle = eChartAs3D;
    options.objLogOptions.AxisFont = {"Courier", 9.5F};
    options.SerialPort = 4;
    options.RecalcOnOpen = false;
    options.SaveToRegistry(store);
    EXPECT_EQ(store.Values.size(), 20U + 3 + 104 + 8);
    const auto text = [&](const char* key) { return store.read("Preferences", key, "?"); };
    const std::pair<const char*, const char*> keys[] = {
        {"ShowLeqA-C", "True"}, {"ShowProjDoseB-I", "True"}, {"ShowLexA-C", "False"}, {"ShowTWAB-I", "False"},
        {"ShiftLength", "7.5"}, {"CAFName", "Courier"},      {"CAFSize", "9.5"},      {"CalcFileOpen", "False"}};
    for (const auto& [key, value] : keys)
        EXPECT_EQ(text(key), value) << key;

    clsOptions read;
    EXPECT_TRUE(read.GetFromRegistry(store).empty());
    EXPECT_TRUE(read.objLogOptions.IsPlotted == options.objLogOptions.IsPlotted);
    EXPECT_FALSE(read.DisplayDifferences(options));
    EXPECT_FALSE(read.RecalcOnOpen);
}

TEST(LogOptions, KeepTheirValuesWhereTheStoreHasNone) {
    MemorySettings store;
    for (const auto& [key, text] : {std::pair("ShiftLength", "eight"),
                                    {"SerialPort", "99999"},
                                    {"CalcFileOpen", ""},
                                    {"ShowLeqA-C", "maybe"},
                                    {"CNFSize", "1E39"}}) {
        store.write("Preferences", key, text);
    }
    const std::pair<const char*, bool> flags[] = {{"0", false},  {"-1", true},     {"no", false},
                                                  {"YES", true}, {"false", false}, {"true", true}};
    clsOptions options;
    const std::vector<std::string> bad = options.GetFromRegistry(store);
    EXPECT_EQ(bad, (std::vector<std::string>{"SerialPort", "CalcFileOpen", "ShiftLength", "ShowLeqA-C", "CNFSize"}));
    EXPECT_FALSE(options.DisplayDifferences(clsOptions()));
    EXPECT_EQ(options.SerialPort, 1);
    for (const auto& [text, flag] : flags) {
        store.write("Preferences", "ShowLmaxB-C", text);
        options.GetFromRegistry(store);
        EXPECT_EQ(options.objLogOptions.IsPlotted(kChannelB, kCumulative, eLmax), flag) << text;
    }
    for (const auto& [text, width] : {std::pair("9", 10), {"10", 10}, {"60", 60}, {"61", 60}, {"-32768", 10}}) {
        store.write("Preferences", "LineWidth", text);
        options.GetFromRegistry(store);
        EXPECT_EQ(options.objLogOptions.LineWidth, width) << text;
    }
}

} // namespace
} // namespace kestrane

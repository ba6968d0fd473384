#include "views/LogView.h"

#include "ShownLog.h"
#include "model/clsOptions.h"
#include "protection/ProtectorDatabase.h"
#include "views/CumulativePanel.h"
#include "views/IntervalTable.h"

#include <gtest/gtest.h>

namespace kestrane {
namespace {

// Which tabs are enabled, as digits.
std::string tabsOf(const clsLog& log) {
    std::string text;
    const TabFlags tabs = enabledTabs(log);
    for (const LogTab tab : kAllLogTabs)
        if (tabs[static_cast<std::size_t>(tab)]) text += std::to_string(tab);
    return text;
}

TEST(LogView, ALogGetsTheTabsItHasDataFor) {
    struct Case {
        LogMode mode;
        std::size_t rows;
        const char* tabs;
    };

    for (const Case& c : {Case{modeBroadband, 0, "3678"}, Case{modeBroadband, 1, "0123678"},
                          Case{modeFullOctave, 0, "34678"}, Case{modeThirdOctave, 2, "01234678"}}) {
        ShownLog shown(c.mode);
        shown.addRows(c.rows);
        EXPECT_EQ(tabsOf(shown.log), c.tabs) << c.mode << " with " << c.rows << " rows";
    }
}

TEST(LogView, OnlyALogThatAProtectorFitsIsCompared) {
    const auto isCompared = [](const clsLog& log) { return enabledTabs(log)[eTabCompareHPD]; };
    ShownLog octave(modeThirdOctave);
    EXPECT_FALSE(isCompared(octave.log));
    octave.log.LeqCumA(0).Value(80);
    EXPECT_FALSE(isCompared(octave.log)) << "the overall figure is no band";
    octave.log.LeqCumA(33).Value(40);
    EXPECT_TRUE(isCompared(octave.log));

    ShownLog twoChannels;
    ProtectorCollection protectors;
    twoChannels.session.protectors = &protectors;
    twoChannels.log.IsChannelBOn = true;
    twoChannels.log.FreqWeightB("C");
    protectors.Protectors.emplace_back().SNR = 20;
    EXPECT_FALSE(isCompared(twoChannels.log));
    protectors.Protectors.emplace_back().Low = 20;
    EXPECT_TRUE(isCompared(twoChannels.log));
    twoChannels.log.InsName = "Brevik SE";
    EXPECT_TRUE(isCompared(twoChannels.log));
    twoChannels.log.LocationType(EnvironmentLocation);
    EXPECT_FALSE(isCompared(twoChannels.log));
    twoChannels.log.LocationType("");
    twoChannels.log.InsName = "Brevik E";
    EXPECT_FALSE(isCompared(twoChannels.log));
}

TEST(LogView, KeepsTheProtectorFromLogToLogIfTheSettingsSaySo) {
    ShownLog octave(modeFullOctave);
    ShownLog broadband;
    clsHP hp;
    hp.SNR = 20;
    LogView view;
    view.open("L1I1F1", broadband.log, ePanelAdvanced);
    view.chooseProtector(hp, kCorrectionFourDecibels);
    view.IsComparisonDeclined = true;
    view.open("L2I1F1", broadband.log, ePanelAdvanced);
    EXPECT_TRUE(view.Protector.has_value());
    EXPECT_FALSE(view.IsComparisonDeclined);
    view.dropUnfitProtector(broadband.log);
    EXPECT_TRUE(view.Protector.has_value());
    view.dropUnfitProtector(octave.log);
    EXPECT_FALSE(view.Protector.has_value()) << "no data by octaves";

    hp.MeanUS(1) = 10;
    view.chooseProtector(hp, kCorrectionNone);
    octave.session.Options.HPDCalc = eHPDModeUSNIOSH;
    view.dropUnfitProtector(octave.log);
    EXPECT_TRUE(view.Protector.has_value());
    octave.session.Options.PersistSelectedHP = false;
    view.open("O1I1F1", octave.log, ePanelAdvanced);
    EXPECT_FALSE(view.Protector.has_value());
}

TEST(LogView, PanelsAreThoseThatTheLogHasAUseFor) {
    ShownLog octave(modeFullOctave);
    ShownLog broadband;
    EXPECT_TRUE(shownPanels(octave.log, eTabIntervalsTable).DisplayBy);
    EXPECT_FALSE(shownPanels(broadband.log, eTabIntervalsTable).DisplayBy);
    EXPECT_FALSE(shownPanels(broadband.log, eTabIntervalsTable).Channel);
    broadband.log.IsChannelBOn = true;
    EXPECT_TRUE(shownPanels(broadband.log, eTabIntervalsTable).Channel);
}

TEST(LogView, ATabIsDrawnOnceUntilSomethingChanges) {
    ShownLog shown(modeFullOctave);
    shown.addRows(3);
    LogView view;
    view.open("O1I1F1", shown.log, ePanelAdvanced);
    EXPECT_EQ(view.Tab, eTabFullLog);
    EXPECT_EQ(view.Panel, ePanelAdvanced);
    EXPECT_TRUE(view.takeDrawing());
    EXPECT_FALSE(view.takeDrawing());
    ASSERT_TRUE(view.chooseTab(eTabIntervalsTable, shown.log));
    EXPECT_TRUE(view.takeDrawing());
    view.chooseTab(eTabFullLog, shown.log);
    EXPECT_FALSE(view.takeDrawing());

    EXPECT_FALSE(view.chooseEntry({})); // the default it has already
    EXPECT_FALSE(view.takeDrawing());
    EXPECT_TRUE(view.chooseEntry({"1k", kNoParameter}));
    EXPECT_TRUE(view.takeDrawing()); // the full log shows that band, too
    EXPECT_EQ(view.PanelBand(shown.log), 7);

    view.chooseTab(eTabIntervalsGraph, shown.log);
    EXPECT_TRUE(view.takeDrawing());
    view.chooseInterval(2);
    EXPECT_TRUE(view.takeDrawing());
    view.chooseAxis(kByPercent);
    EXPECT_TRUE(view.takeDrawing());
    view.chooseTab(eTabFullLog, shown.log);
    EXPECT_FALSE(view.takeDrawing()); // an axis is no matter of the full log
    view.ResetTabs();
    EXPECT_TRUE(view.takeDrawing());
}

TEST(LogView, ChannelBCannotShowABand) {
    ShownLog shown(modeFullOctave);
    shown.log.IsChannelBOn = true;
    shown.addRows(1);
    LogView view;
    view.open("O1I1F1", shown.log, ePanelBothChannels);
    view.chooseEntry({"1k", kNoParameter});
    view.chooseTab(eTabCumulativeData, shown.log);
    EXPECT_EQ(view.PanelBand(shown.log), 7);
    view.takeDrawing();
    view.chooseTab(eTabIntervalsTable, shown.log);
    view.chooseTab(eTabCumulativeData, shown.log);
    EXPECT_EQ(view.PanelBand(shown.log), 7) << "the list is refilled on a change of mode alone";
    view.chooseTab(eTabIntervalsTable, shown.log);
    view.chooseChannel(kChannelB);
    EXPECT_EQ(view.Channel(), kChannelA);
    EXPECT_EQ(view.Choice(), DisplayChoice());
    view.chooseTab(eTabCumulativeData, shown.log);
    EXPECT_TRUE(view.takeDrawing()) << "it showed the band";
    view.chooseChannel(kChannelB);
    EXPECT_EQ(view.Channel(), kChannelB);
    view.chooseListMode(kByParam); // refills a list that stands at its default
    EXPECT_EQ(view.Channel(), kChannelB);
}

TEST(LogView, AnotherLogKeepsTheTabItHasAndTheHiddenPanel) {
    ShownLog rows;
    rows.addRows(1);
    ShownLog none;
    LogView view;
    view.open("L1I1F1", rows.log, ePanelMainChannelA);
    view.chooseTab(eTabIntervalsTable, rows.log);
    view.open("L2I1F1", none.log, ePanelHidden);
    EXPECT_EQ(view.Tab, eTabCumulativeData);
    EXPECT_EQ(view.Panel, ePanelMainChannelA);
    EXPECT_FALSE(view.chooseTab(eTabFullLog, none.log));
    EXPECT_EQ(view.Tab, eTabCumulativeData);
    view.open("L1I1F1", rows.log, ePanelHidden);
    EXPECT_EQ(view.Tab, eTabCumulativeData);
}

TEST(LogView, AChosenParameterOutlivesItsCaptionButNotItsPlaceInTheList) {
    ShownLog shown(modeFullOctave);
    shown.addRows(1);
    shown.plot(kChannelA, kInterval, {eLeq});
    LogView view;
    view.open("O1I1F1", shown.log, ePanelBothChannels);
    view.chooseListMode(kByParam);
    view.chooseEntry({"", eLeq});
    shown.log.FreqWeightA("Z");
    view.dropUnfitEntry(shown.log);
    EXPECT_EQ(view.Choice().Parameter, eLeq);
    EXPECT_EQ(IntervalTable(shown.log, kChannelA, view.Choice()).caption(0), "Time - LZeq:");
    view.takeDrawing();
    shown.log.objLogOptions.IsPlotted.set(kChannelA, kInterval, eLeq, false);
    view.dropUnfitEntry(shown.log);
    EXPECT_EQ(view.Choice(), DisplayChoice());
    EXPECT_TRUE(view.takeDrawing());
}

TEST(LogView, ThePanelTabOffersBandsAlone) {
    ShownLog shown(modeFullOctave);
    shown.addRows(1);
    LogView view;
    view.open("O1I1F1", shown.log, ePanelBothChannels);
    view.chooseListMode(kByParam);
    view.chooseEntry({"", eLeq});
    view.chooseTab(eTabCumulativeData, shown.log);
    EXPECT_EQ(view.ListMode(), kByFreq);
    EXPECT_EQ(view.PanelBand(shown.log), 0);
}

TEST(LogView, APanelOfBothChannelsNeedsBoth) {
    ShownLog shown;
    EXPECT_EQ(cumulativePanelOf(shown.log, ePanelBothChannels), ePanelMainChannelA);
    EXPECT_EQ(cumulativePanelOf(shown.log, ePanelAdvanced), ePanelAdvanced);
    shown.log.IsChannelBOn = true;
    EXPECT_EQ(cumulativePanelOf(shown.log, ePanelBothChannels), ePanelBothChannels);
}

} // namespace
} // namespace kestrane

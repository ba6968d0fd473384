#include "app/SettingsDialog.h"

#include "TestSession.h"
#include "calc/Recalculation.h"
#include "download/ScriptedLine.h"
#include "platform/RuntimeError.h"

#include <gtest/gtest.h>

namespace kestrane {
namespace {

TEST(SettingsDialog, ConfirmingTellsWhatHasToBeDrawnAnew) {
    TestSession test;
    Session& session = test.session;
    SettingsDialog dialog(session);
    dialog.Edited.DefaultDataDirectory = "/data";
    EXPECT_EQ(dialog.Confirm("08:00:00"), (SettingsChanges{true, false, false}));
    EXPECT_EQ(session.Options.DefaultDataDirectory, "/data/");
    EXPECT_EQ(dialog.Confirm("7:30:00"), (SettingsChanges{true, true, false})); // figures on display depend on it
    dialog.Edited.HPDCalc = eHPDModeUSOSHA;
    EXPECT_EQ(dialog.Confirm("7:30:00"), (SettingsChanges{true, true, false})); // so does a comparison
}

TEST(SettingsDialog, AnExposureTimeThatIsNoneIsRefused) {
    TestSession test;
    SettingsDialog all(test.session);
    all.Edited.CompanyName = "Smith";
    for (const char* entry : {"0", "24.1", "-8", "", "eight", "24:00:01"}) {
        EXPECT_EQ(all.Confirm(entry), std::nullopt) << entry;
        EXPECT_EQ(test.messages.Boxes.back().Prompt,
                  "Invalid entry - Exposure length must be a number greater than zero and less than or equal to 24");
        EXPECT_EQ(test.messages.Boxes.back().Title, "Error");
    }
    EXPECT_EQ(test.messages.Boxes.size(), 6U);
    EXPECT_EQ(test.session.Options.CompanyName, "");
    EXPECT_TRUE(test.settings.Values.empty());
    EXPECT_TRUE(all.Confirm("24").has_value());
    EXPECT_EQ(test.session.Options.objLogOptions.ExposureTime, 24);

    EXPECT_TRUE(SettingsDialog(test.session, test.session.Options).Confirm("0").has_value()); // has no such field
}

TEST(SettingsDialog, AnUntouchedExposureTimeKeepsItsFraction) {
    TestSession test;
    test.session.Options.objLogOptions.ExposureTime = 7.12345F;
    SettingsDialog all(test.session);
    EXPECT_EQ(all.Confirm("07:07:24"), (SettingsChanges{true, false, false}));
    EXPECT_EQ(test.session.Options.objLogOptions.ExposureTime, 7.12345F);
}

TEST(SettingsDialog, SettingsThatCannotBeStoredAreToldAndHold) {
    struct FullStore : MemorySettings {
        void write(std::string_view, std::string_view, std::string_view) override {
            throw RuntimeError(28, "No space left on device");
        }
    } store;

    TestSession test;
    Session session("Ordwyn", {}, store, test.messages, test.pump, test.clock);
    SettingsDialog dialog(session);
    dialog.Edited.SerialPort = 7;
    EXPECT_TRUE(dialog.Confirm("8").has_value());
    EXPECT_EQ(session.Options.SerialPort, 7);
    ASSERT_EQ(test.messages.Boxes.size(), 1U);
    EXPECT_EQ(test.messages.Boxes[0].Prompt, "The settings could not be stored: No space left on device");
}

TEST(SettingsDialog, TheExplorersPageChangesWhatItWasOpenedFor) {
    TestSession test;
    SettingsDialog dialog(test.session, test.session.Options);
    dialog.Edited.PersistSelectedHP = false;
    EXPECT_EQ(dialog.Confirm(""), (SettingsChanges{false, false, true}));
    EXPECT_FALSE(test.session.Options.PersistSelectedHP);
    EXPECT_TRUE(test.settings.Values.empty());
}

TEST(SettingsDialog, TheLogsPageChangesOneLog) {
    TestSession test;
    clsLog log(test.session);
    log.InsName = "Brevik S";
    log.Criterion = 85;
    log.LeqCumA(0).Value(85);
    RecalcValues(log, kCalcFull);
    SettingsDialog dialog(test.session, log, kInterval);
    dialog.Edited.objLogOptions.LineWidth = 40;
    dialog.Edited.objLogOptions.IsPlotted.set(kChannelA, kInterval, eLeq, false);
    log.objLogOptions.Plottable.set(kChannelA, kCumulative, eTWA, false); // while the dialog is open

    EXPECT_EQ(dialog.Confirm("4"), (SettingsChanges{false, false, true}));
    EXPECT_EQ(log.objLogOptions.LineWidth, 40);
    EXPECT_FALSE(log.objLogOptions.IsPlotted(kChannelA, kInterval, eLeq));
    EXPECT_FALSE(log.objLogOptions.Plottable(kChannelA, kCumulative, eTWA));
    EXPECT_EQ(log.objLogOptions.ExposureTime, 4);
    EXPECT_NEAR(log.DoseETCumA.CalcValue(), 50, 0.01);
    EXPECT_EQ(test.session.Options.objLogOptions.LineWidth, 20);
}

TEST(SettingsDialog, OffersWhatCanBeShown) {
    TestSession test;
    const SettingsDialog all(test.session);
    EXPECT_TRUE(all.IsOffered(kChannelA, kCumulative, eLepdMT));
    EXPECT_FALSE(all.IsOffered(kChannelA, kInterval, eLepdMT));
    EXPECT_FALSE(all.IsOffered(kChannelB, kCumulative, eLtm3));
    EXPECT_TRUE(all.IsOffered(kChannelA, kInterval, eLe_Sel));
    EXPECT_EQ(all.Caption(eLn(4)), "Ln4");
    EXPECT_TRUE(all.HasChannelB());

    clsLog log(test.session);
    log.FreqWeightA("A");
    log.LnNumberA(1, 90);
    log.objLogOptions.Plottable.set(kChannelA, kInterval, ePeak, false);
    const SettingsDialog ofLog(test.session, log, kInterval);
    EXPECT_FALSE(ofLog.IsOffered(kChannelA, kInterval, ePeak));
    EXPECT_TRUE(ofLog.IsOffered(kChannelA, kInterval, eLn(1)));
    EXPECT_FALSE(ofLog.IsOffered(kChannelA, kInterval, eLn(2)));
    EXPECT_EQ(ofLog.Caption(eLn(1)), "L90");
    EXPECT_EQ(ofLog.Caption(eLn(2)), "Ln2");
    EXPECT_FALSE(ofLog.HasChannelB());

    log.InsName = "Brevik S"; // has no percentiles and keeps its Peak on channel B
    const SettingsDialog brevik(test.session, log, kInterval);
    EXPECT_FALSE(brevik.IsOffered(kChannelA, kInterval, eLn(1)));
    EXPECT_TRUE(brevik.IsOffered(kChannelB, kInterval, ePeak));
}

TEST(SettingsDialog, ListsThePorts) {
    TestSession test;
    ScriptedTime time;
    ScriptedComm comm(time);
    comm.TheirPorts = {{1, "/dev/ttyS0", ""}, {9, "/dev/ttyUSB0", "USB adapter"}};
    test.session.comm = &comm;
    const auto choices = serialChoices(test.session, 7);
    EXPECT_EQ(choices,
              (std::vector<SerialChoice>{
                  {"AUTO", 0}, {"COM 1: /dev/ttyS0", 1}, {"COM 7", 7}, {"COM 9: /dev/ttyUSB0, USB adapter", 9}}));
    EXPECT_EQ(serialChoiceOf(choices, 7), 2U);
    EXPECT_EQ(serialChoiceOf(choices, 0), 0U);
    EXPECT_EQ(serialChoiceOf(choices, 300), 0U);
    EXPECT_EQ(serialChoices(test.session, 9).size(), 3U);
    EXPECT_EQ(serialChoices(test.session, 300).size(), 3U);
    test.session.comm = nullptr;
    EXPECT_EQ(serialChoices(test.session, 0).size(), 1U);
}

} // namespace
} // namespace kestrane

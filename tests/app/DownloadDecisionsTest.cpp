#include "TestSession.h"
#include "app/AcquireDialog.h"
#include "app/ProgressReport.h"
#include "download/ScriptedLine.h"

#include <gtest/gtest.h>

namespace kestrane {
namespace {

AcquireList listOf(std::vector<std::string> rows, bool hasOctaveChoice = false, bool canFetchOctaves = false) {
    return {"TR352", "M-9", std::move(rows), hasOctaveChoice, canFetchOctaves, {}};
}

TEST(AcquireDialog, OctavesAreTickedWhereTheyCanBeFetched) {
    AcquireDialog dialog(listOf({"a"}, true, true));
    EXPECT_TRUE(dialog.Choice().FetchOctaves);
    dialog.SelectAll(false);
    EXPECT_TRUE(dialog.CanAccept());
    dialog.FetchOctaves(false);
    EXPECT_FALSE(dialog.CanAccept());
    AcquireDialog without(listOf({"a"}, true, false));
    EXPECT_FALSE(without.Choice().FetchOctaves);
    without.SelectAll(false);
    without.FetchOctaves(true); // not offered
    EXPECT_FALSE(without.CanAccept());
    EXPECT_TRUE(AcquireDialog(listOf({})).CanAccept()); // the download then tells that there are none
}

struct Report : TestSession {
    ScriptedTime clock;
    ProgressReport report{session, clock};
    DownloadProgress progress;

    ProgressWords words() { return report.WordsOf(progress); }

    std::string timeLeftAfter(int seconds, int log, std::int64_t bytes) {
        clock.Now = milliseconds(seconds * 1000);
        progress.Log = log;
        progress.LogBytes = bytes;
        return words().TimeLeft;
    }
};

TEST(ProgressReport, ShowsWhatIsKnown) {
    Report test;
    test.progress.Label = "Identifying Instrument...";
    EXPECT_EQ(test.words().Label, "Identifying Instrument...");
    EXPECT_EQ(test.words().Log + test.words().Received + test.words().TimeLeft, "");
    EXPECT_FALSE(test.words().Percent);
    test.progress.BytesReceived = 9999;
    EXPECT_EQ(test.words().Received, "9999 bytes received");
    test.progress.BytesReceived = 1234567;
    EXPECT_EQ(test.words().Received, "1234.6 KB received");

    test.progress.Logs = 4; // chosen, none begun
    EXPECT_FALSE(test.words().Percent);
    test.progress.Log = 2;
    test.progress.LogBytes = 30;
    EXPECT_EQ(test.words().Log, "Log 2 of 4");
    EXPECT_EQ(test.words().Percent, 25); // how long the log is nobody knows
    test.progress.LogBytesTotal = 60;
    EXPECT_EQ(test.words().Percent, 37);
    test.progress.LogBytes = 90; // more than was announced
    EXPECT_EQ(test.words().Percent, 50);
    test.progress.Log = 9;
    EXPECT_EQ(test.words().Percent, 100);
}

TEST(ProgressReport, EstimatesTheTimeLeftFromTheFirstLogOn) {
    Report test;
    test.words(); // however long the identification took
    test.progress.Logs = 10;
    test.progress.LogBytesTotal = 1000;
    EXPECT_EQ(test.timeLeftAfter(60, 1, 0), "");
    EXPECT_EQ(test.timeLeftAfter(61, 1, 500), "");                  // too early
    EXPECT_EQ(test.timeLeftAfter(70, 1, 500), "About 4 mins left"); // 10 s for 5%, so 190 s
    EXPECT_EQ(test.timeLeftAfter(70, 5, 0), "About 15 secs left");
    EXPECT_EQ(test.timeLeftAfter(70, 10, 990), "About 5 secs left");
    EXPECT_EQ(test.timeLeftAfter(75, 3, 0), "About 1 min left");      // 60 s
    EXPECT_EQ(test.timeLeftAfter(200, 7, 200), "About 2 mins left");  // 86 s
    EXPECT_EQ(test.timeLeftAfter(4060, 2, 0), "About 10 hours left"); // 4000 s a log, nine to come
    EXPECT_EQ(test.timeLeftAfter(1060, 10, 1000), "About 5 secs left");
    test.progress.SilentSeconds = 3;
    EXPECT_EQ(test.words().TimeLeft, "No data for 3 s.  Check the cable and the meter.");
}

} // namespace
} // namespace kestrane

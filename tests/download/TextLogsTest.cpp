#include "SampleInstruments.h"

#include "download/Hex.h"

#include <gtest/gtest.h>

namespace kestrane {
namespace {

struct TextLogsTest : testing::Test, ScriptedDownload {
    bool download(const SampleInstrument& instrument) {
        connect(comm, instrument);
        for (const LogMode mode : {modeBroadband, modeFullOctave, modeThirdOctave})
            data.logsOf(mode).clear();
        return DownloadData(services, data);
    }

    static std::string moment(const clsDate& date, const clsTime& time) {
        return date.Format() + " " + time.hh_mm_ss();
    }

    static std::string rowStart(const clsLog& log, std::int64_t index) {
        const clsLogInterval row = log.LogIntervals.Item(index);
        return moment(row.StartDate, row.StartTime);
    }
};

TEST_F(TextLogsTest, HexPairsAreTenths) {
    EXPECT_EQ(HexPairValue("0000"), 0);
    EXPECT_EQ(HexPairValue("0352"), 85);
    EXPECT_EQ(HexPairValue("FFFF"), 6553.5F);
    EXPECT_EQ(HexPairValue("01fe"), 51);
    for (const char* const text : {"", "00G0", "-001", "0x10", "+001", " 123", "123456789"})
        EXPECT_THROW(HexPairValue(text), DownloadEnded) << text;
    EXPECT_EQ(fourHexDigits(0x1A), "001A");
}

TEST_F(TextLogsTest, AnOldDosimeterSendsDoses) {
    ASSERT_TRUE(download(tallix("TR340")));
    EXPECT_EQ(data.InsSerial, "T-778");
    EXPECT_EQ(user.Lists.back().Rows, (std::vector<std::string>{"Broadband 26", "Broadband 27"}));
    ASSERT_EQ(data.Locations.size(), 1U); // the other is empty
    const clsLog& log = *data.Locations.front();
    EXPECT_EQ(log.Name, "Broadband 26");
    EXPECT_EQ(log.Number, 26);
    EXPECT_EQ(log.Pa2hCumA.Value(), 1.25F);
    EXPECT_EQ(log.LepdMTCumA.Value(), 60);
    EXPECT_FALSE(log.IsLoggingOverLoaded);
    EXPECT_EQ(moment(log.EndDate, log.EndTime), "01/01/2020 00:10:00");
    ASSERT_EQ(log.LogIntervals.Count(), 3);
    EXPECT_EQ(rowStart(log, 2), "01/01/2020 00:00:00");
    EXPECT_NEAR(log.LogIntervals.Item(1).LeqA(0).Value(), 82.0412, 1e-3); // 90 + 10 log10(0.2 x 8 / 10)
    EXPECT_EQ(log.LogIntervals.Item(2).LeqA(0).Value(), 0);
    EXPECT_NEAR(log.LogIntervals.Item(3).LeqA(0).Value(), 79.0309, 1e-3);
    EXPECT_TRUE(log.FullyCalculated);
    const std::vector<std::string> labels = {
        session.LoadText(Text::IdentifyingInstrument), session.LoadText(Text::DownloadingListOfLogs),
        session.LoadText(Text::DownloadingIntervals) + " 26.", session.LoadText(Text::DownloadingIntervals) + " 27."};
    EXPECT_EQ(user.Labels, labels);
}

TEST_F(TextLogsTest, OldLogsWithoutRowsVanish) {
    SampleInstrument instrument = tallix("TR340");
    instrument.Answers[textFrame("02001A00")] = textFrame("0000");
    EXPECT_FALSE(download(instrument));
    EXPECT_EQ(shown(), session.LoadText(Text::NoLogsOnInstrument));

    instrument.Answers[textFrame("01")] = textFrame("");
    EXPECT_FALSE(download(instrument));
    EXPECT_TRUE(user.Lists.back().Rows.empty());
    EXPECT_EQ(shown(), session.LoadText(Text::NoLogsOnInstrument));

    // A row that is not chosen is not asked for.
    instrument = tallix("TR342");
    comm.Sent.clear();
    user.Choose = [](const AcquireList&) { return AcquireChoice{{true, false}, false}; };
    EXPECT_TRUE(download(instrument));
    EXPECT_EQ(std::count(comm.Sent.begin(), comm.Sent.end(), textFrame("02001B00")), 0);
    user.Choose = [](const AcquireList&) { return AcquireChoice{{false, false}, false}; };
    EXPECT_FALSE(download(instrument));
    EXPECT_EQ(shown(), session.LoadText(Text::DownloadAborted));
}

TEST_F(TextLogsTest, OldLogsHaveNumbersOfFourDigits) {
    SampleInstrument instrument = tallix("TR340");
    instrument.Answers[textFrame("01")] = textFrame("FFFE.........");
    for (const char* const part : {"00", "01", "03"})
        instrument.Answers[textFrame(std::string("02FFFE") + part)] =
            instrument.Answers[textFrame("02001A" + std::string(part))];
    ASSERT_TRUE(download(instrument)) << shown();
    EXPECT_EQ(data.Locations.front()->Number, 0xFFFE);
}

TEST_F(TextLogsTest, ASingleMerrowanRowIsAsLongAsTheRun) {
    SampleInstrument instrument = merrowan("TR320");
    std::string& work = instrument.Answers[textFrame("02000100")];
    work.replace(work.find("0002080000"), 4, "0001");
    ASSERT_TRUE(download(instrument)) << shown();
    ASSERT_EQ(data.Locations[0]->LogIntervals.Count(), 1);
    EXPECT_EQ(data.Locations[0]->Interval, 120);
}

TEST_F(TextLogsTest, MerrowanLogsGoByTheirLocation) {
    ASSERT_TRUE(download(merrowan("TR320")));
    EXPECT_TRUE(user.Lists.back().HasOctaveChoice);
    EXPECT_FALSE(user.Lists.back().CanFetchOctaves);
    EXPECT_EQ(user.Lists.back().Rows, (std::vector<std::string>{"Broadband 1\t03/06/2019   \t08:00\tNoise At Work",
                                                                "Broadband 2\t03/06/2019   \t09:00\tEnvironmental",
                                                                "Broadband 3\t03/06/2019   \t10:00\t"}));
    ASSERT_EQ(data.Locations.size(), 3U);
    EXPECT_TRUE(data.Octaves.empty());

    const clsLog& work = *data.Locations[0];
    EXPECT_EQ(work.Name + work.LocationType(), "Broadband 1IND");
    EXPECT_EQ(work.FreqWeightA() + work.TimeWeightA(), "CFast");
    EXPECT_EQ(moment(work.LmaxCumDateA, work.LmaxCumTimeA), "03/06/2019 08:00:30");
    EXPECT_EQ(moment(work.PeakCumDateA, work.PeakCumTimeA), "03/06/2019 08:01:10");
    EXPECT_FALSE(work.IsLnNumbersOn);
    EXPECT_EQ(work.Interval, 60);

    const clsLog& environment = *data.Locations[1];
    EXPECT_EQ(environment.LocationType(), "ENV");
    EXPECT_EQ(environment.FreqWeightA() + environment.TimeWeightA(), "ZImpulse");
    EXPECT_EQ(moment(environment.LmaxCumDateA, environment.LmaxCumTimeA), "03/06/2019 08:00:01");
    EXPECT_EQ(moment(environment.LminCumDateA, environment.LminCumTimeA), "03/06/2019 08:01:02");
    EXPECT_EQ(environment.LnNumberA(1) * 100 + environment.LnNumberA(2), 1090);
    const clsLogInterval second = environment.LogIntervals.Item(2);
    EXPECT_EQ(second.LmaxTimeA.hh_mm_ss() + second.LminTimeA.hh_mm_ss(), "08:01:0308:01:04");

    const clsLog& other = *data.Locations[2];
    EXPECT_EQ(other.LocationType() + other.FreqWeightA() + other.TimeWeightA(), "");
    EXPECT_EQ(other.Criterion * 10 + other.Exchange, 903); // as they were
    EXPECT_EQ(other.LogIntervals.Count(), 0);
    EXPECT_EQ(std::count(comm.Sent.begin(), comm.Sent.end(), textFrame("02000301")), 1);
}

TEST_F(TextLogsTest, MerrowanOctavesAreFetchedWhenWanted) {
    ASSERT_TRUE(download(merrowan("TR322")));
    EXPECT_TRUE(user.Lists.back().CanFetchOctaves);
    ASSERT_EQ(data.Octaves.size(), 3U);
    const auto codes = [&](std::size_t i) {
        return data.Octaves[i]->OctaveType() + data.Octaves[i]->FreqWeightA() + data.Octaves[i]->TimeWeightA();
    };
    EXPECT_EQ(codes(0) + " " + codes(1) + " " + codes(2), "ManualAImpulse LeqZFast AutoSlow");

    user.Choose = [](const AcquireList&) { return AcquireChoice{{false, false, false}, true}; };
    ASSERT_TRUE(download(merrowan("TR352")));
    EXPECT_TRUE(data.Locations.empty());
    SampleInstrument none = merrowan("TR326");
    none.Answers[textFrame("05")] = textFrame("0000");
    none.Answers[textFrame("06")] = textFrame("");
    comm.Sent.clear();
    EXPECT_FALSE(download(none)) << "no log at all";
    EXPECT_EQ(std::count(comm.Sent.begin(), comm.Sent.end(), textFrame("06")), 1);
    user.Choose = [](const AcquireList&) { return AcquireChoice{{true, true, true}, false}; };
    ASSERT_TRUE(download(merrowan("TR326")));
    EXPECT_TRUE(data.Octaves.empty());
}

TEST_F(TextLogsTest, CorvaneFilesAreMachineLogs) {
    ASSERT_TRUE(download(corvane()));
    EXPECT_EQ(user.Lists.back().InsName, "Corvane \u00A6 5");
    EXPECT_EQ(user.Lists.back().Rows, (std::vector<std::string>{"A1", "B\u00E9", "C3"}));
    EXPECT_EQ(comm.Sent[2], bytesOf("0204"));
    EXPECT_EQ(comm.Sent[3], bytesOf("0206 0341 0331 FF"));
    EXPECT_EQ(data.InsName(), "Corvane 5");
    EXPECT_EQ(data.InsSerial, "C -12");
    ASSERT_EQ(data.Locations.size(), 2U); // the one that is no log is passed over
    EXPECT_NE(shown().find("B\u00E9"), std::string::npos) << shown();
    const clsLog& log = *data.Locations[0];
    EXPECT_EQ(log.Name, "A1");
    EXPECT_TRUE(log.SaveDoseCalc);
    EXPECT_TRUE(log.FullyCalculated);
    EXPECT_EQ(data.Locations[1]->LogIntervals.Count(), 0);

    // A list without an end mark is taken whole; a last name without its CR is none.
    SampleInstrument instrument = corvane();
    instrument.Answers[bytesOf("0204")] = "*A1\rC3";
    ASSERT_TRUE(download(instrument));
    EXPECT_EQ(user.Lists.back().Rows, std::vector<std::string>{"A1"});

    // Nothing that can be read: no document, and the reasons.
    instrument.Answers[bytesOf("0204")] = "*B\xE9\r";
    EXPECT_FALSE(download(instrument));
    EXPECT_NE(shown().find("B\u00E9"), std::string::npos) << shown();
    instrument.Answers[bytesOf("0204")] = "*\xFE";
    EXPECT_FALSE(download(instrument));
    EXPECT_EQ(shown(), session.LoadText(Text::NoLogsOnInstrument));
}

} // namespace
} // namespace kestrane

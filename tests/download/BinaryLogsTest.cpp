#include "SampleInstruments.h"

#include "download/BinaryLogs.h"
#include "platform/Numbers.h"

#include <gtest/gtest.h>

#include <array>
#include <limits>

namespace kestrane {
namespace {

struct BinaryLogsTest : testing::Test, ScriptedDownload {
    const clsLog* download(const SampleInstrument& instrument) {
        connect(comm, instrument);
        data.Locations.clear();
        if (!DownloadData(services, data) || data.Locations.empty()) return nullptr;
        return data.Locations.front().get();
    }

    const clsLog* download(std::int32_t firmware, std::int32_t type, const BinaryLog& log) {
        return download(binaryInstrument(firmware, type, {log}));
    }

    // With the field of the directory entry changed.
    template <class Value>
    const clsLog* changed(std::int32_t firmware, std::int32_t type, BinaryLog log, std::size_t offset, Value value) {
        log.Entry.replace(offset, sizeof value, reinterpret_cast<const char*>(&value), sizeof value);
        return download(firmware, type, log);
    }
};

std::string rowText(const clsLog& log, std::int64_t index) {
    const clsLogInterval row = log.LogIntervals.Item(index);
    std::string text = row.StartDate.Format() + " " + row.StartTime.hh_mm_ss();
    for (const clsValue& value : {row.LeqA(0), row.LeqB, row.LmaxA(0), row.LmaxB, row.LminA(0), row.LminB, row.SELA,
                                  row.LepdA, row.LnA(1, 0), row.LnA(2, 0), row.LnA(3, 0), row.PeakA, row.PeakB})
        text += " " + singleText(value.Value());
    return text + (row.OverloadedA ? " A" : "") + (row.OverloadedB ? " B" : "");
}

std::string figuresText(const clsLog& log) {
    std::string text = log.EndDate.Format() + " " + log.EndTime.hh_mm_ss();
    for (const clsValue& value :
         {log.DoseETCumA, log.DoseHourA, log.Pa2hCumA, log.LAvgCumA, log.LeqCumA(0), log.LeqCumB, log.LmaxCumA(0),
          log.LmaxCumB, log.LminCumA(0), log.LminCumB, log.SELCumA, log.LepdETCumA, log.LnCumA(1, 0), log.LnCumA(2, 0),
          log.LnCumA(3, 0), log.PeakCumA, log.PeakCumB})
        text += " " + singleText(value.Value());
    return text;
}

TEST_F(BinaryLogsTest, ABrevikLogIsReadWhole) {
    const clsLog* log = download(brevik());
    ASSERT_NE(log, nullptr);
    EXPECT_EQ(log->Name, "23:30:00 28/02/2019");
    EXPECT_EQ(user.Lists.back().Rows, std::vector<std::string>{"23:30:00 28/02/2019"});
    EXPECT_EQ(user.Lists.back().Seconds.front(), 2 * 3600);
    EXPECT_EQ(log->LocationType(), "IND");
    EXPECT_EQ(log->Range + " " + log->Region + " " + log->Threshold, "Medium OSHA 70");
    EXPECT_EQ(log->MeasurementTimeFromInstrument, 7200);
    EXPECT_TRUE(log->IsLoggingOverLoaded);
    EXPECT_EQ(log->LogIntervals.Count(), 2);
    EXPECT_EQ(rowText(*log, 1), "28/02/2019 23:30:00 60.13 61 62 63 64 65 66 67 68 69 70 0 71");
    EXPECT_EQ(rowText(*log, 2), "01/03/2019 00:30:00 70.13 71 72 73 74 75 76 77 78 79 80 0 81 A");
    EXPECT_EQ(figuresText(*log),
              "01/03/2019 01:30:00 12.5 6.25 0.75 71.5 72 73 74 75 58 59 110.5 66 80 55 65 0 120.25");
    // The figures have been computed to their end: 72 dB for 2 hours.
    EXPECT_TRUE(log->FullyCalculated);
    EXPECT_NEAR(log->SELCumA.CalcValue(), log->LeqCumA(0).CalcValue() + 38.573, 0.001);
    EXPECT_NEAR(log->DoseHourA.CalcValue(), log->DoseMTCumA.CalcValue() / 2, 0.001);
    EXPECT_GT(log->TWACumA.CalcValue(), 0);
    EXPECT_EQ(log->TWACumA.Value(), 0);
    const std::vector<std::string> labels = {session.LoadText(Text::IdentifyingInstrument),
                                             session.LoadText(Text::DownloadingListOfLogs),
                                             session.LoadText(Text::DownloadingLog) + " 23:30:00 28/02/2019"};
    EXPECT_EQ(user.Labels, labels);
    EXPECT_EQ(user.Last.LogBytes, user.Last.LogBytesTotal);
    EXPECT_FALSE(comm.IsOpen());
}

TEST_F(BinaryLogsTest, TheOtherGenerationsHaveTheirOwnLayout) {
    const clsLog* log = download(brevik(105)); // exactly the last early firmware
    ASSERT_NE(log, nullptr);
    EXPECT_EQ(rowText(*log, 2), "01/03/2019 00:30:00 70.13 71 72 73 0 0 76 77 78 79 80 0 81 A");
    EXPECT_EQ(figuresText(*log), "01/03/2019 01:30:00 12.5 6.25 0.75 0 72 73 74 75 0 0 110.5 66 80 55 65 0 120.25");
    EXPECT_EQ(log->Region, "");
    EXPECT_EQ(log->TimeWeightA() + log->TimeWeightB() + log->FreqWeightB(), "SlowImpulseZ");
    EXPECT_TRUE(log->IsLoggingOverLoaded); // by its rows
    EXPECT_NE(download(brevik(106)), nullptr);

    const char* const halcyrRow = "03/06/2019 08:00:00 81 82 83 84 0 0 98.5 54.5 85 70 69 0 121 B";
    log = download(halcyr(101, 117));
    ASSERT_NE(log, nullptr);
    EXPECT_EQ(rowText(*log, 1), halcyrRow);
    EXPECT_EQ(figuresText(*log), "03/06/2019 08:01:00 1.25 2.5 0.5 0 81 82 83 84 0 0 98.5 54.5 85 70 69 0 121");
    EXPECT_EQ(log->Threshold, "Off");
    EXPECT_EQ(log->FreqWeightB() + log->TimeWeightA() + log->TimeWeightB(), "CFastSlow");
    EXPECT_TRUE(log->IsLoggingOverLoaded);
    log = download(halcyr(100, 117));
    ASSERT_NE(log, nullptr);
    EXPECT_EQ(rowText(*log, 1), halcyrRow);
    EXPECT_EQ(figuresText(*log), "03/06/2019 08:01:00 1.25 2.5 0 0 81 82 83 84 0 0 98.5 54.5 85 70 69 0 121");
}

TEST_F(BinaryLogsTest, CodesHaveTheirMeaning) {
    const auto text = [](const clsLog* log) {
        return log->LocationType() + "|" + log->TestLocationType() + "|" + log->Range + "|" + log->Region + "|" +
               log->Threshold + "|" + log->TimeWeightA() + "|" + log->FreqWeightB();
    };

    struct Case {
        std::int32_t firmware, type;
        std::size_t offset;
        std::int32_t value;
        const char* text;
    };

    const Case brevikCases[] = {
        {230, 0, 0x14, 1, "ENV|ENV|Medium|OSHA|70|Slow|Z"},   {230, 0, 0x14, 2, "All|All|Medium|OSHA|70|Slow|Z"},
        {230, 0, 0x14, 3, "||Medium|OSHA|70|Slow|Z"},         {230, 0, 0x14, 4, "||Medium|OSHA|70|Slow|Z"},
        {230, 0, 0x18, 0, "IND|IND|Low|OSHA|70|Slow|Z"},      {230, 0, 0x18, 2, "IND|IND|High|OSHA|70|Slow|Z"},
        {230, 0, 0x18, -1, "IND|IND||OSHA|70|Slow|Z"},        {230, 0, 0x34, 0, "IND|IND|Medium|EU|70|Slow|Z"},
        {230, 0, 0x34, 2, "IND|IND|Medium|CUSTOM|70|Slow|Z"}, {230, 0, 0x34, 3, "IND|IND|Medium||70|Slow|Z"},
        {230, 0, 0x40, 0, "IND|IND|Medium|OSHA|0|Slow|Z"},    {230, 0, 0x40, -1, "IND|IND|Medium|OSHA|Off|Slow|Z"},
        {230, 0, 0x44, 0, "IND|IND|Medium|OSHA|70|Fast|Z"},   {230, 0, 0x44, 2, "IND|IND|Medium|OSHA|70|Impulse|Z"},
        {230, 0, 0x44, 3, "IND|IND|Medium|OSHA|70||Z"},       {230, 0, 0x48, 7, "IND|IND|Medium|OSHA|70|Slow|A"},
    };
    const Case halcyrCases[] = {
        {101, 117, 0x14, 0, "|ENV|20-90||Off|Fast|C"},     {101, 117, 0x14, 2, "|ENV|60-130||Off|Fast|C"},
        {101, 360, 0x14, 1, "|IND|40-110||Off|Fast|C"},    {101, 360, 0x14, 2, "|IND|70-140||Off|Fast|C"},
        {101, 350, 0x14, 0, "ENV|ENV|35-100||Off|Fast|C"}, {101, 312, 0x14, 0, "ENV|ENV|30-100||Off|Fast|C"},
        {101, 312, 0x14, 1, "ENV|ENV|50-120||Off|Fast|C"}, {101, 350, 0x14, 3, "ENV|ENV|||Off|Fast|C"},
        {101, 350, 0x10, 0, "IND|IND|70-140||Off|Fast|C"}, {101, 350, 0x10, 2, "All|All|70-140|||Fast|C"},
        {101, 350, 0x10, 3, "||70-140||Off|Fast|C"},       {101, 117, 0x10, 2, "|ENV|60-130||Off|Fast|C"},
    };
    for (const Case& c : brevikCases) {
        const clsLog* log = changed(c.firmware, c.type, brevikLog(false), c.offset, c.value);
        ASSERT_NE(log, nullptr);
        EXPECT_EQ(text(log), c.text) << c.offset << " " << c.value;
    }
    for (const Case& c : halcyrCases) {
        const clsLog* log = changed(c.firmware, c.type, halcyrLog(false), c.offset, c.value);
        ASSERT_NE(log, nullptr);
        EXPECT_EQ(text(log), c.text) << c.type << " " << c.offset << " " << c.value;
    }
}

TEST_F(BinaryLogsTest, WhatALogHasNotIsLeftOut) {
    const clsLog* log = changed(230, 0, brevikLog(false), 0x4C, std::int32_t{0});
    ASSERT_NE(log, nullptr);
    EXPECT_EQ(rowText(*log, 1), "28/02/2019 23:30:00 60.13 0 62 0 64 0 66 67 68 69 70 0 0");
    EXPECT_EQ(log->TimeWeightB(), "");
    EXPECT_EQ(log->PeakCumB.Value() + log->LeqCumB.Value(), 0);

    log = changed(230, 0, brevikLog(false), 0x50, std::int32_t{0});
    ASSERT_NE(log, nullptr);
    EXPECT_EQ(log->LogIntervals.Item(1).LnA(3, 0).Value() + log->LnCumA(3, 0).Value(), 0);
    EXPECT_TRUE(log->LogIntervals.Columns().levels(lnQuantity(3), 0).empty());

    log = changed(230, 0, brevikLog(false), 0x20, std::array<char, 6>{});
    ASSERT_NE(log, nullptr);
    EXPECT_EQ(log->Name, "00:00:00 00/00/0000");
    EXPECT_FALSE(log->StartDate.IsDate());
    EXPECT_EQ(log->LogIntervals.Item(2).StartTime.hh_mm_ss(), "01:00:00");

    log = changed(230, 0, brevikLog(false), 0, std::int32_t{80}); // an empty block
    ASSERT_NE(log, nullptr);
    EXPECT_EQ(log->LogIntervals.Count(), 0);
    EXPECT_EQ(log->LeqCumA(0).Value(), 0);
}

TEST_F(BinaryLogsTest, LevelsAreReadToTwoDecimals) {
    const auto level = [&](double value) {
        clsLog log(session);
        Record row(88);
        row.at(0x00, value);
        decodeBlock(log, std::string(row) + std::string(128, '\0'), kBrevikEarlyLayout);
        return log.LogIntervals.Item(1).LeqA(0).Value();
    };
    EXPECT_EQ(level(61.234), 61.23F);
    EXPECT_EQ(level(61.235), 61.24F);
    EXPECT_EQ(level(1.005), 1.01F); // just below the half as a double
    EXPECT_EQ(level(-61.125), -61.13F);
    EXPECT_EQ(level(0.004), 0);
    EXPECT_EQ(level(1e30), 1e30F);
    EXPECT_EQ(level(std::numeric_limits<double>::quiet_NaN()), 0);
    EXPECT_EQ(level(std::numeric_limits<double>::infinity()), 0);
    EXPECT_THROW(level(1e300), RuntimeError);
}

TEST_F(BinaryLogsTest, AChunkHoldsUpTo255Bytes) {
    const auto questions = [&](const BinaryLog& log) {
        comm.Sent.clear();
        EXPECT_NE(download(230, 0, log), nullptr);
        std::vector<std::string> asked;
        std::copy_if(comm.Sent.begin(), comm.Sent.end(), std::back_inserter(asked),
                     [](const std::string& sent) { return sent.starts_with(bytesOf("020408")); });
        return asked;
    };
    BinaryLog log = brevikLog(false);
    EXPECT_EQ(questions(log),
              (std::vector{bytesOf("020408 00000000 50000000 03"), bytesOf("020408 00000000 4F010000 03")}));
    // 175 rows and the summary fill 72 chunks to the last byte.
    const std::string row = log.Block.substr(0, 104);
    for (int i = 2; i < 175; ++i)
        log.Block.insert(0, row);
    const std::string entry = Record(4).at(0, static_cast<std::int32_t>(80 + log.Block.size()));
    log.Entry.replace(0, 4, entry);
    EXPECT_EQ(questions(log).size(), 72U);
}

TEST_F(BinaryLogsTest, BrokenLogsAreRefusedWhole) {
    const auto good = brevikLog(false);
    for (const std::int32_t size :
         {-1, 0, 79, 81, 80 + 159, 80 + 161, 80 + 160 + 103, std::numeric_limits<std::int32_t>::min()}) {
        EXPECT_EQ(changed(230, 0, good, 0, size), nullptr) << size;
        EXPECT_EQ(shown(), session.LoadText(Text::ErrorDownloading)) << size;
    }
    EXPECT_EQ(changed(230, 0, good, 0x1C, std::int32_t{-60}), nullptr);   // interval
    EXPECT_EQ(changed(230, 0, good, 0x38, std::int32_t{70000}), nullptr); // criterion
    EXPECT_FALSE(data.hasLogs());
}

// As memory that was never written gives it, or a meter that marks what it has not measured.
TEST_F(BinaryLogsTest, AStampOrADoseThatIsNoneCostsNoLog) {
    const std::array<unsigned char, 6> unwritten{0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF};
    const clsLog* log = changed(230, 0, brevikLog(false), 0x26, unwritten);
    ASSERT_NE(log, nullptr);
    EXPECT_EQ(log->CalibDate.Format() + log->CalibTime.hh_mm_ss(), "00:00:00");
    EXPECT_EQ(log->LogIntervals.Count(), 2);
    constexpr std::size_t kDose = 160 - 0x10; // from the end of the summary
    const double dose = -5;
    BinaryLog negative = brevikLog(false);
    negative.Block.replace(negative.Block.size() - kDose, sizeof dose, reinterpret_cast<const char*>(&dose),
                           sizeof dose);
    log = download(230, 0, negative);
    ASSERT_NE(log, nullptr);
    EXPECT_EQ(log->DoseETCumA.Value(), -5);
}

TEST_F(BinaryLogsTest, WhatIsAnnouncedIsNotBelieved) {
    // A directory of 2 billion logs, and a block of 2 GB: both are read until the line stops, and Cancel ends that.
    const milliseconds patience = std::chrono::seconds(30);
    user.Cancels = [&] { return time.Now > patience; };
    SampleInstrument instrument = brevik();
    instrument.Answers[bytesOf("02020003")] = bytesOf("616263 FFFFFF7F 00");
    EXPECT_EQ(download(instrument), nullptr);
    EXPECT_EQ(shown(), session.LoadText(Text::DownloadAborted));

    time.Now = milliseconds(0);
    BinaryLog log = brevikLog(false);
    constexpr std::int32_t kTwoGigabytes = 80 + 160 + 104 * 20'000'000;
    EXPECT_EQ(changed(230, 0, log, 0, kTwoGigabytes), nullptr);
    EXPECT_EQ(shown(), session.LoadText(Text::DownloadAborted));
    EXPECT_FALSE(comm.IsOpen());

    // None, and fewer than none.
    time.Now = milliseconds(0);
    for (const char* const count : {"616263 00000000 00", "616263 FFFFFFFF 00"}) {
        instrument.Answers[bytesOf("02020003")] = bytesOf(count);
        EXPECT_EQ(download(instrument), nullptr);
        EXPECT_TRUE(user.Lists.back().Rows.empty());
        EXPECT_EQ(shown(), session.LoadText(Text::NoLogsOnInstrument));
    }
}

} // namespace
} // namespace kestrane

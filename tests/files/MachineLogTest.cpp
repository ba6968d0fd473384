#include "files/MachineLog.h"

#include "TestSession.h"
#include "files/XmlWriter.h"

#include <gtest/gtest.h>

#include <algorithm>

namespace kestrane {
namespace {

// "first,second,...," of numbers that tell where they stood.
std::string numbers(double first, int count) {
    std::string text;
    for (int i = 0; i < count; ++i)
        text += std::to_string(first + i).substr(0, 4) + ",";
    return text;
}

std::string header(const std::string& mode, const std::string& channelB, const std::string& interval = "1.5,1") {
    return "Corvane 5 [C5T],C50331,04/11/2018,07/03/2019,23:28:00,85,5," + mode + ",Slow,A," + channelB +
           ",Fast,C,70.25," + interval + ",ON,10,20,50,80,90,95,99,28/02/2020,23:59:00,\r\n";
}

const std::string kBroadbandRows =
    "23:59:00,61.5,51.5,71.5,91.5,1.25,60.1,80.1,62.1,62.2,70,69,68,67,66,65,64,63.5,53.5,73.5,93.5,0,\r\n"
    "00:00:30,62.5,,72.5,92.5,1.5,60.2,80.2,62.3,62.4,60,59,58,57,56,55,54,64.5,54.5,74.5,94.5,1,\r\n";
const std::string kBroadbandEnd = "stoplog,1,29/02/2020,00:02:00,62.1,51.5,72.5,92.5,"
                                  "11,12,81,82,83,84,85,76,75,74,73,72,71,70.5,\r\n";
const std::string kBroadband = header("SLM", "ON") + kBroadbandRows + kBroadbandEnd;

struct ReadText : TestSession {
    clsFile file;
    std::string message;
    bool isRead;

    explicit ReadText(std::string_view text, const std::string& name = "C:\\logs\\press.LOG", Locale locale = {}) :
        TestSession(std::move(locale)), file(session, name) {
        isRead = ReadMachineLog(file, text, message);
    }

    clsLog& log(LogMode mode = modeBroadband) { return *file.InstrumentDatas.at(0)->logsOf(mode).at(0); }
};

TEST(MachineLog, ABroadbandLogWithBothChannels) {
    ReadText read(kBroadband);
    ASSERT_TRUE(read.isRead) << read.message;
    const clsInsData& data = *read.file.InstrumentDatas.at(0);
    EXPECT_EQ(data.InsName() + '|' + data.InsSerial, "Corvane 5 [C5T]|C50331");
    clsLog& log = read.log();
    EXPECT_EQ(log.Name + '|' + log.InsName, "press|Corvane 5 [C5T]");
    EXPECT_EQ(log.FactoryCalibDate.Format() + log.CalibDate.Format() + log.CalibTime.hh_mm_ss(),
              "04/11/201807/03/201923:28:00");
    EXPECT_EQ(log.StartDate.Format() + log.StartTime.hh_mm_ss() + log.EndDate.Format() + log.EndTime.hh_mm_ss(),
              "28/02/202023:59:0029/02/202000:02:00");
    EXPECT_EQ(log.Criterion, 85);
    EXPECT_EQ(log.Exchange, 5);
    EXPECT_EQ(log.TimeWeightA() + log.FreqWeightA() + log.TimeWeightB() + log.FreqWeightB(), "SlowAFastC");
    EXPECT_EQ(log.Threshold, "70.2") << "to tenths, halves to even";
    EXPECT_EQ(log.Interval, 90);
    EXPECT_TRUE(log.IsChannelBOn && log.IsLnNumbersOn && log.IsLoggingOverLoaded);
    EXPECT_EQ(log.LnNumberA(1) * 1000 + log.LnNumberA(7), 10099);

    EXPECT_EQ(log.LeqCumA(0).Value(), 62.1F);
    EXPECT_EQ(log.LminCumA(0).Value(), 51.5F);
    EXPECT_EQ(log.LmaxCumA(0).CalcValue(), 72.5F);
    EXPECT_EQ(log.PeakCumA.Value(), 92.5F);
    const clsValue* const closing[] = {&log.DoseETCumA,   &log.DoseMTCumA,  &log.LepdETCumA, &log.LepdMTCumA,
                                       &log.SELCumA,      &log.Ltm3CumA,    &log.Ltm5CumA,   &log.LnCumA(1, 0),
                                       &log.LnCumA(2, 0), &log.LnCumA(7, 0)};
    const float expected[] = {11, 12, 81, 82, 83, 84, 85, 76, 75, 70.5F};
    for (std::size_t i = 0; i < std::size(closing); ++i)
        EXPECT_EQ(closing[i]->Value(), expected[i]) << i;

    ASSERT_EQ(log.LogIntervals.Count(), 2);
    const clsLogInterval first = log.LogIntervals.Item(1);
    const clsLogInterval second = log.LogIntervals.Item(2);
    EXPECT_EQ(first.StartDate.Format() + first.StartTime.hh_mm_ss(), "28/02/202023:59:00");
    EXPECT_EQ(second.StartDate.Format() + second.StartTime.hh_mm_ss(), "29/02/202000:00:30");
    EXPECT_FALSE(first.OverloadedA);
    EXPECT_TRUE(second.OverloadedA);
    EXPECT_EQ(second.LminA(0).Value(), 0) << "an empty field is a figure that is not there";
    const clsValue figures[] = {first.LeqA(0),   first.LminA(0), first.LmaxA(0), first.PeakA, first.DoseA,
                                first.LepdA,     first.SELA,     first.Ltm3A,    first.Ltm5A, first.LnA(1, 0),
                                first.LnA(7, 0), first.LeqB,     first.LminB,    first.LmaxB, first.PeakB};
    const float row[] = {61.5F, 51.5F, 71.5F, 91.5F, 1.25F, 60.1F, 80.1F, 62.1F,
                         62.2F, 70,    64,    63.5F, 53.5F, 73.5F, 93.5F};
    for (std::size_t i = 0; i < std::size(row); ++i)
        EXPECT_EQ(figures[i].Value(), row[i]) << i;
}

TEST(MachineLog, BandsFollowTheirOverallFigure) {
    struct Case {
        const char* word;
        LogMode mode;
        int bands;
        const char* lastBand;
    };

    for (const Case& c : {Case{"FULL", modeFullOctave, 12, "16k"}, Case{"THIRD", modeThirdOctave, 34, "20k"}}) {
        for (const bool hasB : {false, true}) {
            std::string text = header(c.word, hasB ? "ON" : "OFF");
            for (const char* time : {"23:59:00", "23:59:30"}) {
                text += std::string(time) + "," + numbers(10, c.bands) + numbers(50, c.bands) + numbers(100, c.bands) +
                        "140.5," + (hasB ? "71,72,73,74," : "") + "1,\r\n";
            }
            text += "stoplog,0,01/03/2020,00:00:00," + numbers(11, c.bands) + numbers(51, c.bands) +
                    numbers(101, c.bands) + "141.5,";
            ReadText read(text);
            ASSERT_TRUE(read.isRead) << c.word << read.message;
            const clsLog& log = read.log(c.mode);
            EXPECT_EQ(log.LeqCumA(0).Value(), 11);
            EXPECT_EQ(log.LmaxCumA(c.lastBand).Value(), 101 + c.bands - 1);
            EXPECT_EQ(log.PeakCumA.Value(), 141.5F);
            EXPECT_EQ(log.IsChannelBOn, hasB);
            ASSERT_EQ(log.LogIntervals.Count(), 2);
            const clsLogInterval row = log.LogIntervals.Item(2);
            EXPECT_EQ(row.LeqA(c.lastBand).Value(), 10 + c.bands - 1);
            EXPECT_EQ(row.LminA("31.5").Value(), 50 + row.e("31.5"));
            EXPECT_EQ(row.LmaxA(0).Value(), 100);
            EXPECT_EQ(row.PeakA.Value(), 140.5F);
            EXPECT_EQ(row.PeakB.Value(), hasB ? 74 : 0);
            EXPECT_TRUE(row.OverloadedA);
        }
    }
}

TEST(MachineLog, TheIntervalHasAUnit) {
    const std::pair<const char*, int> cases[] = {{"10,0", 10}, {"0.5,1", 30}, {"15,1", 900}, {"2,2", 7200},
                                                 {"1,3", -1},  {"1,", -1},    {",0", -1},    {"x,0", -1},
                                                 {"-1,0", -1}, {"1e9,2", -1}, {"1.25,0", 1}, {" 5 ,0", 5}};
    for (const auto& [fields, seconds] : cases) {
        ReadText read(header("SLM", "ON", fields) + kBroadbandRows + kBroadbandEnd);
        EXPECT_EQ(read.isRead ? read.log().Interval : -1, seconds) << fields;
    }
}

TEST(MachineLog, DatesStandInTheUsersNotation) {
    std::string text = kBroadband;
    std::replace(text.begin(), text.end(), '/', '.');
    ReadText read(text, "a.log", {",", "."});
    ASSERT_TRUE(read.isRead) << read.message;
    EXPECT_EQ(read.log().FactoryCalibDate.Format() + read.log().EndDate.Format(), "04/11/201829/02/2020");
    EXPECT_EQ(ReadText(text).log().EndDate.Format(), "");
}

TEST(MachineLog, LineEndsAreSeparatorsOnly) {
    std::string text;
    for (const char c : kBroadband) {
        if (c != '\r' && c != '\n') text += c;
        if (c == ',') text += "\r\n\n";
    }
    ReadText read(text);
    ReadText same(kBroadband);
    ASSERT_TRUE(read.isRead) << read.message;
    EXPECT_EQ(DocumentText(read.file, true), DocumentText(same.file, true));
}

TEST(MachineLog, TheLogIsNamedAfterItsFile) {
    for (const auto& [name, logName] : {std::pair("a.log", "a"),
                                        {"/home/x/A b.Log", "A b"},
                                        {".log", ""},
                                        {"a.log.txt", "a.log.txt"},
                                        {"M0001", "M0001"}}) {
        EXPECT_EQ(ReadText(kBroadband, name).log().Name, logName);
    }
    ReadText old("Gr\xF6\xDF"
                 "e" +
                 kBroadband);
    EXPECT_EQ(old.file.InstrumentDatas.at(0)->InsName(), "Gr\xC3\xB6\xC3\x9F"
                                                         "eCorvane 5 [C5T]");
}

TEST(MachineLog, StandsAnyCutAndAnyWrongByte) {
    const std::size_t whole = kBroadband.rfind(',') + 1;
    for (std::size_t size = 0; size < kBroadband.size(); ++size) {
        ReadText read(kBroadband.substr(0, size));
        EXPECT_EQ(read.isRead, size >= whole) << size;
        EXPECT_EQ(read.file.InstrumentDatas.size(), read.isRead ? 1U : 0U);
        EXPECT_EQ(read.message.empty(), read.isRead);
    }
    for (std::size_t at = 0; at < kBroadband.size(); ++at) {
        for (const char c : {',', '9', '-', 'E', '\xFF', '\0'}) {
            std::string spoilt = kBroadband;
            spoilt[at] = c;
            ReadText read(spoilt);
            EXPECT_EQ(read.message.empty(), read.isRead) << at << c;
            if (read.isRead) DocumentText(read.file, true);
        }
    }
}

TEST(MachineLog, RefusesWithAReason) {
    const std::string unable = "\r\n\r\nUnable to open C:\\logs\\press.LOG";
    const auto pastEnd = [&](const std::string& place) { return "62: Input past end of file" + place + unable; };
    const auto mismatch = [&](const std::string& place) { return "13: Type mismatch" + place + unable; };
    const auto overflow = [&](const std::string& place) { return "6: Overflow" + place + unable; };
    const std::string notOurs = "File not compatible with Kestrane";
    const auto replaced = [](const std::string& from, const std::string& to) {
        return std::string(kBroadband).replace(kBroadband.find(from), from.size(), to);
    };
    const std::pair<std::string, std::string> cases[] = {
        {"", notOurs},
        {std::string(1000, ','), notOurs},
        {std::string(1 << 20, 'x'), notOurs},
        {replaced("SLM", "slm"), notOurs},
        {"Corvane,1,,,,85,5,SLM,", pastEnd("")},
        {header("SLM", "ON"), pastEnd(", line 1 \"23:59:00\"")},
        {header("SLM", "ON") + kBroadbandRows, pastEnd(", line 3 \"1\"")},
        {replaced(",85,", ",x,"), mismatch(", line 1 \"x\"")},
        {replaced(",85,", ",40000,"), overflow(", line 1 \"40000\"")},
        {replaced(",1.5,1,", ",1.5,9,"), mismatch(", line 1 \"1.5,9\"")}, // no unit
        {replaced(",62.1,", ",OVER,"), mismatch(", line 2 \"OVER\"")},
        {replaced(",62.1,", ",1e99,"), overflow(", line 2 \"1e99\"")},
        {replaced("stoplog", "endlog"), mismatch(", line 4 \"endlog\"")},
        {replaced("23:59:00,61.5", "23:59,61.5"), mismatch(", line 2 \"23:59\"")},
        {replaced("23:59:00,61.5", "24:00:00,61.5"), mismatch(", line 2 \"24:00:00\"")},
        {replaced(",93.5,0", ",93.5,0,0"), mismatch(", line 2 \"0\"")}, // a field too many shifts what follows
        {replaced("23:59:00,61.5,", "23:59:00,"), mismatch(", line 3 \"62.5\"")}, // one too few, too
        {replaced(",ON,Fast", ",OFF,Fast"), mismatch(", line 2 \"53.5\"")}, // rows of two channels in a log of one
    };
    for (const auto& [text, message] : cases) {
        ReadText read(text);
        EXPECT_FALSE(read.isRead) << text.substr(0, 200);
        EXPECT_EQ(read.message, message) << text.substr(0, 200);
        EXPECT_TRUE(read.file.InstrumentDatas.empty());
    }
}

} // namespace
} // namespace kestrane

#include "files/SoundFiles.h"

#include "ErrorOf.h"
#include "TestSession.h"
#include "files/DelimitedText.h"

#include <gtest/gtest.h>

#include <map>
#include <vector>

namespace kestrane {
namespace {

TEST(DelimitedText, TokensEndAtCommasAndLineEnds) {
    const std::pair<std::string, std::vector<std::string>> cases[] = {
        {"", {}},
        {"a,b", {"a", "b"}},
        {"a,\r\nb\nc\rd", {"a", "", "b", "c", "d"}},
        {"a,b,", {"a", "b"}},
        {",\r\n", {"", ""}},
        {"\r\n\r\n", {"", ""}},
        {"\"a,b\",c", {"a,b", "c"}},
        {" \"a,b\" x,\"\",c", {"a,b", "", "c"}},
        {"\"a\r\nb,c", {"a", "b", "c"}},
        {" a b ,c\"d,e\"", {" a b ", "c\"d", "e\""}},
        {"a,b\x1A,c", {"a", "b"}},
    };
    for (const auto& [text, expected] : cases) {
        DelimitedText tokens(text);
        const std::size_t most = tokens.leftAtMost();
        std::vector<std::string> found;
        while (const auto token = tokens.next())
            found.emplace_back(*token);
        EXPECT_EQ(found, expected) << text;
        EXPECT_LE(found.size(), most) << text;
    }
}

TEST(DelimitedText, KnowsATokenThatIsCutOff) {
    for (const auto& [text, isCut] :
         {std::pair("a", true), {"a\n", false}, {"a,", false}, {"\"a", true}, {"\"a\"", false}, {"\"a\nb", false}}) {
        DelimitedText tokens(text);
        tokens.next();
        EXPECT_EQ(tokens.isCut(), isCut) << text;
    }
}

struct ReadSound : TestSession {
    clsFile file;
    std::int64_t error;

    explicit ReadSound(const std::string& text, void (*read)(clsFile&, std::string_view) = ReadSoundCsv) :
        file(session, "C:\\data\\old one.csv") {
        error = errorOf([&] { read(file, text); });
    }

    clsInsData& data() { return *file.InstrumentDatas.at(0); }

    clsLog& log(LogMode mode = modeBroadband) { return *data().logsOf(mode).at(0); }
};

// A report by its tokens: those told stand at their numbers, the others are empty.
std::string report(std::map<int, std::string> tokens, int count, const std::string& rows = {}) {
    std::string text;
    for (int number = 1; number <= count; ++number)
        text += "\"" + tokens[number] + (number % 2 != 0 && number < count ? "\"," : "\"\r\n");
    return text + rows;
}

using Tokens = std::map<int, std::string>;

Tokens atWork() {
    return {{3, " TR32230417 "},
            {5, "Exchange : 5"},
            {7, "Criterion:85"},
            {11, "Edger, late"},
            {13, "Mode: ind"},
            {17, "Start: 23:58 on 28/02/2004"},
            {19, "End  : 00:01 on 29/02/2004"},
            {23, "Frequency weighting:A"},
            {25, "Time weighting:Slow"},
            {29, "Leq: 90.1"},
            {31, "LAE:125.7 dB(A)"},
            {33, "Dose: 325.5% of it"},
            {37, "Lmax:97.2"},
            {40, "Peak:114.5"}};
}

Tokens environmental() {
    Tokens tokens = atWork();
    for (const auto& [number, text] : Tokens{
             {13, "Mode: ENV"}, {33, "L10:61.1"}, {37, "L90:41.9"}, {39, "LAmax:71.2"}, {40, ""}, {43, "LAmin:31.3"}})
        tokens[number] = text;
    return tokens;
}

TEST(SoundCsv, AReportOfNoiseAtWork) {
    ReadSound read(report(atWork(), 51, "23:58,91.5,1,93.5,2,3,\r\n\"23h59\",92.5,1,,2,3,\r\n0000,93.5,1,94.5,2,3"));
    ASSERT_EQ(read.error, 0);
    EXPECT_EQ(read.data().NameX + '|' + read.data().InsName() + '|' + read.data().InsSerial, "TR322|TR322|TR322");
    clsLog& log = read.log();
    EXPECT_EQ(log.Name + '|' + log.InsName + '|' + log.LocationType() + '|' + log.FreqWeightA() + log.TimeWeightA(),
              "Edger, late|TR322|IND|ASlow");
    EXPECT_EQ(log.Criterion * 10 + log.Exchange, 855);
    EXPECT_FALSE(log.IsLnNumbersOn);
    EXPECT_EQ(log.StartDate.Format() + log.StartTime.hh_mm_ss() + log.EndDate.Format() + log.EndTime.hh_mm_ss(),
              "28/02/200423:58:0029/02/200400:01:00");
    EXPECT_EQ(log.LeqCumA(0).Value(), 90.1F);
    EXPECT_EQ(log.SELCumA.Value(), 125.7F);
    EXPECT_EQ(log.DoseETCumA.Value(), 325.5F);
    EXPECT_EQ(log.LmaxCumA(0).Value(), 97.2F);
    EXPECT_EQ(log.PeakCumA.Value(), 114.5F);
    EXPECT_EQ(log.Interval, 60);
    ASSERT_EQ(log.LogIntervals.Count(), 3);
    const clsLogInterval second = log.LogIntervals.Item(2);
    const clsLogInterval third = log.LogIntervals.Item(3);
    EXPECT_EQ(log.LogIntervals.Item(1).LmaxA(0).Value(), 93.5F);
    EXPECT_EQ(second.StartTime.hh_mm_ss() + third.StartDate.Format() + third.StartTime.hh_mm_ss(),
              "23:59:0029/02/200400:00:00");
    EXPECT_EQ(second.LeqA(0).Value() + second.LmaxA(0).Value(), 92.5F);
    EXPECT_EQ(third.LeqA(0).Value() + third.LmaxA(0).Value(), 93.5F + 94.5F);

    Tokens tokens = atWork();
    tokens[33] = "Dose: 325.5";
    tokens[3] = "1234567";
    ReadSound odd(report(tokens, 40));
    ASSERT_EQ(odd.error, 0) << "rows and headings need not be there";
    EXPECT_EQ(odd.log().DoseETCumA.Value(), 0) << "no %";
    EXPECT_EQ(odd.data().NameX + '|' + odd.data().InsSerial, "12|12");
}

TEST(SoundCsv, AnEnvironmentalReport) {
    ReadSound read(report(environmental(), 55, "23:58,51.5,1,53.5,2,3,4,\n23:59,52.5,1,54.5,2,3,4,\n\n"));
    ASSERT_EQ(read.error, 0);
    clsLog& log = read.log();
    EXPECT_EQ(log.LocationType(), "ENV");
    EXPECT_TRUE(log.IsLnNumbersOn);
    EXPECT_EQ(log.LnNumberA(1) * 1000 + log.LnNumberA(2), 10090);
    EXPECT_EQ(log.LnCumA(1, 0).Value(), 61.1F);
    EXPECT_EQ(log.LnCumA(2, 0).Value(), 41.9F);
    EXPECT_EQ(log.LmaxCumA(0).Value(), 71.2F);
    EXPECT_EQ(log.LminCumA(0).Value(), 31.3F);
    EXPECT_EQ(log.PeakCumA.Value() + log.DoseETCumA.Value(), 0);
    ASSERT_EQ(log.LogIntervals.Count(), 2);
    EXPECT_EQ(log.LogIntervals.Item(2).LeqA(0).Value() + log.LogIntervals.Item(2).LmaxA(0).Value(), 52.5F + 54.5F);
}

// Stamps of whole minutes: the seconds are rebuilt from the length of the run.
TEST(SoundCsv, RowsShorterThanAMinute) {
    Tokens tokens = atWork();
    tokens[19] = "End  : 23:59 on 28/02/2004";
    std::string rows;
    for (int i = 0; i < 6; ++i)
        rows += "23:58,80,1,81,2,3,\r\n";
    ReadSound read(report(tokens, 51, rows));
    EXPECT_EQ(read.log().Interval, 10);
    EXPECT_EQ(read.log().LogIntervals.Item(6).StartTime.hh_mm_ss(), "23:58:50");
}

TEST(SoundCsv, OctavesByTheirLabels) {
    const std::string head = "x\r\n\"Instrument: TR352 no 7\"\r\n\"Time and date not set\"\r\n";
    const std::string low = "31.5 Hz:51.5,63:52,125Hz: 53 dB,250:54,500:55\r\n";
    const std::string high = "1k:56,2 kHz:57,4k:58,8k:59,16k:60.5\r\n";
    ReadSound read(head + low + high);
    ASSERT_EQ(read.error, 0);
    EXPECT_EQ(read.data().InsName(), "TR352");
    clsLog& log = read.log(modeFullOctave);
    EXPECT_EQ(log.Name, "old one");
    EXPECT_EQ(log.LeqCumA("31.5").Value(), 51.5F);
    EXPECT_EQ(log.LeqCumA("125").Value() + log.LeqCumA("2k").Value(), 53 + 57);
    EXPECT_EQ(log.LeqCumA("16k").Value(), 60.5F);
    EXPECT_EQ(log.LeqCumA("16").Value(), 0);
    EXPECT_EQ(log.StartDate.Format(), "");
    ReadSound named("Meter TR326 B\n" + high + low + "Mode:  OCT");
    ASSERT_EQ(named.error, 0) << "the labels tell, not the order";
    EXPECT_EQ(named.data().InsName(), "TR326");
    for (const std::string& text :
         {head + low, head + low + high.substr(0, high.size() - 3), head + low + low + high, head + low + "1k:" + high,
          head + low + "1k:x", head + std::string(8, ',') + low + high, head + low + high + ",,,,12:00,51,52"})
        EXPECT_NE(ReadSound(text).error, 0) << text;
}

TEST(SoundCsv, DeclinesWhatHasNoPlace) {
    const std::string row = "23:58,91.5,1,93.5,2,3,\r\n";
    const auto with = [](int number, const std::string& token) {
        Tokens tokens = atWork();
        tokens[number] = token;
        return report(tokens, 51, "23:58,91.5,1,93.5,2,3,\r\n");
    };
    ASSERT_EQ(ReadSound(with(1, "")).error, 0);
    const std::pair<std::string, std::int64_t> cases[] = {
        {"", kErrorApplication},
        {std::string(1000, ','), kErrorApplication},
        {std::string(1 << 20, 'x'), kErrorApplication},
        {"no kind, TR322 or such", kErrorApplication},
        {report(atWork(), 39), 62},
        {report(environmental(), 42), 62},
        {report(atWork(), 39) + "Peak:11", 62}, // of 114.5
        {with(5, "Exchange : x"), kErrorTypeMismatch},
        {with(5, ""), kErrorTypeMismatch},
        {with(7, "Criterion: 5"), kErrorTypeMismatch},
        {with(11, std::string(2000, 'x')), kErrorTypeMismatch},
        {with(17, "Start: 24:00 on 28/02/2004"), kErrorTypeMismatch},
        {with(17, "Start: 23:58 on 30/02/2004"), kErrorTypeMismatch},
        {with(19, "Time and date not set"), kErrorTypeMismatch},
        {with(29, "Leq: high"), kErrorTypeMismatch},
        {with(40, "Peak:1e99"), kErrorOverflow},
        {report(atWork(), 50, row), kErrorTypeMismatch},
        {report(atWork(), 51, row + "23:59,91.5,1,93.5,2"), 62},
        {report(atWork(), 51, row + "23:59,91.5,1,x,2,3,"), kErrorTypeMismatch},
        {report(atWork(), 51, row + "end,,,,,,"), kErrorTypeMismatch},
        {report(atWork(), 51, row + "\r\n\r\n" + row), kErrorTypeMismatch},
        {"TR340\r\n12:00,85.5", kErrorTypeMismatch},
        {"<a b=\"TR340\"/>", kErrorTypeMismatch},
    };
    for (const auto& [text, error] : cases) {
        ReadSound read(text);
        EXPECT_EQ(read.error, error) << text.substr(0, 2000);
        EXPECT_TRUE(read.file.InstrumentDatas.empty());
    }
    ReadSound old("\"TR340\",\r\nTime and date not set\r\n");
    EXPECT_EQ(old.error, 0);
    EXPECT_EQ(old.data().InsName() + old.log().LocationType(), "TR340");
}

TEST(SoundFile, BandHeadingsAndTheirLevels) {
    const std::string headings = "title,31.5,63,125,250,500,1k,2k,4k,8k,16k,\r\n";
    ReadSound read(headings + "51.5,52,53,54,55,56,57,58,59,60.5,\r\n", ReadSoundFile);
    ASSERT_EQ(read.error, 0);
    clsLog& log = read.log(modeFullOctave);
    EXPECT_EQ(log.Name + read.data().NameX, "old oneold one");
    EXPECT_EQ(log.LeqCumA("31.5").Value() + log.LeqCumA("1k").Value() + log.LeqCumA("16k").Value(), 51.5F + 56 + 60.5F);
    for (const char* rest : {"", "51.5,52,53,54,55,56,57,58,59\n", "1,2,3,4,5,6,7,8,9,6", "1,2,3,4,5,6,7,8,9,10,11\n",
                             "1,2,3,4,5,6,7,8,9,x\n"})
        EXPECT_NE(ReadSound(headings + rest, ReadSoundFile).error, 0) << rest;
    EXPECT_NE(ReadSound("31.5,125,1,2", ReadSoundFile).error, 0);
}

} // namespace
} // namespace kestrane

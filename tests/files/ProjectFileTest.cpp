#include "files/ProjectFile.h"

#include "ErrorOf.h"
#include "TestSession.h"
#include "files/XmlWriter.h"

#include <gtest/gtest.h>

namespace kestrane {
namespace {

struct ReadProjectText : TestSession {
    clsFile file;
    bool isRead = false;
    std::int64_t error = 0;

    explicit ReadProjectText(std::string_view text, Locale locale = {}) :
        TestSession(std::move(locale)), file(session, "a.zdp") {
        error = errorOf([&] { isRead = ReadProject(file, text); });
    }

    clsLog& log(int mode = modeBroadband) { return *file.InstrumentDatas.at(0)->logsOf(mode).at(0); }
};

std::string project(const std::string& log) {
    return "<INSDATA><INSNAME>TR326</><LOG>" + log + "</LOG></INSDATA>";
}

TEST(ProjectFile, EveryTagOfABroadbandLog) {
    ReadProjectText read(
        "<INSDATA><NAME>Hall 2</><INSNAME>TR326 </INSNAME>\r\n<INSSERIAL>A2207</><INSTYPE>3</>\r\n"
        "<LOG><NAME>Night\xE9</><MODE>0</><LocationType>IND</><SHIFTLENGTH>7.5</><CRITERION>85</><EXCHANGE>5</>"
        "<LOGNOTE>1 < 2, </b> & 5/6</><FACTORYDATE>04/11/2002</><CALIBDATE>14/10/2003</><CALIBTIME>22:18:00</>"
        "<STARTDATE>14/10/2003</><STARTTIME>22:30:00</><ENDDATE>15/10/2003</><ENDTIME>00:30</>"
        "<ISCHANNELBON>True</><ISLNNUMBERSON>yes</><ISLOGOVERLOADED>-1</><INTERVAL> 3600</>"
        "<TIMEWEIGHTA>Slow</><FREQWEIGHTA>A</><LEQCUMA>91.1</><LMINCUMA>70.2</><LMAXCUMA>99.3</><PEAKCUMA>121.4</>"
        "<LMINCUMDATEA>14/10/2003</><LMINCUMTIMEA>22:31:01</><LMAXCUMDATEA>15/10/2003</><LMAXCUMTIMEA>00:02:02</>"
        "<PEAKCUMDATEA>16/10/2003</><PEAKCUMTIMEA>00:03:03</><DOSECUMA>11.5</><LEXCUMA>85.1</><LECUMA>129.7</>"
        "<LTM3CUMA>92.3</><LTM5CUMA>93.5</><DOSEHOURA>5.75</><PA2HA>1.5E-05</>"
        "<LNNUMBERA_1>10</><LNNUMBERA_10>99</><LNCUMA_1>94.1</><LNCUMA_10>71.9</>"
        "<TIMEWEIGHTB>Fast</><FREQWEIGHTB>LIN</><LEQCUMB>95.1</><LMINCUMB>75.2</><LMAXCUMB>103.3</><PEAKCUMB>124.4</>"
        "<DOSECUMB>21.5</><LEXCUMB>88.1</><PLEXCUMB>89.6</><LECUMB>133.7</><DOSEHOURB>10.75</><PA2HB>2.5</>"
        "</LOG></INSDATA>");
    ASSERT_TRUE(read.isRead);
    const clsInsData& data = *read.file.InstrumentDatas.at(0);
    EXPECT_EQ(data.NameX + '|' + data.InsName() + '|' + data.InsSerial, "Hall 2|TR326|A2207");
    EXPECT_EQ(data.InsType, 3);
    clsLog& log = read.log();
    EXPECT_EQ(log.Name + '|' + log.InsName + '|' + log.LocationType() + '|' + log.Note,
              "Night\u00E9|TR326|IND|1 < 2, </b> & 5/6");
    EXPECT_EQ(log.Mode(), modeBroadband);
    EXPECT_EQ(log.objLogOptions.ExposureTime, 7.5F);
    EXPECT_EQ(log.Criterion * 10 + log.Exchange, 855);
    EXPECT_EQ(log.Interval, 3600);
    EXPECT_TRUE(log.IsChannelBOn && log.IsLnNumbersOn && log.IsLoggingOverLoaded && !log.SaveDoseCalc);
    EXPECT_EQ(log.TimeWeightA() + log.FreqWeightA() + log.TimeWeightB() + log.FreqWeightB(), "SlowAFastZ");
    const std::pair<const clsDate*, const char*> dates[] = {
        {&log.FactoryCalibDate, "04/11/2002"}, {&log.CalibDate, "14/10/2003"},    {&log.StartDate, "14/10/2003"},
        {&log.EndDate, "15/10/2003"},          {&log.LminCumDateA, "14/10/2003"}, {&log.LmaxCumDateA, "15/10/2003"},
        {&log.PeakCumDateA, "16/10/2003"}};
    for (const auto& [date, text] : dates)
        EXPECT_EQ(date->Format(), text);
    const std::pair<const clsTime*, const char*> times[] = {
        {&log.CalibTime, "22:18:00"},    {&log.StartTime, "22:30:00"},    {&log.EndTime, "00:30:00"},
        {&log.LminCumTimeA, "22:31:01"}, {&log.LmaxCumTimeA, "00:02:02"}, {&log.PeakCumTimeA, "00:03:03"}};
    for (const auto& [time, text] : times)
        EXPECT_EQ(time->hh_mm_ss(), text);
    const std::pair<const clsValue*, float> figures[] = {
        {&log.LeqCumA(0), 91.1F},    {&log.LminCumA(0), 70.2F}, {&log.LmaxCumA(0), 99.3F}, {&log.PeakCumA, 121.4F},
        {&log.DoseMTCumA, 11.5F},    {&log.LepdETCumA, 85.1F},  {&log.SELCumA, 129.7F},    {&log.Ltm3CumA, 92.3F},
        {&log.Ltm5CumA, 93.5F},      {&log.DoseHourA, 5.75F},   {&log.Pa2hCumA, 1.5E-05F}, {&log.LnCumA(1, 0), 94.1F},
        {&log.LnCumA(10, 0), 71.9F}, {&log.LeqCumB, 95.1F},     {&log.LminCumB, 75.2F},    {&log.LmaxCumB, 103.3F},
        {&log.PeakCumB, 124.4F},     {&log.DoseMTCumB, 21.5F},  {&log.LepdETCumB, 88.1F},  {&log.LepdMTCumB, 89.6F},
        {&log.SELCumB, 133.7F},      {&log.DoseHourB, 10.75F},  {&log.Pa2hCumB, 2.5F}};
    for (std::size_t i = 0; i < std::size(figures); ++i)
        EXPECT_EQ(figures[i].first->Value(), figures[i].second) << i;
    EXPECT_EQ(log.LnNumberA(1) * 100 + log.LnNumberA(10), 1099);
}

TEST(ProjectFile, RowsPeaksExposureRowsAndDisplay) {
    ReadProjectText read(project(
        "<LNNUMBERA_2>90</><STARTDATE>31/12/1999</>"
        "<LOGSAMPLE><STARTDATE>31/12/1999</><STARTTIME>23:59:30</><LEQA>61.5</><LMINA>51.5</><LMAXA>71.5</>"
        "<LNA_1>70.1</><LNA_10>50.1</><PEAKA>91.5</><DOSEA>1.25</><LEXA>60.1</><LEA>80.1</><LTM3A>62.1</>"
        "<LTM5A>62.2</><PA2HA>0.25</><OVERA>1</></LOGSAMPLE>\r\n"
        "<LOGSAMPLE><STARTDATE>01/01/2000</><STARTTIME>0:0:0</><LEQB>64.5</><LMINB>54.5</><LMAXB>74.5</><PEAKB>94.5</>"
        "<OVERA>False</><OVERB>Yes</></LOGSAMPLE><PEAKSAMPLE><PEAKTIME>23:59:59</><DURATION>0.125</></PEAKSAMPLE>"
        "<DOSELOGSAMPLE><DOSECRITERION>90</><DOSEEXCHANGE>4</><DOSESAMPLEDATE>02/01/2000</>"
        "<DOSESAMPLETIME>08:15:00</><DOSENOTE>press</><DOSELEQ>93.2</><DOSEDURN>05:30:00</><DOSEINC>True</>"
        "</DOSELOGSAMPLE><DISPLAY><PLOT-LEQ-1-1>True</><PLOT-PDOSE-1-1>-1</><PLOT-NNO-1-2>Yes</><PLOT-LN1-1-1>True</>"
        "<PLOT-LN2-1-2>True</><PLOT-TWA-2-2>True</><PLOT-LMIN-1-1>no</><PLOT-LEQ-1-3>True</></DISPLAY>"));
    ASSERT_TRUE(read.isRead);
    const clsLog& log = read.log();
    ASSERT_EQ(log.LogIntervals.Count(), 2);
    const clsLogInterval first = log.LogIntervals.Item(1);
    const clsLogInterval second = log.LogIntervals.Item(2);
    EXPECT_EQ(first.StartDate.Format() + first.StartTime.hh_mm_ss() + second.StartDate.Format() +
                  second.StartTime.hh_mm_ss(),
              "31/12/199923:59:3001/01/200000:00:00");
    const clsValue figures[] = {first.LeqA(0),    first.LminA(0), first.LmaxA(0), first.LnA(1, 0),
                                first.LnA(10, 0), first.PeakA,    first.DoseA,    first.LepdA,
                                first.SELA,       first.Ltm3A,    first.Ltm5A,    first.Pa2hA,
                                second.LeqB,      second.LminB,   second.LmaxB,   second.PeakB};
    const float expected[] = {61.5F, 51.5F, 71.5F, 70.1F, 50.1F, 91.5F, 1.25F, 60.1F,
                              80.1F, 62.1F, 62.2F, 0.25F, 64.5F, 54.5F, 74.5F, 94.5F};
    for (std::size_t i = 0; i < std::size(expected); ++i)
        EXPECT_EQ(figures[i].Value(), expected[i]) << i;
    EXPECT_TRUE(first.OverloadedA && !first.OverloadedB && !second.OverloadedA && second.OverloadedB);
    EXPECT_EQ(log.Pa2hCumA.Value(), 0) << "that of a row is not the log's";

    ASSERT_EQ(log.Peaks.size(), 1U);
    EXPECT_EQ(log.Peaks[0].PeakTime.hh_mm_ss(), "23:59:59");
    EXPECT_EQ(log.Peaks[0].SampleDuration, 0.125F);
    ASSERT_EQ(log.DoseLogIntervals.size(), 1U);
    const clsDoseLogSample& sample = log.DoseLogIntervals[0];
    EXPECT_TRUE(log.SaveDoseCalc && sample.IsIncluded);
    EXPECT_EQ(sample.Criterion * 10 + sample.Exchange, 904);
    EXPECT_EQ(sample.SampleDate.Format() + sample.SampleTime.hh_mm_ss() + sample.Note + sample.Duration.hh_mm_ss(),
              "02/01/200008:15:00press05:30:00");
    EXPECT_EQ(sample.Leq.Value(), 93.2F);

    const PlotTable& shown = log.objLogOptions.IsPlotted;
    EXPECT_TRUE(shown(1, 1, eLeq) && shown(1, 1, eDoseMT) && shown(1, 2, eOverload) && shown(1, 2, eLn(2)) &&
                shown(2, 2, eTWA));
    EXPECT_FALSE(shown(1, 1, eLn(1))) << "no such Ln";
    EXPECT_FALSE(shown(1, 1, eLmin) || shown(1, 2, eLeq) || shown(1, 1, eDoseET));
    EXPECT_TRUE(ReadProjectText(project("")).log().objLogOptions.IsPlotted(1, 1, eLmin)) << "the user's own, untold";
}

TEST(ProjectFile, BandsAndRecords) {
    std::string record = "23:59:00";
    std::string tags = "<STARTTIME>23:59:30</>";
    std::string figures = "<MODE>1</>";
    const std::string names[] = {"LEQ", "LMIN", "LMAX"};
    for (int i = 0; i < 3; ++i) {
        for (int band = 0; band <= 11; ++band) {
            record += "," + std::to_string(10 + 30 * i + band);
            tags += "<" + names[i] + "A_" + std::to_string(band) + ">" + std::to_string(11 + 30 * i + band) + "</>";
            figures +=
                "<" + names[i] + "CUMA_" + std::to_string(band) + ">" + std::to_string(12 + 30 * i + band) + "</>";
        }
    }
    // A row as tags, and as the record of a machine log; without dates those follow from the start.
    ReadProjectText read(project("<STARTDATE>28/02/2000</><STARTTIME>23:59:00</><INTERVAL>30</>" + figures +
                                 "<LEQCUMA_12>1</><LOGSAMPLE>" + record + ",140.5,1</LOGSAMPLE><LOGSAMPLE>" + tags +
                                 "</LOGSAMPLE><LOGSAMPLE>" + record + ",141.5,0,</>"));
    ASSERT_TRUE(read.isRead);
    const clsLog& log = read.log(modeFullOctave);
    EXPECT_EQ(log.LeqCumA(0).Value() + log.LminCumA("16").Value() + log.LmaxCumA("16k").Value(), 12 + 43 + 83);
    ASSERT_EQ(log.LogIntervals.Count(), 3);
    const clsLogInterval rows[] = {log.LogIntervals.Item(1), log.LogIntervals.Item(2), log.LogIntervals.Item(3)};
    EXPECT_EQ(rows[0].LeqA("16k").Value() + rows[0].LmaxA(0).Value() + rows[0].PeakA.Value(), 21 + 70 + 140.5F);
    EXPECT_EQ(rows[1].LeqA("16k").Value() + rows[1].LmaxA(0).Value() + rows[1].PeakA.Value(), 22 + 71);
    EXPECT_EQ(rows[2].PeakA.Value(), 141.5F);
    EXPECT_TRUE(rows[0].OverloadedA && !rows[2].OverloadedA);
    EXPECT_EQ(rows[1].StartDate.Format() + rows[1].StartTime.hh_mm_ss(), "28/02/200023:59:30");
    EXPECT_EQ(rows[2].StartDate.Format() + rows[2].StartTime.hh_mm_ss(), "29/02/200023:59:00");
}

// Tags may stand in any order, the first of a name counts, and what lies in other blocks is not the log's.
TEST(ProjectFile, TagsAreTakenForWhatTheyAre) {
    ReadProjectText read(
        "stray <NAME>x</><INSDATA><LOG><LEQCUMA_11>71</><PEAKSAMPLE><STARTTIME>9:9:9</></PEAKSAMPLE><CRITERION></>"
        "<NAME>first</NAME><UNKNOWN><NAME>later</></UNKNOWN><EXCHANGE> </><MODE>1</></LOG>"
        "<LOG><ISCHANNELBON>0</></LOG><INSNAME>TR352</></INSDATA><INSDATA><NAME>no logs</></INSDATA>");
    ASSERT_TRUE(read.isRead);
    ASSERT_EQ(read.file.InstrumentDatas.size(), 1U);
    EXPECT_EQ(read.file.InstrumentDatas[0]->NameX, "");
    const clsLog& log = read.log(modeFullOctave);
    EXPECT_EQ(log.LeqCumA("16k").Value(), 71);
    EXPECT_EQ(log.Name + log.InsName + log.StartTime.hh_mm_ss() + read.log().InsName, "firstTR35200:00:00TR352");
    EXPECT_EQ(log.Criterion * 10 + log.Exchange, 903) << "an empty tag leaves what a new log has";
    EXPECT_FALSE(read.log().IsChannelBOn);
    Locale german{",", "."};
    ReadProjectText dotted(project("<STARTDATE>14.10.2003</><PEAKCUMA>121.4</>"), german);
    EXPECT_EQ(dotted.log().StartDate.Format(), "14/10/2003");
    EXPECT_EQ(dotted.log().PeakCumA.Value(), 121.4F) << "figures have a point in any locale";
}

TEST(ProjectFile, DeclinesWhatItCannotRead) {
    const std::pair<std::string, std::int64_t> cases[] = {
        {"", 0},
        {"<INSDATA", 0},
        {"INSDATA><LOG></LOG></INSDATA>", 0},
        {"<INSDATA><LOG></LOG>", kErrorTypeMismatch},
        {"<INSDATA><LOG></INSDATA>", kErrorTypeMismatch},
        {project("<NAME>a"), kErrorTypeMismatch},
        {project("<LOGSAMPLE><LEQA>1</>"), kErrorTypeMismatch},
        {project("<DISPLAY><PLOT-LEQ-1-1>True</></>"), kErrorTypeMismatch},
        {project("<MODE>3</>"), kErrorApplication},
        {project("<CRITERION>x</>"), kErrorTypeMismatch},
        {project("<CRITERION>40000</>"), kErrorOverflow},
        {project("<PEAKCUMA>1e99</>"), kErrorOverflow},
        {project("<PEAKCUMA>121,4</>"), kErrorTypeMismatch},
        {project("<ISCHANNELBON>Vrai</>"), kErrorTypeMismatch},
        {project("<LOGSAMPLE>23:59:00,1,2</LOGSAMPLE>"), 62},
        {project("<LOGSAMPLE>23:59:00" + std::string(40, ',') + "</LOGSAMPLE>"), kErrorTypeMismatch},
    };
    for (const auto& [text, error] : cases) {
        ReadProjectText read(text);
        EXPECT_FALSE(read.isRead) << text;
        EXPECT_EQ(read.error, error) << text;
    }
}

} // namespace
} // namespace kestrane

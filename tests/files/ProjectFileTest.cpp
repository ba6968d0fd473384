#include "files/ProjectFile.h"

#include "ErrorOf.h"
#include "TestSession.h"
#include "files/XmlWriter.h"
#include "resources/Texts.h"

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

    clsLog& log(LogMode mode = modeBroadband) { return *file.InstrumentDatas.at(0)->logsOf(mode).at(0); }

    // The document's text between two places, with its slashes plain.
    std::string written(std::string_view from, std::string_view to) {
        const std::string text = ReplaceText(DocumentText(file, true), "&#47;", "/");
        const std::size_t begin = text.find(from);
        return text.substr(begin, text.find(to, begin) - begin);
    }
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
    EXPECT_EQ(read.written("<instrument-detail", "<disp>"),
              "<instrument-detail name=\"Hall 2\" instrument-name=\"TR326\" instrument-serial=\"A2207\" "
              "instrument-type=\"3\"/>"
              "<logs><log name=\"Night&#233;\"><sl>7.5</sl><cri>85</cri><ex>5</ex><lcn>IND</lcn>"
              "<note>1 &lt; 2, &lt;/b&gt; &amp; 5/6</note><fdt>04/11/2002</fdt><cdt>14/10/2003</cdt><ctm>22:18:00</ctm>"
              "<sdt>14/10/2003</sdt><stm>22:30:00</stm><edt>15/10/2003</edt><etm>00:30:00</etm><ol>-1</ol>"
              "<interval>3600</interval><ca><tw>Slow</tw><fw>A</fw><leq><f>91.1</f></leq><lmin><f>70.2</f></lmin>"
              "<lmax><f>99.3</f></lmax><peak>121.4</peak><lmindt>14/10/2003</lmindt><lmintm>22:31:01</lmintm>"
              "<lmaxdt>15/10/2003</lmaxdt><lmaxtm>00:02:02</lmaxtm><peakdt>16/10/2003</peakdt><peaktm>00:03:03</peaktm>"
              "<dose>11.5</dose><lex>85.1</lex><le>129.7</le><ltm3>92.3</ltm3><ltm5>93.5</ltm5><dh>5.75</dh>"
              "<pa2h>1.5E-05</pa2h><ln1 no=\"10\"><f>94.1</f></ln1><ln10 no=\"99\"><f>71.9</f></ln10></ca>"
              "<cb><tw>Fast</tw><fw>Z</fw><leq>95.1</leq><lmin>75.2</lmin><lmax>103.3</lmax><peak>124.4</peak>"
              "<dose>21.5</dose><lex>88.1</lex><plex>89.6</plex><le>133.7</le><dh>10.75</dh><pa2h>2.5</pa2h></cb>");
    EXPECT_EQ(read.log().InsName, "TR326");
}

TEST(ProjectFile, RowsPeaksExposureRowsAndDisplay) {
    ReadProjectText read(project(
        "<ISCHANNELBON>1</><LNNUMBERA_2>90</><STARTDATE>31/12/1999</>"
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
    const std::string noTimes = "<lmintm>00:00:00</lmintm><lmaxtm>00:00:00</lmaxtm><peaktm>00:00:00</peaktm>";
    EXPECT_EQ(
        read.written("<intvls>", "</log>"),
        "<intvls><intvl><date>31/12/1999</date><time>23:59:30</time><ca><leq><f>61.5</f></leq><lmin><f>51.5</f></lmin>"
        "<lmax><f>71.5</f></lmax><peak>91.5</peak>" +
            noTimes +
            "<dose>1.25</dose><lex>60.1</lex><le>80.1</le><ltm3>62.1</ltm3><ltm5>62.2</ltm5><pa2h>0.25</pa2h>"
            "<ol>-1</ol><ln1><f>70.1</f></ln1><ln10><f>50.1</f></ln10></ca><cb></cb></intvl><intvl>"
            "<date>01/01/2000</date><ca>" +
            noTimes +
            "</ca><cb><leq>64.5</leq><lmin>54.5</lmin><lmax>74.5</lmax><peak>94.5</peak><ol>-1</ol></cb></intvl>"
            "</intvls><peak-intvls><peak-intvl><peaktm>23:59:59</peaktm><duration>0.125</duration></peak-intvl>"
            "</peak-intvls><dl-intvls><dl-intvl><cri>90</cri><ex>4</ex><date>02/01/2000</date><time>08:15:00</time>"
            "<note>press</note><leq>93.2</leq><duration>05:30:00</duration><is-included>-1</is-included></dl-intvl>"
            "</dl-intvls><disp><leq-1-1>-1</leq-1-1><pdose-1-1>-1</pdose-1-1><overload-1-2>-1</overload-1-2>"
            "<ln2-1-2>-1</ln2-1-2><twa-2-2>-1</twa-2-2></disp>");
    EXPECT_EQ(read.log().Pa2hCumA.Value(), 0) << "that of a row is not the log's";
    EXPECT_TRUE(ReadProjectText(project("")).log().objLogOptions.IsPlotted(kChannelA, kCumulative, eLmin))
        << "the user's own, untold";
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

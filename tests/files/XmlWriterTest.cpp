#include "files/XmlWriter.h"
#include "TestSession.h"

#include <gtest/gtest.h>

namespace kestrane {
namespace {

// A log without a name and with nothing shown.
struct XmlWriterTest : testing::Test, TestSession {
    clsLog log{session};

    XmlWriterTest() { log.objLogOptions.IsPlotted = PlotTable(); }

    static std::string textOf(const clsLog& log, bool blnIncludeIntervals) {
        clsStringBuffer out;
        SetTagData(log, blnIncludeIntervals, out);
        return out.getString();
    }

    clsLogInterval row() const {
        clsLogInterval row;
        row.Initialize(log.objLogShared);
        return row;
    }
};

void setDate(clsDate& date, const char* text) {
    date.setDate(text, {});
}

void setTime(clsTime& time, const char* text) {
    time.setTime(text, {});
}

TEST_F(XmlWriterTest, DefaultsTakeNoSpace) {
    const clsFile file(session, "a.xml");
    EXPECT_EQ(DocumentText(file, true), "<?xml version=\"1.0\"?><instruments></instruments>");
    clsInsData data(session);
    clsStringBuffer out;
    SetTagData(data, true, out);
    EXPECT_EQ(out.getString(), "<instrument-data><instrument-detail name=\"\" instrument-name=\"\" "
                               "instrument-serial=\"\" instrument-type=\"0\"/></instrument-data>");
    log.Criterion = 0;
    log.objLogOptions.ExposureTime = 0;
    EXPECT_EQ(textOf(log, true),
              "<log><ex>3</ex><ctm>00:00:00</ctm><stm>00:00:00</stm><etm>00:00:00</etm><ca><lmintm>00:00:00</lmintm>"
              "<lmaxtm>00:00:00</lmaxtm><peaktm>00:00:00</peaktm></ca><disp></disp></log>");
}

TEST_F(XmlWriterTest, WritesAnInstrumentWithItsLogsByMode) {
    clsInsData data(session);
    data.NameX = "Hall \"A\"";
    data.InsName("TR324");
    data.InsSerial = "12<3";
    data.InsType = -3;
    data.FirmwareVersion = 1.2F;
    for (const LogMode mode : {modeThirdOctave, modeBroadband, modeFullOctave}) {
        auto item = std::make_unique<clsLog>(session);
        item->Mode(mode);
        item->Name = std::to_string(mode);
        data.append(std::move(item), 0);
    }
    clsStringBuffer out;
    SetTagData(data, false, out);
    const std::string text = out.getString();
    EXPECT_TRUE(text.starts_with("<instrument-data><instrument-detail name=\"Hall &amp;quot;A&amp;quot;\" "
                                 "instrument-name=\"TR324\" instrument-serial=\"12&lt;3\" instrument-type=\"-3\" "
                                 "instrument-firmware=\"1.2\"/><logs><log name=\"0\"><sl>"))
        << text;
    EXPECT_LT(text.find("<log name=\"1\"><md>1</md><sl>"), text.find("<log name=\"2\"><md>2</md><sl>"));
}

TEST_F(XmlWriterTest, WritesTheFullForm) {
    log.Name = "5/6 & more";
    log.Mode(modeFullOctave);
    log.LocationType("ENV"); // of broadband logs only
    log.FullyCalculated = true;
    log.Note = "a|b\r\nc";
    log.Region = "UK"; // of the short form only
    setDate(log.FactoryCalibDate, "1/2/2023");
    setDate(log.CalibDate, "3/4/2024");
    setTime(log.CalibTime, "8:09:10");
    setDate(log.StartDate, "26/11/2024");
    setTime(log.StartTime, "23:00:00");
    setDate(log.EndDate, "27/11/2024");
    setTime(log.EndTime, "1:00:60"); // no time of day
    log.MeasurementTimeFromInstrument = 7200;
    log.IsLoggingOverLoaded = true;
    log.Interval = 60;
    log.Threshold = "70.0";
    log.Range = "40-110";
    log.TimeWeightA("fast");
    log.FreqWeightA("a");
    log.LeqCumA(0).CalcValue(61.5F);
    log.LeqCumA(2).CalcValue(50);
    log.LeqCumA(11).CalcValue(-3.25F);
    log.LmaxCumA(7).Value(80);
    log.LminCumA(0).Value(40);
    log.LminCumA(0).CalcValue(0);
    log.PeakCumA.Value(100);
    setDate(log.LmaxCumDateA, "26/11/2024");
    setTime(log.LmaxCumTimeA, "23:30:00");
    float next = 0;
    for (clsValue* value : {&log.DoseMTCumA, &log.DoseETCumA, &log.LepdETCumA, &log.LepdMTCumA, &log.SELCumA,
                            &log.Ltm3CumA, &log.Ltm5CumA, &log.DoseHourA, &log.Pa2hCumA, &log.LAvgCumA, &log.TWACumA})
        value->Value(++next);
    log.IsLnNumbersOn = true;
    log.LnNumberA(1, 10);
    log.LnCumA(1, 0).Value(65);
    log.LnCumA(1, 7).Value(55);
    log.LnNumberA(2, 50);       // without a figure
    log.LnCumA(3, 0).Value(45); // not in use
    log.LnNumberA(10, 99);
    log.LnCumA(10, 11).Value(35);
    log.IsChannelBOn = true;
    log.TimeWeightB("slow");
    log.FreqWeightB("c");
    for (clsValue* value : {&log.LeqCumB, &log.LminCumB, &log.LmaxCumB, &log.PeakCumB, &log.DoseMTCumB, &log.DoseETCumB,
                            &log.LepdETCumB, &log.LepdMTCumB, &log.SELCumB, &log.DoseHourB, &log.Pa2hCumB})
        value->Value(++next);
    const std::string expected =
        "<log name=\"5&#47;6 &amp; more\"><md>1</md><calc>-1</calc><sl>8</sl><cri>90</cri><ex>3</ex>"
        "<note>a&#124;b c</note><fdt>01&#47;02&#47;2023</fdt><cdt>03&#47;04&#47;2024</cdt><ctm>08:09:10</ctm>"
        "<sdt>26&#47;11&#47;2024</sdt><stm>23:00:00</stm><edt>27&#47;11&#47;2024</edt><mti>7200</mti><ol>-1</ol>"
        "<interval>60</interval><th>70.0</th><rng>40-110</rng><ca><tw>Fast</tw><fw>A</fw><leq><f>61.5</f>"
        "<f31.5>50</f31.5><f16K>-3.25</f16K></leq><lmax><f1K>80</f1K></lmax><peak>100</peak><lmintm>00:00:00</lmintm>"
        "<lmaxdt>26&#47;11&#47;2024</lmaxdt><lmaxtm>23:30:00</lmaxtm><peaktm>00:00:00</peaktm><dose>1</dose>"
        "<edose>2</edose><lex>3</lex><mlex>4</mlex><le>5</le><ltm3>6</ltm3><ltm5>7</ltm5><dh>8</dh><pa2h>9</pa2h>"
        "<ln1 no=\"10\"><f>65</f><f1K>55</f1K></ln1><ln10 no=\"99\"><f16K>35</f16K></ln10></ca><cb><tw>Slow</tw>"
        "<fw>C</fw><leq>12</leq><lmin>13</lmin><lmax>14</lmax><peak>15</peak><dose>16</dose><edose>17</edose>"
        "<lex>18</lex><plex>19</plex><le>20</le><dh>21</dh><pa2h>22</pa2h></cb><disp></disp></log>";
    EXPECT_EQ(textOf(log, true), expected);
    log.InsName = "Brevik SE";
    log.FirmwareVersion = 1.05F;
    EXPECT_EQ(textOf(log, true), expected) << "the short form begins past this firmware";
}

TEST_F(XmlWriterTest, WritesTheShortForm) {
    log.InsName = "Auravox Essential S";
    log.FirmwareVersion = 1.06F;
    log.LocationType("IND");
    log.Region = "UK";
    log.Range = "60-130";
    log.LeqCumA(0).Value(82.5F);
    log.LmaxCumA(0).Value(89);
    log.PeakCumA.Value(100);
    log.LAvgCumA.Value(82.25F);
    log.SELCumA.Value(118.5F);
    log.LepdETCumA.Value(0);
    log.DoseMTCumA.Value(77);
    log.DoseHourA.Value(7.75F);
    log.IsLnNumbersOn = true;
    log.LnNumberA(1, 10);
    log.LnCumA(1, 0).Value(85.5F);
    log.IsChannelBOn = true;
    log.LeqCumB.Value(86.5F);
    log.PeakCumB.Value(104);
    log.Pa2hCumB.Value(1);
    const std::string head = "<log><sl>8</sl><cri>90</cri><ex>3</ex><lcn>IND</lcn><ctm>00:00:00</ctm>"
                             "<stm>00:00:00</stm><etm>00:00:00</etm><region>UK</region><rng>60-130</rng><ca>"
                             "<leq><f>82.5</f></leq><lmax><f>89</f></lmax><lavg>82.25</lavg><le>118.5</le>"
                             "<dose>7.75</dose><dh>7.75</dh><pa2h>0</pa2h><ln1 no=\"10\"><f>85.5</f></ln1></ca>"
                             "<cb><leq>86.5</leq><peak>104</peak></cb>";
    EXPECT_EQ(textOf(log, true), head + "<disp></disp></log>");
    log.LogIntervals.Add(row()); // rows take the full form
    EXPECT_EQ(textOf(log, true), head + "<intvls><intvl><ca><lmintm>00:00:00</lmintm><lmaxtm>00:00:00</lmaxtm>"
                                        "<peaktm>00:00:00</peaktm></ca><cb></cb></intvl></intvls><disp></disp></log>");
}

TEST_F(XmlWriterTest, WritesRowsInEitherForm) {
    log.Mode(modeFullOctave);
    clsLogInterval full = row();
    setDate(full.StartDate, "26/11/2024");
    setTime(full.StartTime, "23:59:00");
    full.LeqA(0).Value(61);
    full.LeqA(0).CalcValue(60.5F);
    full.LminA(11).Value(40);
    full.LnA(1, 6).Value(65);
    full.LnA(10, 0).Value(30);
    setTime(full.LmaxTimeA, "23:59:30");
    setTime(full.PeakTimeA, "100:00:00");
    full.OverloadedA = full.OverloadedB = true;
    float next = 0;
    for (const RowMember& m : kRowMembers)
        (full.*m.member).Value(++next);
    log.LogIntervals.Add(full);
    clsLogInterval midnight = row();
    setDate(midnight.StartDate, "27/11/2024");
    log.LogIntervals.Add(midnight);
    log.LogIntervals.Add(row()); // without a date, behind rows with one
    const std::string channelA =
        "<intvl><date>26&#47;11&#47;2024</date><time>23:59:00</time><ca><leq><f>60.5</f></leq><lmin><f16K>40</f16K>"
        "</lmin><peak>1</peak><lmintm>00:00:00</lmintm><lmaxtm>23:59:30</lmaxtm><peaktm>100:00:00</peaktm>"
        "<dose>2</dose><lex>3</lex><le>4</le><ltm3>5</ltm3><ltm5>6</ltm5><pa2h>7</pa2h><ol>-1</ol>"
        "<ln1><f500>65</f500></ln1><ln10><f>30</f></ln10></ca>";
    const std::string channelB = "<cb><leq>8</leq><lmin>9</lmin><lmax>10</lmax><peak>11</peak><dose>14</dose>"
                                 "<lex>13</lex><le>12</le><pa2h>15</pa2h><ol>-1</ol></cb>";
    const std::string nothing = "<lmintm>00:00:00</lmintm><lmaxtm>00:00:00</lmaxtm><peaktm>00:00:00</peaktm>";
    const auto rows = [&] {
        const std::string text = textOf(log, true);
        const std::size_t begin = text.find("<intvls>") + 8;
        return text.substr(begin, text.find("</intvls>") - begin);
    };
    EXPECT_EQ(rows(), channelA + "</intvl><intvl><date>27&#47;11&#47;2024</date><ca>" + nothing +
                          "</ca></intvl><intvl><ca>" + nothing + "</ca></intvl>");
    log.IsChannelBOn = true;
    EXPECT_EQ(rows(), channelA + channelB + "</intvl><intvl><date>27&#47;11&#47;2024</date><ca>" + nothing +
                          "</ca><cb></cb></intvl><intvl><ca>" + nothing + "</ca><cb></cb></intvl>");
    EXPECT_EQ(textOf(log, false).find("intvl"), std::string::npos);

    const auto rowText = [](const clsLogInterval& item, bool bChannelBOn, const Locale& locale) {
        clsStringBuffer out;
        SetTagData(item, bChannelBOn, locale, out);
        return out.getString();
    };
    EXPECT_EQ(rowText(full, true, {}), channelA + channelB + "</intvl>");
    full.InsName = "Brevik E";
    full.FirmwareVersion = 1.1F;
    const std::string shortA = "<intvl><date>26&#47;11&#47;2024</date><time>23:59:00</time><ca><leq>60,5</leq>"
                               "<lmin>0</lmin><lmax>0</lmax><lex>3</lex><le>4</le><ol>-1</ol><ln1><f>0</f></ln1>"
                               "<ln2><f>0</f></ln2><ln3><f>0</f></ln3></ca>";
    EXPECT_EQ(rowText(full, false, {",", "."}), shortA + "</intvl>");
    EXPECT_EQ(rowText(full, true, {",", "."}),
              shortA + "<cb><leq>8</leq><lmin>9</lmin><lmax>10</lmax><peak>11</peak><ol>-1</ol></cb></intvl>");
}

TEST_F(XmlWriterTest, WritesSelectionPeaksExposureRowsAndDisplay) {
    log.LogIntervals.CutIntervals = {"1~2", "a<b&c]]>"};
    log.Peaks.resize(2);
    setTime(log.Peaks[0].PeakTime, "1:02:03");
    log.Peaks[0].SampleDuration = 1.5F;
    log.DoseLogIntervals.resize(2);
    clsDoseLogSample& sample = log.DoseLogIntervals[0];
    sample.Criterion = 85;
    sample.Exchange = 5;
    setDate(sample.SampleDate, "26/11/2024");
    setTime(sample.SampleTime, "8:00:00");
    sample.Note = "Press";
    sample.Leq.Value(80);
    sample.Leq.CalcValue(81);
    setTime(sample.Duration, "100:00:00");
    sample.IsIncluded = true;
    log.objLogOptions.IsPlotted.set(kChannelA, kInterval, eLeq, true);
    for (const Parameter parameter : {ePa2Hr, eOverload, eLepdMT, eDoseMT, eLn10, eTWA})
        log.objLogOptions.IsPlotted.set(kChannelB, kCumulative, parameter, true);
    const std::string peaks = "<peak-intvls><peak-intvl><peaktm>01:02:03</peaktm><duration>1.5</duration>"
                              "</peak-intvl><peak-intvl><peaktm>00:00:00</peaktm></peak-intvl></peak-intvls>";
    const std::string exposure =
        "<dl-intvls><dl-intvl><cri>85</cri><ex>5</ex><date>26&#47;11&#47;2024</date><time>08:00:00</time>"
        "<note>Press</note><leq>80</leq><duration>100:00:00</duration><is-included>-1</is-included></dl-intvl>"
        "<dl-intvl><duration>00:00:00</duration></dl-intvl></dl-intvls>";
    const std::string display = "<disp><leq-1-2>-1</leq-1-2><pdose-2-1>-1</pdose-2-1><overload-2-1>-1</overload-2-1>"
                                "<pa2h-2-1>-1</pa2h-2-1><ln10-2-1>-1</ln10-2-1><twa-2-1>-1</twa-2-1></disp></log>";
    const auto behindA = [&](bool blnIncludeIntervals) {
        const std::string text = textOf(log, blnIncludeIntervals);
        return text.substr(
            text.find("</ca>", text.find("</intvls>") == std::string::npos ? 0 : text.find("</intvls>") - 30));
    };
    EXPECT_EQ(behindA(true), "</ca>" + peaks + display) << "a selection needs rows, exposure rows their flag";
    log.SaveDoseCalc = true;
    EXPECT_EQ(behindA(false), "</ca>" + exposure + display);
    log.LogIntervals.setArraySize(1);
    const std::string cut = "<cutintvl>1~2</cutintvl><cutintvl>a&lt;b&amp;c]]&gt;</cutintvl></cutintvls>";
    EXPECT_EQ(behindA(true), "</ca></intvl></intvls><cutintvls incl=\"false\">" + cut + peaks + exposure + display);
    log.LogIntervals.IntervalsToBeIncluded = true;
    EXPECT_EQ(behindA(true), "</ca></intvl></intvls><cutintvls incl=\"true\">" + cut + peaks + exposure + display);
}

TEST(EscapeText, KeepsTheFilePlain) {
    const std::pair<std::string, const char*> cases[] = {{"a'b\"c", "a&amp;#39;b&amp;quot;c"},
                                                         {"<5/6>|&", "&lt;5&#47;6&gt;&#124;&amp;"},
                                                         {"a\r\nb\nc\rd\te", "a b c d\te"},
                                                         {"Lärm €😀", "L&#228;rm &#8364;&#128512;"},
                                                         {std::string("\0\x01\x1F\x7F", 4), "   &#127;"},
                                                         {"\xEF\xBF\xBE\xEF\xBF\xBF", "  "}};
    for (const auto& [text, escaped] : cases)
        EXPECT_EQ(escapeText(text), escaped);
}

} // namespace
} // namespace kestrane

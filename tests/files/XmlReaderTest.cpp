#include "files/OpenedFile.h"
#include "model/LogParameters.h"

#include <gtest/gtest.h>

namespace kestrane {
namespace {

std::string noteOf(const std::string& content) {
    OpenedFile opened(dataFile("<log>" + content + "</log>"));
    return opened.isOpen ? opened.log().Note : "declined: " + opened.message;
}

TEST(XmlReader, ATextIsTheFirstThatStandsAnywhereBelow) {
    const std::pair<const char*, const char*> cases[] = {
        {"", ""},
        {"<note>a</note><note>b</note>", "a"},
        {"<x><note>a</note></x><note>b</note>", "a"},
        {"<dl-intvls><dl-intvl><note>row</note></dl-intvl></dl-intvls>", "row"},
        {"<intvls><intvl><note>row</note></intvl></intvls><note>b</note>", "row"},
        {"<intvls><intvl><ca/></intvl><y><intvl><note>deep</note></intvl></y></intvls><note>b</note>", "deep"},
        {"<note x=\"1\">a</note>", ""},
        {"<note x=\"1\">a</note><note>b</note>", "b"},
        {"<note\n>a</note\t>", "a"},
        {"<note/><note>b</note>", "b"},
        {"<note></note><note>b</note>", ""},
        {"<note>a<b>c</b><d/><e f='\"'></e></note>", "a<b>c</b><d/><e f=\"\"\"></e>"},
        {"<note>a<note>b</note>c</note>", "a<note>b"},
        {"<note>a<x>b</x></note>", "a<x>b</x>"},
        {"<!--<note>hidden</note>--><note>a</note>", "hidden"},
        {"<![CDATA[<note>a]]><note>b</note>", "a]]><note>b"},
        {"<intvls><intvl><!--<note>hidden</note>--></intvl></intvls><note>a</note>", "hidden"},
        {"<note>a<![CDATA[<b>]]></note>", "a<![CDATA[<b>]]>"},
        {"<note>a\r\n<![CDATA[b\r\nc\rd]]></note>", "a\n<![CDATA[b\nc\nd]]>"},
        {"<x y=\"&lt;note&gt;c&lt;/note&gt;\"/><note>a</note>", "a"},
    };
    for (const auto& [content, note] : cases)
        EXPECT_EQ(noteOf(content), note) << content;

    OpenedFile opened(dataFile("<log><intvls><intvl><ca><ol>-1</ol></ca></intvl></intvls>"
                               "<dl-intvls><dl-intvl><cri>80</cri></dl-intvl></dl-intvls></log>"));
    EXPECT_TRUE(opened.log().IsLoggingOverLoaded) << "the mark of a row, for want of one of the log";
    EXPECT_EQ(opened.log().Criterion, 80);
}

TEST(XmlReader, LocationsHaveACodeOrTheWordsOfTheUser) {
    const std::pair<std::string, const char*> cases[] = {
        {"IND", "IND"}, {"Noise At Work", "IND"}, {"Environmental", "ENV"}, {"All", "All"}, {"x", "x"}};
    for (const auto& [text, code] : cases) {
        OpenedFile opened(dataFile("<log><lcn>" + text + "</lcn></log>"));
        EXPECT_EQ(opened.log().LocationType(), code) << text;
    }
}

TEST(XmlReader, TextsAreUnescapedOnce) {
    const std::pair<const char*, const char*> cases[] = {{"5&#47;6 &lt;&gt;&amp;&#124;", "5/6 <>&|"},
                                                         {"it&amp;#39;s", "it&#39;s"},
                                                         {"&amp;quot;", "&quot;"},
                                                         {"it's &quot;&apos;", "it's \"'"},
                                                         {"&amp;lt;", "<"},
                                                         {"&amp;amp;#47;", "&amp;#47;"},
                                                         {"L&#228;rm &#x20AC;", "Lärm €"},
                                                         {"a\r\nb\rc", "a\nb\nc"},
                                                         {" a ", " a "}};
    for (const auto& [content, note] : cases)
        EXPECT_EQ(noteOf("<note>" + std::string(content) + "</note>"), note);

    OpenedFile opened(dataFile("<log name=\"d&amp;#39;Or &amp;lt;\"/>",
                               "name='d&amp;#39;Or' instrument-name=' TR 324 ' instrument-serial='a&#9;b\tc' "
                               "instrument-type='12x' instrument-firmware='1.25'"));
    const clsInsData& data = *opened.file.InstrumentDatas.at(0);
    EXPECT_EQ(opened.log().Name, "d'Or <");
    EXPECT_EQ(data.NameX, "d&#39;Or");
    EXPECT_EQ(data.InsName(), "TR 324");
    EXPECT_EQ(data.InsSerial, "a\tb c");
    EXPECT_EQ(data.InsType, 0);
    EXPECT_EQ(data.FirmwareVersion, 1.25F);
    EXPECT_EQ(opened.log().InsName, "TR 324");
}

TEST(XmlReader, WhatIsAbsentKeepsItsDefault) {
    OpenedFile absent(dataFile("<log/>"));
    EXPECT_EQ(absent.log().Criterion, 90);
    EXPECT_EQ(absent.log().Exchange, 3);
    EXPECT_EQ(absent.log().objLogOptions.ExposureTime, 8);
    EXPECT_TRUE(absent.log().StartDate == clsDate());
    EXPECT_TRUE(absent.log().objLogOptions.IsPlotted(kChannelA, kCumulative, eLeq)) << "without display options";
    OpenedFile noNumbers(
        dataFile("<log><md>x</md><cri/><cri>abc</cri><ex></ex><sl>1,5</sl><mti>0x10</mti>"
                 "<fdt>99/99/9999</fdt><cdt>1/2/3/4</cdt><ctm>ten</ctm><ca><peak>inf</peak></ca></log>"));
    ASSERT_TRUE(noNumbers.isOpen);
    const clsLog& log = noNumbers.log();
    EXPECT_EQ(log.Mode() + log.Criterion + log.Exchange + log.MeasurementTimeFromInstrument, 0);
    EXPECT_EQ(log.objLogOptions.ExposureTime + log.PeakCumA.Value(), 0);
    EXPECT_EQ(log.FactoryCalibDate.Day + log.FactoryCalibDate.Year, 0);
    EXPECT_TRUE(log.CalibDate == clsDate() && log.CalibTime == clsTime());
}

TEST(XmlReader, ReadsWhatIsPlotted) {
    OpenedFile opened(dataFile("<log><md>1</md><ca><ln1 no=\"10\"><f>65</f></ln1></ca><cb><leq>60</leq></cb>"
                               "<disp><leq-1-2>-1</leq-1-2><ln1-1-1>-1</ln1-1-1><ln2-1-1>-1</ln2-1-1></disp></log>"));
    const clsLog& log = opened.log(modeFullOctave);
    const clsLogOptions& options = log.objLogOptions;
    EXPECT_TRUE(options.IsPlotted(kChannelA, kInterval, eLeq) && !options.IsPlotted(kChannelA, kCumulative, eLeq));
    EXPECT_TRUE(options.IsPlotted(kChannelA, kCumulative, eLn1) && !options.IsPlotted(kChannelA, kCumulative, eLn(2)));
    EXPECT_TRUE(options.Plottable(kChannelB, kInterval, eLn1) && !options.Plottable(kChannelA, kCumulative, eLn(2)));
}

TEST(XmlReader, ReadsPeaksSelectionAndExposureRows) {
    OpenedFile opened(dataFile(
        "<log><region>UK</region><cutintvls incl=\"True\"><cutintvl>1~2</cutintvl><cutintvl>3&#126;4</cutintvl>"
        "</cutintvls><peak-intvls><peak-intvl><peaktm>01:02:03</peaktm><duration>1.5</duration></peak-intvl>"
        "<peak-intvl peak-time=\"4:05:06\" duration=\"2.5\"/></peak-intvls><dl-intvls><dl-intvl><cri>85</cri>"
        "<date>26/11/2024</date><time>08:00:00</time><leq>80</leq><duration>1:00:00</duration>"
        "<is-included>-1</is-included></dl-intvl></dl-intvls></log>"));
    const clsLog& log = opened.log();
    EXPECT_EQ(log.Region, "");
    EXPECT_TRUE(log.LogIntervals.IntervalsToBeIncluded);
    EXPECT_EQ(log.LogIntervals.CutIntervals, (std::vector<std::string>{"1~2", "3~4"}));
    ASSERT_EQ(log.Peaks.size(), 2U);
    EXPECT_TRUE(log.Peaks[0].PeakTime == clsTime() && log.Peaks[0].SampleDuration == 0);
    EXPECT_EQ(log.Peaks[1].PeakTime.hh_mm_ss(), "04:05:06");
    EXPECT_EQ(log.Peaks[1].SampleDuration, 2.5F);
    ASSERT_EQ(log.DoseLogIntervals.size(), 1U);
    EXPECT_TRUE(log.SaveDoseCalc && log.DoseLogIntervals[0].IsIncluded);
    EXPECT_EQ(log.DoseLogIntervals[0].SampleDate.Format(), "26/11/2024");
    EXPECT_EQ(log.DoseLogIntervals[0].Duration.getTimeAsHours(), 1);
}

TEST(XmlReader, FindsTheCollectionsUnderEitherRoot) {
    const std::string log = "<logs><log name='a'/></logs>";
    const std::pair<std::string, std::size_t> cases[] = {
        {"<instruments><instrument-data>" + log +
             "</instrument-data><instrument-data/><instrument-data><logs/>"
             "</instrument-data><x/><instrument-data>" +
             log + "</instrument-data></instruments>",
         2},
        {"<instrument-data>" + log + "</instrument-data>", 1},
        {"<other><instrument-data>" + log + "</instrument-data></other>", 0},
        {"<instruments><x><instrument-data>" + log + "</instrument-data></x></instruments>", 0},
        {"<instruments/>", 0}};
    for (const auto& [text, collections] : cases) {
        OpenedFile opened(text);
        EXPECT_TRUE(opened.isOpen);
        EXPECT_EQ(opened.file.InstrumentDatas.size(), collections) << text;
    }
    OpenedFile opened(dataFile("<log name='a'><md>2</md></log><log name='b'/><log name='c'><md>2</md></log>"));
    EXPECT_EQ(opened.file.InstrumentDatas.at(0)->ThirdOctaves.at(1)->Name, "c");
    EXPECT_EQ(opened.log().Name, "b");
}

TEST(XmlReader, ReadsEveryEncodingThatCanBeTold) {
    const auto nameOf = [](const std::string& declaration, const std::string& name) {
        OpenedFile opened(declaration + "<instrument-data><logs><log name='" + name + "'/></logs></instrument-data>");
        return opened.isOpen ? opened.log().Name : opened.message;
    };
    EXPECT_EQ(nameOf("", "L\xE4rm \x80"), "Lärm €") << "bytes that are no UTF-8";
    EXPECT_EQ(nameOf("", "Lärm €"), "Lärm €");
    EXPECT_EQ(nameOf("\xEF\xBB\xBF", "Lärm €"), "Lärm €");
    EXPECT_EQ(nameOf("<?xml version='1.0' encoding='Windows-1252'?>", "Lärm"), "LÃ¤rm");
    EXPECT_EQ(nameOf("<?xml version='1.0' encoding='UTF-8'?>", "L\xE4rm"), "The document is not valid UTF-8.");
    EXPECT_EQ(nameOf("<?xml version='1.0' encoding='EBCDIC'?>", "x"), "The encoding 'ebcdic' is not supported.");
}

TEST(XmlReader, LevelsMayHaveTheLocalesSeparator) {
    const std::string text = dataFile("<log><sl>7,5</sl><cri>85</cri><ca><lavg>82,25</lavg><dose>7.5</dose>"
                                      "<dh>1.2,3</dh><pa2h>1,2,3</pa2h></ca></log>");
    OpenedFile german(text, "a.xml", {",", "."});
    EXPECT_EQ(german.log().objLogOptions.ExposureTime, 7.5F);
    EXPECT_EQ(german.log().Criterion, 85);
    EXPECT_EQ(german.log().LAvgCumA.Value(), 82.25F);
    EXPECT_EQ(german.log().DoseMTCumA.Value(), 7.5F);
    EXPECT_EQ(german.log().DoseHourA.Value() + german.log().Pa2hCumA.Value(), 0);
    OpenedFile english(text);
    EXPECT_EQ(english.log().LAvgCumA.Value(), 0);
}

} // namespace
} // namespace kestrane

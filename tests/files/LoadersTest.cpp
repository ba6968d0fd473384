#include "ErrorOf.h"
#include "files/OpenedFile.h"
#include "files/XmlWriter.h"

#include <gtest/gtest.h>

#include <cerrno>

namespace kestrane {
namespace {

TEST(Loaders, TheExtensionChoosesWhoseMessageIsShown) {
    const TemporaryFolder folder;
    const std::string csv = ": No kind of sound file";
    const std::string sound = ": Input past end of file, line 1 \"no data file of any kind\"";
    const std::pair<const char*, std::string> older[] = {{"a.csv", csv},   {"a.zdf", csv},   {"A.ZDO", csv},
                                                         {"a.zd2", sound}, {"a.zd4", sound}, {"a.zdp", ""}};
    for (const auto& [name, reason] : older) {
        OpenedFile opened("no data file of any kind", name);
        EXPECT_FALSE(opened.isOpen) << name;
        EXPECT_EQ(opened.message, "Unable to open " + opened.file.FileName + reason);
    }
    for (const char* name : {"a.log", "a.LOG"})
        EXPECT_EQ(OpenedFile("no data file of any kind", name).message, "File not compatible with Kestrane");
    for (const char* name : {"a.xml", "a.txt", "xml", "a"}) {
        OpenedFile opened("no data file of any kind", name);
        EXPECT_EQ(opened.message,
                  "The document is not well formed: text in front of the root element (line 1, column 1).");
    }
}

TEST(Loaders, ALaterLoaderCountsOnlyWhenItBringsData) {
    for (const char* name : {"a.xml", "a.XML", "a.csv", "a.zd4", "a.log", "a.zdp", "a"}) {
        OpenedFile data(dataFile("<log/>"), name);
        EXPECT_TRUE(data.isOpen) << name;
        EXPECT_EQ(data.file.InstrumentDatas.size(), 1U);
        EXPECT_FALSE(data.file.IsOldStyle());
        const bool isXmlFirst = std::string_view(name).find('.') == std::string_view::npos ||
                                std::string_view(name).ends_with("xml") || std::string_view(name).ends_with("XML");
        for (const char* empty : {"<?xml version=\"1.0\"?><instruments></instruments>", "<a/>"}) {
            OpenedFile opened(empty, name);
            EXPECT_EQ(opened.isOpen, isXmlFirst) << name;
            EXPECT_TRUE(opened.file.InstrumentDatas.empty());
        }
    }
}

TEST(Loaders, DeclineWhatIsNotWellFormed) {
    std::string laughs = "<!DOCTYPE a [<!ENTITY a \"ha\">";
    for (char c = 'b'; c <= 'k'; ++c)
        laughs +=
            std::string("<!ENTITY ") + c + " \"&" + static_cast<char>(c - 1) + ";&" + static_cast<char>(c - 1) + ";\">";
    const std::string cases[] = {"",
                                 " ",
                                 std::string(1000, '\0'),
                                 "<instruments>",
                                 "<instruments/><instruments/>",
                                 "<instruments/>text",
                                 "<log name='a' name='b'/>",
                                 "<log name=a/>",
                                 "<log name='<'/>",
                                 "<a>&#0;</a>",
                                 "<a b='&#xFFFF;'/>",
                                 "<a>&unknown;</a>",
                                 "<a>a & b</a>",
                                 "<a>\x01</a>",
                                 "<a>]]></a>",
                                 "<a><b></a></b>",
                                 "<a><!-- -- --></a>",
                                 "<a><?xml version='1.0'?></a>",
                                 " <?xml version='1.0'?><a/>",
                                 "<?xml version='1.0' standalone='maybe'?><a/>",
                                 "\xEF\xBB\xBF<?xml version='1.0' encoding='1x'?><a/>",
                                 laughs + "]><a>&k;</a>",
                                 "<!DOCTYPE a SYSTEM 'file:///etc/passwd'><a/>"};
    for (const std::string& text : cases) {
        OpenedFile opened(text);
        EXPECT_FALSE(opened.isOpen) << text;
        EXPECT_TRUE(opened.message.starts_with("The document is not well formed: ")) << text << opened.message;
        EXPECT_TRUE(opened.file.InstrumentDatas.empty());
    }
    const std::string deep = [] {
        std::string text;
        for (int i = 0; i < 200000; ++i)
            text += "<a>";
        for (int i = 0; i < 200000; ++i)
            text += "</a>";
        return text;
    }();
    EXPECT_TRUE(OpenedFile(deep).isOpen);
    EXPECT_TRUE(OpenedFile(dataFile("<log>" + deep + "<note>a</note></log>")).log().Note == "a");
    EXPECT_FALSE(OpenedFile("<instruments>" + deep).isOpen);
}

TEST(Loaders, DeclineFiguresPastTheirTypes) {
    for (const char* content :
         {"<cri>99999</cri>", "<ca><peak>1e999</peak></ca>", "<mti>3000000000</mti>", "<md>3</md>", "<md>99999</md>",
          "<md>-1</md>", "<calc>1e999</calc>", "<sdt>1/1/99999</sdt>", "<stm>10:20</stm>", "<stm>1e9999:0:0</stm>",
          "<ca><ln1 no='99999'/></ca>", "<dl-intvls><dl-intvl><duration>1:2</duration></dl-intvl></dl-intvls>"}) {
        OpenedFile opened(dataFile("<log/><log>" + std::string(content) + "</log>"));
        EXPECT_FALSE(opened.isOpen) << content;
        EXPECT_TRUE(opened.message.starts_with("Unable to open " + opened.file.FileName + ": ")) << opened.message;
        EXPECT_TRUE(opened.file.InstrumentDatas.empty()) << "nothing of a file that failed";
    }
}

TEST(Loaders, TellWhatWasNotWhatItShouldBeAndWhere) {
    const std::pair<std::string, std::string> cases[] = {
        {"<stm>10:20</stm>", "Type mismatch, <stm> \"10:20\""},
        {"<ca><peak>1e999</peak></ca>", "Overflow, <peak> \"1e999\""},
        {"<md>3</md>", "Invalid mode, <md> \"3\""},
        {"<cri>" + std::string(50, '9') + "</cri>", "Overflow, <cri> \"" + std::string(40, '9') + "...\""},
        {"<ca><ln2 no='99999'/></ca>", "Overflow, <ln2 no=\"99999\">"},
        {"<peak-intvls><peak-intvl peak-time='1:2'/></peak-intvls>", "Type mismatch, <peak-intvl peak-time=\"1:2\">"}};
    for (const auto& [content, reason] : cases) {
        OpenedFile opened(dataFile("<log>" + content + "</log>"));
        EXPECT_EQ(opened.message, "Unable to open " + opened.file.FileName + ": " + reason);
    }
    EXPECT_TRUE(OpenedFile(dataFile("<log/>", "instrument-type='70000'"))
                    .message.ends_with(": Overflow, <instrument-detail instrument-type=\"70000\">"));
    const std::pair<std::string, std::string> projects[] = {
        {"<CRITERION> loud</>", "Type mismatch, <CRITERION> \"loud\""},
        {"<MODE>x</>", "Type mismatch, <MODE> \"x\""},
        {"<LNCUMA_1>1E99</>", "Overflow, <LNCUMA_1> \"1E99\""},
        {"<LOGSAMPLE>10:00:00,80,loud,82</>", "Type mismatch, <LOGSAMPLE> \"loud\""}};
    for (const auto& [content, reason] : projects) {
        OpenedFile opened("<INSDATA><LOG>" + content + "</LOG></INSDATA>", "a.zdp");
        EXPECT_EQ(opened.message, "Unable to open " + opened.file.FileName + ": " + reason);
    }
    EXPECT_TRUE(OpenedFile("31.5,63,125,250,500,1k,2k,4k,8k,16k\r\n60,61,62\r63,\xC4rger,65\n", "a.zd2")
                    .message.ends_with(": Type mismatch, line 3 \"\u00C4rger\""));
}

// Cut off anywhere, or with any one byte spoilt, a file opens or is declined with a reason.
TEST(Loaders, StandAnyCutAndAnyWrongByte) {
    const std::string whole = dataFile("<log name=\"a\"><note>5&#47;6</note><ca><leq><f>61.5</f></leq>"
                                       "<ln1 no=\"10\"><f>1</f></ln1></ca><!--c--><intvls><intvl><time>10:00:00</time>"
                                       "<ca><peak>1</peak></ca></intvl></intvls><cutintvls incl=\"true\"/></log>") +
                              "\r\n";
    ASSERT_TRUE(OpenedFile(whole).isOpen);
    OpenedFile opened("");
    const auto open = [&](const std::string& text) {
        std::filesystem::remove(opened.file.FileName); // a file system may wait for the disk when one is cut short
        writeText(opened.file.FileName, text);
        opened.message.clear();
        const bool isOpen = LoadDocument(opened.file, opened.message);
        EXPECT_EQ(isOpen, opened.message.empty()) << text;
        for (const auto& data : opened.file.InstrumentDatas)
            for (const auto& log : data->Locations)
                errorOf([&, &item = *log] { OpenedFile::loadRows(item); });
        return isOpen;
    };
    for (std::size_t size = 0; size < whole.size(); ++size)
        EXPECT_EQ(open(whole.substr(0, size)), size >= whole.size() - 2) << size;
    for (std::size_t at = 0; at < whole.size(); ++at) {
        for (const char c : {'<', '&', '"', '\0'}) {
            std::string spoilt = whole;
            spoilt[at] = c;
            open(spoilt);
        }
    }
}

// Whatever was saved opens again, though its logs take far more memory than text, or one of its texts does.
TEST(FileSave, WritesWhatCanBeOpenedAgain) {
    std::string logs;
    for (int i = 0; i < 900; ++i)
        logs += "<log><note>x</note></log>";
    OpenedFile opened(dataFile(logs));
    const OpenedFile other(dataFile(logs));
    ASSERT_TRUE(opened.isOpen && other.isOpen);
    opened.file.append(*other.file.InstrumentDatas[0], false, kAtEnd);
    opened.log().Note = std::string(500'000, '"');
    FileSave(opened.file);
    clsFile again(opened.session, opened.file.FileName);
    ASSERT_TRUE(LoadDocument(again, opened.message)) << opened.message;
    EXPECT_EQ(MarkOf(again).rest, opened.file.SavedMark.rest);

    std::string project;
    for (int i = 0; i < 1800; ++i)
        project += "<LOG><NAME>x</></LOG>";
    EXPECT_TRUE(OpenedFile("<INSDATA>" + project + "</INSDATA>", "a.zdp").isOpen);
    for (const char* name : {"a.xml", "a.zdp"}) {
        std::string many;
        for (int i = 0; i < 100'000; ++i)
            many += "<LOG></LOG>";
        const OpenedFile refused(
            name[2] == 'x' ? dataFile(ReplaceText(many, "LOG", "log")) : "<INSDATA>" + many + "</INSDATA>", name);
        EXPECT_TRUE(refused.message.ends_with(": Out of memory (the file asks for more than twice its size)"));
    }
}

TEST(FileSave, WritesTheDocumentAndKnowsItsChanges) {
    OpenedFile opened(dataFile("<log name=\"a\"><sl>8</sl><cri>90</cri><ex>3</ex><intvls><intvl><ca><peak>1</peak></ca>"
                               "</intvl></intvls></log>"));
    clsFile& file = opened.file;
    file.OldStyle = true;
    EXPECT_EQ(errorOf([&] { FileSave(file); }), kErrorApplication) << "its rows would be lost";
    OpenedFile::loadRows(opened.log());
    EXPECT_TRUE(IsChanged(file)) << "it has never been saved";
    FileSave(file);
    EXPECT_FALSE(file.Changed || file.OldStyle || IsChanged(file));
    EXPECT_EQ(readText(file.FileName), DocumentText(file, true) + "\n");

    opened.log().LogIntervals.setArraySize(3);
    EXPECT_FALSE(IsChanged(file)) << "rows are not looked at";
    opened.log().Note = "x";
    opened.log().Note.clear();
    EXPECT_FALSE(IsChanged(file));
    opened.log().Note = "x";
    EXPECT_TRUE(IsChanged(file));
    opened.log().Note.clear();
    EXPECT_TRUE(IsChanged(file)) << "it sticks";

    const std::string before = readText(file.FileName);
    const DocumentMark savedMark = file.SavedMark;
    const std::string name = file.FileName;
    file.OldStyle = true;
    file.FileName = opened.folder.file("none/a.xml");
    EXPECT_EQ(errorOf([&] { FileSave(file); }), ENOENT);
    opened.log().HasUnreadIntervals = true;
    file.FileName = name;
    EXPECT_EQ(errorOf([&] { FileSave(file); }), kErrorApplication);
    EXPECT_TRUE(file.Changed && file.OldStyle && file.SavedMark == savedMark);
    EXPECT_EQ(readText(name), before);
}

} // namespace
} // namespace kestrane

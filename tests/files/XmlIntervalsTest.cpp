#include "files/XmlIntervals.h"
#include "ErrorOf.h"
#include "files/OpenedFile.h"

#include <gtest/gtest.h>

namespace kestrane {
namespace {

// A file whose one log has the given rows, loaded.
struct LoadedRows : OpenedFile {
    explicit LoadedRows(const std::string& rows, const std::string& header = "", Locale locale = {}) :
        OpenedFile(dataFile("<log>" + header + "<intvls>" + rows + "</intvls></log>"), "a.xml", std::move(locale)),
        mode_(header.find("<md>1") == std::string::npos ? modeBroadband : modeFullOctave) {
        loadRows(log(mode_));
    }

    clsLogInterval item(std::int64_t row) { return log(mode_).LogIntervals.Item(row); }

private:
    LogMode mode_;
};

TEST(LoadRanges, AreAtMostSeven) {
    struct Case {
        LogMode mode;
        std::int64_t rows;
        std::size_t ranges;
        std::int64_t firstTo, lastFrom;
    };

    const Case cases[] = {{modeBroadband, 50, 1, 50, 1},        {modeBroadband, 100, 1, 100, 1},
                          {modeBroadband, 101, 2, 100, 101},    {modeBroadband, 700, 7, 100, 601},
                          {modeBroadband, 7000, 7, 1000, 6001}, {modeBroadband, 7003, 7, 1000, 6001},
                          {modeBroadband, 7004, 7, 1001, 6007}, {modeFullOctave, 56, 2, 55, 56},
                          {modeThirdOctave, 61, 3, 30, 61},     {modeThirdOctave, 213, 7, 30, 181}};
    for (const Case& c : cases) {
        const std::vector<RowRange> ranges = loadRanges(c.mode, c.rows);
        ASSERT_EQ(ranges.size(), c.ranges) << c.rows;
        EXPECT_EQ(ranges.front().From, 1);
        EXPECT_EQ(ranges.front().To, c.firstTo) << c.rows;
        EXPECT_EQ(ranges.back().From, c.lastFrom) << c.rows;
        EXPECT_EQ(ranges.back().To, c.rows);
        for (std::size_t n = 1; n < ranges.size(); ++n)
            EXPECT_EQ(ranges[n].From, ranges[n - 1].To + 1);
    }
    EXPECT_TRUE(loadRanges(modeBroadband, 0).empty());
}

TEST(XmlIntervals, WaitUntilTheyAreLoaded) {
    std::string rows;
    for (int row = 1; row <= 7003; ++row) {
        rows += row % 3 == 0 ? "<intvl/>" : "<intvl><ca><peak>" + std::to_string(row) + "</peak></ca></intvl>";
        if (row % 64 == 0) rows += "<!-- <intvl> --><other><intvl/></other>";
    }
    OpenedFile opened(dataFile("<log><intvls>" + rows + "</intvls></log>"));
    clsLog& log = opened.log();
    EXPECT_TRUE(log.IntervalsToLoad);
    EXPECT_EQ(log.LogIntervals.Count(), 0);
    EXPECT_EQ(log.LoadRanges.size(), 7U);
    EXPECT_EQ(errorOf([&] { log.IntervalNodes->load(modeBroadband, false, 2, 1000); }), kErrorIndexOutOfRange);
    OpenedFile::loadRows(log);
    ASSERT_EQ(log.LogIntervals.Count(), 7003);
    for (int row = 1; row <= 7003; ++row) {
        ASSERT_EQ(log.LogIntervals.Columns().level(Quantity::PeakA, 0, static_cast<std::size_t>(row) - 1).Value,
                  row % 3 == 0 ? 0.0F : static_cast<float>(row));
    }
    for (const char* none : {"<intvls/>", "<intvls></intvls>", "<intvls><other/></intvls>", ""}) {
        OpenedFile empty(dataFile("<log>" + std::string(none) + "</log>"));
        EXPECT_FALSE(empty.log().IntervalsToLoad) << none;
    }
}

// What a check has found, in words: why it refuses, or its blocks of rows.
std::string found(const std::string& text, std::size_t partSize) {
    std::string result;
    const auto document = XmlDocument::fromText(text, result, partSize);
    for (std::size_t at = text.find("<intvls"); document && at < text.size(); at = text.find("<intvls", at + 1)) {
        const IntervalsBlock* const block = document->blockAt(at);
        if (block == nullptr) continue;
        result += std::to_string(block->rows) + (block->hasVerbatim ? " verbatim " : " ") +
                  std::to_string(block->element.contentEnd) + " " + std::to_string(block->firstText(0)) + "\n";
        XmlCursor cursor(text, block->element.contentBegin, block->element.contentEnd);
        std::int64_t row = 0;
        std::size_t depth = 0;
        for (auto kind = cursor.next(); kind != XmlCursor::Kind::End; kind = cursor.next()) {
            if (kind == XmlCursor::Kind::Open && depth == 0 && cursor.tag().name == "intvl") {
                ++row;
                for (const Landmark& landmark : block->landmarks)
                    EXPECT_TRUE(landmark.row != row || landmark.begin == cursor.tag().begin) << row;
            }
            if (kind == XmlCursor::Kind::Open && !cursor.tag().isEmpty) ++depth;
            if (kind == XmlCursor::Kind::Close) --depth;
        }
    }
    return result;
}

TEST(XmlIntervals, ReadingAheadFindsWhatReadingInOrderFinds) {
    const std::string row = "<intvl><ca><peak>1</peak></ca></intvl>";
    std::string rows;
    for (int n = 0; n < 40; ++n)
        rows += row + (n % 9 == 8 ? "<!-- <intvl> --><x><intvl/><md>1</md></x><![CDATA[<intvl>]]>" : row);
    const std::string block = "<log><intvls>" + rows + "</intvls></log>";
    const std::string text = "<a><log><intvls>" + row + row + "</intvls></log>" + block + "<intvls/>" + block + "</a>";
    ASSERT_EQ(found(text, 100), found(text, text.size()));
    ASSERT_NE(found(text, 100).find("76 verbatim"), std::string::npos) << found(text, 100);
    for (const std::string slip :
         {"<", "&", "</intvl>", "<intvl>", "-->", "<!--", "]]>", "\x01", "<intvls>", "</intvls>"}) {
        for (std::size_t at = 3; at < text.size(); at += 41) {
            const std::string changed = text.substr(0, at) + slip + text.substr(at);
            ASSERT_EQ(found(changed, 100), found(changed, changed.size())) << slip << " at " << at;
        }
    }
}

TEST(XmlIntervals, HaveTheLocalesSeparatorInTheShortForm) {
    LoadedRows shortForm("<intvl><ca><leq>61,5</leq><lmin>0</lmin><lmax>62</lmax><ln1><f>63,5</f></ln1></ca>"
                         "<cb><leq>70</leq></cb></intvl>",
                         "", {",", "."});
    EXPECT_EQ(shortForm.item(1).LeqA(0).Value(), 61.5F);
    EXPECT_EQ(shortForm.item(1).LmaxA(0).Value(), 62);
    EXPECT_EQ(shortForm.item(1).LnA(1, 0).Value(), 63.5F);
    EXPECT_EQ(shortForm.item(1).LeqB.Value(), 0) << "without channel B";
}

TEST(XmlIntervals, TakeWhatIsOddAsItComes) {
    LoadedRows odd("\n <intvl> <date> 1/2/24</date>\n<time>10:20</time> <ca> <leq> <f> 61.5 </f> </leq>"
                   "<leq><f>99</f></leq> <!-- x --> <peak>1&#48;0</peak> <le>abc</le> <x><lex>5</lex></x>"
                   "<pa2h y='1'>7</pa2h> </ca> </intvl>"
                   "<intvl><time>99:99:99</time><time/><date>31/02/2024</date></intvl>"
                   "<intvl><time>noon</time><ca/><ca><peak>5</peak></ca></intvl>");
    EXPECT_EQ(odd.item(1).StartDate.Format() + ' ' + odd.item(1).StartTime.hh_mm_ss(), "01/02/2024 10:20:00");
    EXPECT_EQ(odd.item(1).LeqA(0).Value(), 61.5F) << "the first counts";
    EXPECT_EQ(odd.item(1).PeakA.Value(), 100);
    EXPECT_EQ(odd.item(1).SELA.Value() + odd.item(1).LepdA.Value(), 0);
    EXPECT_EQ(odd.item(1).Pa2hA.Value(), 7);
    EXPECT_EQ(odd.item(2).StartTime.getTimeAsSeconds(), 99 * 3661);
    EXPECT_TRUE(odd.item(2).StartDate == clsDate());
    EXPECT_EQ(odd.item(3).PeakA.Value(), 5);

    for (const char* tooMuch : {"<ca><peak>1E39</peak></ca>", "<date>1/1/99999</date>", "<time>999999999:0:0</time>"}) {
        OpenedFile opened(dataFile("<log><intvls><intvl>" + std::string(tooMuch) + "</intvl></intvls></log>"));
        EXPECT_TRUE(opened.isOpen);
        EXPECT_EQ(errorOf([&] { OpenedFile::loadRows(opened.log()); }), kErrorOverflow) << tooMuch;
    }
}

} // namespace
} // namespace kestrane

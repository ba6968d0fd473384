#include "app/HelpSearch.h"

#include "app/HelpPages.h"

#include "TestSession.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>

namespace kestrane {
namespace {

using Sentences = std::vector<std::string>;

constexpr auto kPage = R"(<html><head><title>Peak &amp; Lmax</title><style>p { x }</style></head><body>
<h1>Peak &amp;
 Lmax</h1><nav><a href="x">elsewhere</a></nav>
<p>Peak is <b>not</b> Lmax, e.g. of a blow. It has 5.5&nbsp;dB more! L<sub>EX,8h</sub> is &lt;&amp;lt;.</p>
<table><tr><td>Pa²h</td><td>adds up</td></tr></table><br>End</body></html>)";

TEST(HelpSearch, TakesWholeSentencesOutOfAPage) {
    const HelpPage page = plainHelpPage("p", kPage);
    EXPECT_EQ(page.Title, "Peak & Lmax");
    EXPECT_EQ(page.Sentences, (Sentences{"Peak & Lmax", "Peak is not Lmax, e.g. of a blow.", "It has 5.5 dB more!",
                                         "LEX,8h is <&lt;.", "Pa²h", "adds up", "End"}));
    EXPECT_EQ(plainHelpPage("p", "<body>unfinished <b").Sentences, Sentences{"unfinished"});
}

TEST(HelpSearch, FindsWordsByTheirBeginningAndTheBestPageFirst) {
    const std::vector<HelpPage> pages = {
        {"far", "A", {"The dose of a day.", "A peak, too."}},
        {"near", "B", {"Peaks without a dose", "The PEAK and its dose are two figures."}},
        {"title", "Dose and peak", {"Élan Pa²h"}}};
    const auto found = [&](const char* question) {
        std::string paths;
        for (const HelpMatch& match : findInHelp(pages, question))
            paths += match.Page->Path + ": " + match.Sentence + '\n';
        return paths;
    };
    EXPECT_EQ(found(" Peak  dose"), "title: Dose and peak\nnear: Peaks without a dose\nfar: The dose of a day.\n");
    EXPECT_EQ(found("figures"), "near: The PEAK and its dose are two figures.\n");
    EXPECT_EQ(found("PA2H éla"), "title: Élan Pa²h\n");
    for (const char* nothing : {"", "  ", "eak", "dose nowhere"})
        EXPECT_EQ(found(nothing), "") << nothing;
}

class HelpOfProgram : public ::testing::Test, protected TestSession {};

TEST_F(HelpOfProgram, HasAPageForEveryTopic) {
    const std::string folder = HELP_DIR "/";
    const auto check = [&](std::string_view topic) {
        EXPECT_TRUE(std::filesystem::exists(folder + std::string(topic) + ".html")) << topic;
    };
    for (const HelpOfWindow& window : helpOfWindows())
        check(window.Topic);
    for (const LogTab tab : kAllLogTabs) {
        EXPECT_NE(helpTopic(tab, false), kFirstHelpTopic) << tab;
        check(helpTopic(tab, false));
    }
    for (const std::string_view topic : otherHelpTopics())
        check(topic);
    check("AcousticTerms");
}

TEST_F(HelpOfProgram, AnswersWhatIsAskedMost) {
    const std::vector<HelpPage> pages = helpPages(session, HELP_DIR "/");
    const auto firstFor = [&](const char* question) {
        const std::vector<HelpMatch> matches = findInHelp(pages, question);
        return matches.empty() ? std::string() : std::filesystem::path(matches.front().Page->Path).stem().string();
    };
    EXPECT_EQ(firstFor("exposure criteria"), "criteria");
    EXPECT_EQ(firstFor("merge files"), "merge") << "'Merging files' does not begin with merge";
    EXPECT_EQ(firstFor("serial line"), "download");
    EXPECT_EQ(firstFor("wrong decibel thumbscrew"), "");
}

} // namespace
} // namespace kestrane

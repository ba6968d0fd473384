#include "app/StartUp.h"

#include "app/Documents.h"
#include "app/Help.h"
#include "app/Placement.h"

#include "TestSession.h"
#include "WatchedFrame.h"
#include "platform/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <algorithm>

namespace kestrane {
namespace {

using Names = std::vector<std::string>;

TEST(CommandLine, IsSplitByQuotesAndByWhatExists) {
    struct Case {
        const char* text;
        Names existing;
        Names names;
    };

    const Case cases[] = {
        {"", {}, {}},
        {"   ", {}, {}},
        {"\"C:\\a b.xml\" \"C:\\c d.xml\"", {}, {"C:\\a b.xml", "C:\\c d.xml"}}, // quoted: there or not
        {"\"a.xml\"\"b.xml\"", {}, {"a.xml", "b.xml"}},
        {"\"\" \"open end", {}, {"open end"}},
        {" a.xml ", {"a.xml"}, {"a.xml"}},
        {"a.xml", {}, {}},
        {"C:\\My Data\\a.xml", {"C:\\My Data\\a.xml"}, {"C:\\My Data\\a.xml"}},
        {"my old data.xml \"b.xml\"",
         {"my old data.xml"},
         {"my old data.xml"}}, // the next word is skipped, quoted or not
        {"a.xml b.xml c.xml", {"a.xml", "b.xml", "c.xml"}, {"a.xml", "c.xml"}},
        {"a.xml b.xml", {"a.xml", "b.xml"}, {"a.xml"}}, // the rest does not get shorter
        {"none x \"b.xml\"", {}, {}},
    };
    for (const Case& c : cases) {
        const auto exists = [&](const std::string& name) { return std::ranges::count(c.existing, name) != 0; };
        EXPECT_EQ(commandLineFiles(c.text, exists), c.names) << c.text;
    }
    const Names shellWords = {"/data/a b.xml", "c.xml"};
    EXPECT_EQ(commandLineFiles(commandLineText(shellWords), [](const std::string&) { return false; }), shellWords);
}

class StartUpTest : public ::testing::Test, protected TestSession {};

TEST_F(StartUpTest, RecentFilesAreReadUpToTheFirstGapAndWrittenAtOnce) {
    settings.write("Preferences", "LastFile1", "/a.xml");
    settings.write("Preferences", "LastFile3", "/c.xml");
    readSettings(session);
    EXPECT_EQ(session.RecentFiles, Names{"/a.xml"});
    rememberRecentFile(session, "/x.xml");
    EXPECT_EQ(settings.read("Preferences", "LastFile2", ""), "/a.xml");
    EXPECT_EQ(settings.read("Preferences", "LastFile3", ""), "/c.xml") << "keys of a higher number stay";
}

TEST_F(StartUpTest, WhatEarlierVersionsRememberedInTheSettingsIsTakenOverOnce) {
    MemorySettings state;
    session.state = &state;
    settings.write("Preferences", "Company", "A");
    const MemorySettings left = settings;
    savePlacement(settings, {1, 2, 300, 200});
    saveTreeWidth(settings, 250);
    settings.write("Preferences", "LastFile1", "/a.xml");
    moveState(session);
    readSettings(session);
    EXPECT_EQ(settings.Values, left.Values);
    EXPECT_EQ(session.RecentFiles, Names{"/a.xml"});
    EXPECT_EQ(readPlacement(state), (Placement{1, 2, 300, 200}));
    EXPECT_EQ(readTreeWidth(state), 250);
    settings.write("Preferences", "LastFile1", "/older.xml");
    moveState(session);
    EXPECT_EQ(state.read("Preferences", "LastFile1", ""), "/a.xml");
}

TEST_F(StartUpTest, DataLieWhereTheUserCanWriteAndAnUnreadableStoreIsToldOnce) {
    struct Damaged : MemorySettings {
        std::string Unreadable() const override { return "/home/a/Velmora.ini"; }
    } damaged;

    const TemporaryFolder folder;
    EXPECT_EQ(defaultDataFolder(folder.file(""), "/home/a/Documents"), folder.file(""));
    EXPECT_EQ(defaultDataFolder("/no/such/folder/", "/home/a/Documents"), "/home/a/Documents/");
    EXPECT_EQ(defaultDataFolder("/no/such/folder/", ""), "/no/such/folder/");
    Session other("Ordwyn Acoustics", {}, damaged, messages, pump, clock);
    readSettings(other);
    ASSERT_EQ(messages.Boxes.size(), 1U);
    EXPECT_NE(messages.Boxes[0].Prompt.find("'/home/a/Velmora.ini'"), std::string::npos);
}

TEST(Manual, IsOpenedByADocumentReaderOrTheUserIsToldWhereToGetOne) {
    struct Case {
        bool hasReader;
        Button answer;
        std::vector<std::string> opened;
        std::string asked; // or told
    };

    const TemporaryFolder folder;
    const std::string manual = folder.file("Kestrane.pdf");
    writeText(manual, "");
    TestSession test;
    const Case cases[] = {{true, Button::Yes, {manual}, ""},
                          {false, Button::No, {}, test.session.LoadText(Text::DocumentReaderNotFound)},
                          {false,
                           Button::Yes,
                           {test.session.LoadText(Text::ContactDocumentReader)},
                           test.session.LoadText(Text::DocumentReaderNotFound)}};
    for (const Case& c : cases) {
        std::vector<std::string> opened;
        const Desktop desktop = {
            [&](const std::string& mimeType) { return c.hasReader && mimeType == "application/pdf"; },
            [&](const std::string& address) { return opened.push_back(address), true; }};
        test.messages.Boxes.clear();
        test.messages.Answers = {c.answer};
        GetManual(test.session, desktop, manual);
        EXPECT_EQ(opened, c.opened);
        EXPECT_EQ(test.messages.Boxes.empty() ? "" : test.messages.Boxes[0].Title, c.asked);
    }
}

TEST_F(StartUpTest, OpensWhatItCanAndShowsTheCompany) {
    WatchedFrame frame;
    session.frame = &frame;
    const TemporaryFolder folder;
    for (const char* name : {"a.xml", "b c.xml"})
        writeText(folder.file(name), "<instruments/>");
    settings.write("Preferences", "Company", "Acoustics & Co");
    Main(session, {folder.file("a.xml"), folder.file("none.xml"), folder.file("b c.xml")});
    ASSERT_EQ(session.OpenFiles.size(), 2U);
    EXPECT_EQ(session.OpenFiles[1]->FileName, folder.file("b c.xml"));
    EXPECT_EQ(messages.Boxes.size(), 1U) << "the missing one, and on with the next";
    EXPECT_TRUE(session.RecentFiles.empty()) << "the command line leaves the recent files alone";
    EXPECT_EQ(frame.Rebuilt, 2);
    EXPECT_EQ(frame.Status, Names{"Acoustics & Co"});
}

TEST(Placement, IsKeptInTwipsAndRefusedWhenNoWindowCanHaveIt) {
    MemorySettings store;
    EXPECT_EQ(readPlacement(store), std::nullopt);
    const Placement placement = {-8, 20, 800, 600};
    savePlacement(store, placement);
    EXPECT_EQ(store.read("Settings", "MainWidth", ""), "12000");
    EXPECT_EQ(readPlacement(store), placement);
    for (const char* width : {"0", "-15", "wide", "1E9", ""}) {
        store.write("Settings", "MainWidth", width);
        EXPECT_EQ(readPlacement(store), std::nullopt) << width;
    }
}

TEST(Placement, IsBroughtOntoTheScreenItSharesMostOf) {
    const std::vector<Placement> screens = {{0, 0, 1000, 800}, {1000, 0, 500, 400}};
    const std::pair<Placement, Placement> cases[] = {
        {{10, 10, 300, 200}, {10, 10, 300, 200}},       {{-50, -20, 300, 200}, {0, 0, 300, 200}},
        {{950, 0, 300, 200}, {1000, 0, 300, 200}},      // mostly on the second
        {{1300, 300, 600, 200}, {1000, 200, 500, 200}}, // too wide for it
        {{5000, 5000, 300, 200}, {700, 600, 300, 200}}, // on none: the first
    };
    for (const auto& [from, to] : cases)
        EXPECT_EQ(broughtOnScreen(from, screens), to) << from.Left;
    EXPECT_EQ(broughtOnScreen({-50, 0, 10, 10}, {}), (Placement{-50, 0, 10, 10}));
}

} // namespace
} // namespace kestrane

#include "app/Documents.h"

#include "TestSession.h"
#include "WatchedFrame.h"
#include "files/Loaders.h"
#include "platform/TemporaryFolder.h"
#include "server/KestraneThread.h"
#include "server/LogLoading.h"

#include <gtest/gtest.h>

#include <atomic>
#include <thread>

#include <filesystem>

namespace kestrane {
namespace {

constexpr const char* kOneLog = "<instruments><instrument-data><instrument-detail name=\"d\"/><logs><log name=\"a\">"
                                "<ca><leq><f>85</f></leq></ca></log></logs></instrument-data></instruments>";

class DocumentsTest : public ::testing::Test, protected TestSession {
protected:
    WatchedFrame frame;
    TemporaryFolder folder;
    std::vector<std::string> proposals;             // asked to name, in order
    std::vector<std::optional<std::string>> chosen; // the answers
    AskSaveName ask = [this](const std::string& proposal) {
        proposals.push_back(proposal);
        const auto name = chosen.empty() ? std::nullopt : chosen.front();
        if (!chosen.empty()) chosen.erase(chosen.begin());
        return name;
    };
    BackgroundServer server{pump, 2};

    DocumentsTest() {
        session.frame = &frame;
        session.server = &server;
    }

    std::string written(const std::string& name, const std::string& text = kOneLog) {
        writeText(folder.file(name), text);
        return folder.file(name);
    }

    clsFile& opened(const std::string& name, const std::string& text = kOneLog) {
        EXPECT_TRUE(OpenFile(session, written(name, text), OpenSource::Named, true));
        return *session.OpenFiles.back();
    }

    static void change(clsFile& file) { file.InstrumentDatas.front()->NameX += "!"; }
};

TEST_F(DocumentsTest, AFileOpensOnceByWhateverNameAndTwoThatDifferInCaseAreTwo) {
    const std::string first = written("A.xml");
    const std::string second = written("a.XML");
    std::filesystem::create_symlink(first, folder.file("link.xml"));
    for (const std::string& name : {first, second, folder.file("link.xml"), folder.file("./A.xml")})
        EXPECT_TRUE(OpenFile(session, name, OpenSource::Dialog, true));
    ASSERT_EQ(session.OpenFiles.size(), 2U);
    EXPECT_EQ(session.RecentFiles, (std::vector<std::string>{first, second}));
    std::filesystem::remove(first); // it is in memory
    frame.Rebuilt = 0;
    EXPECT_TRUE(OpenFile(session, first, OpenSource::Dialog, false));
    EXPECT_EQ(session.OpenFiles.size(), 2U);
    EXPECT_EQ(frame.Rebuilt, 0) << "neither new nor the last";
}

TEST_F(DocumentsTest, AnotherOpenDocumentIsNeverSavedOver) {
    clsFile& file = opened("a.xml");
    std::filesystem::create_symlink(opened("b.xml").FileName, folder.file("link.xml"));
    change(file);
    chosen = {folder.file("b.xml"), folder.file("link.xml"), folder.file("B.XML"), folder.file("a.xml")};
    EXPECT_TRUE(SaveFile(session, file, true, ask));
    EXPECT_EQ(proposals, (std::vector<std::string>{folder.file("a.xml"), folder.file("b.xml"), folder.file("link.xml"),
                                                   folder.file("B.XML")}));
    ASSERT_EQ(messages.Boxes.size(), 3U);
    EXPECT_EQ(messages.Boxes[1].Prompt, ReplaceText(session.LoadText(Text::FileIsOpen), "^", "b.xml"));
    EXPECT_EQ(readText(folder.file("b.xml")), kOneLog);
    EXPECT_EQ(file.FileName, folder.file("a.xml"));
}

TEST_F(DocumentsTest, TheOnlyLogOfTheFilesIsShownAndOfSeveralTheFirstIsSelected) {
    const std::string empty = written("empty.xml", "<instruments/>");
    const std::string one = written("one.xml");
    const std::string other = written("other.xml");
    OpenFiles(session, {empty, folder.file("none.xml")}, OpenSource::Named);
    OpenFiles(session, {empty, one, one}, OpenSource::Named);
    OpenFiles(session, {other, one}, OpenSource::Dialog);
    OpenFiles(session, {one}, OpenSource::Recent); // it is open
    EXPECT_EQ(frame.Chosen, (std::vector<std::string>{"L1I1F2", "[L2I2F3]", "L1I1F2"}));
}

TEST_F(DocumentsTest, AFileThatDoesNotOpenLeavesNothingButItsMessage) {
    EXPECT_FALSE(OpenFile(session, written("bad.xml", "<instruments>"), OpenSource::Named, true));
    EXPECT_TRUE(session.OpenFiles.empty());
    ASSERT_EQ(messages.Boxes.size(), 1U);
    EXPECT_EQ(messages.Boxes[0].Flags, kIconStop);
    EXPECT_EQ(messages.Boxes[0].Title, "Kestrane");
    EXPECT_TRUE(session.RecentFiles.empty());
    EXPECT_FALSE(OpenFile(session, folder.file("none.xml"), OpenSource::Dialog, true));
    EXPECT_EQ(session.RecentFiles, std::vector<std::string>{folder.file("none.xml")});
}

// What a selection leaves out does not come back with the recalculation on opening: it waits for the rows. Until then
// the figures of the file stand, and the new ones are no change of the user's.
TEST_F(DocumentsTest, ExcludedTimeStaysExcludedWhenAFileIsOpenedAgain) {
    std::string rows;
    for (const int level : {80, 90, 80, 90})
        rows += "<intvl><ca><leq><f>" + std::to_string(level) + "</f></leq></ca></intvl>";
    const std::string text = "<instruments><instrument-data><instrument-detail/><logs><log><interval>3600</interval>"
                             "<ca><leq><f>87.4</f></leq><mlex>70</mlex></ca><cutintvls incl=\"False\"><cutintvl>2~2"
                             "</cutintvl><cutintvl>4~4</cutintvl></cutintvls><intvls>" +
                             rows + "</intvls></log></logs></instrument-data></instruments>";
    clsFile& file = opened("cut.xml", text);
    const clsLog& log = *file.InstrumentDatas.front()->Locations.front();
    EXPECT_EQ(log.LepdMTCumA.CalcValue(), 70);
    pump.runUntil([&] { return noLogIsBusy(session); });
    EXPECT_FLOAT_EQ(log.LeqCumA(0).CalcValue(), 80);
    EXPECT_NEAR(log.LepdMTCumA.CalcValue(), 80 - 6.02, 0.01); // two hours
    EXPECT_TRUE(log.FullyCalculated);
    EXPECT_FALSE(IsChanged(file));
}

TEST_F(DocumentsTest, SavingInPlaceAsksNothingAndAnUnchangedFileIsLeftAlone) {
    clsFile& file = opened("a.xml");
    writeText(file.FileName, "mark");
    EXPECT_TRUE(SaveFile(session, file, false, ask));
    EXPECT_EQ(readText(file.FileName), "mark");
    change(file);
    EXPECT_TRUE(SaveFile(session, file, false, ask));
    EXPECT_NE(readText(file.FileName).find("name=\"d!\""), std::string::npos);
    EXPECT_FALSE(IsChanged(file));
    EXPECT_TRUE(proposals.empty());
    EXPECT_TRUE(messages.Boxes.empty());
}

TEST_F(DocumentsTest, WhatHasNoNameToWriteToAsksForOne) {
    struct Case {
        std::string name;
        bool isOld, saveAs;
        std::size_t warnings;
        std::string proposal;
    };

    clsFile& file = opened("a.xml");
    const std::string path = file.FileName;
    const Case cases[] = {{"Untitled", false, false, 0, "Untitled"},
                          {"", false, false, 0, ""},
                          {"/d/a.1.ZD4", true, false, 1, "/d/a.1.xml"},
                          {"/d/a.2020", true, false, 1, "/d/a.2020.xml"},
                          {path, true, false, 1, path + ".xml"}, // an older format by the name of the new one
                          {path, false, true, 0, path}};
    for (const Case& c : cases) {
        messages.Boxes.clear();
        proposals.clear();
        file.FileName = c.name;
        file.OldStyle = c.isOld;
        EXPECT_FALSE(SaveFile(session, file, c.saveAs, ask)) << "cancelled";
        EXPECT_EQ(file.FileName, c.name);
        chosen = {folder.file("new.xml")};
        EXPECT_TRUE(SaveFile(session, file, c.saveAs, ask));
        EXPECT_EQ(proposals, std::vector<std::string>(2, c.proposal));
        EXPECT_EQ(file.FileName, folder.file("new.xml"));
        EXPECT_TRUE(std::filesystem::remove(folder.file("new.xml")));
        EXPECT_FALSE(file.IsOldStyle());
        ASSERT_EQ(messages.Boxes.size(), 2 * c.warnings);
        if (c.warnings == 0) continue;
        EXPECT_EQ(messages.Boxes[0].Prompt,
                  "After saving this file, it will not be compatible with older applications");
        EXPECT_EQ(messages.Boxes[0].Flags, kIconInformation);
    }
}

TEST_F(DocumentsTest, AnEmptyCollectionIsRefusedWhileTheSettingSaysSo) {
    clsFile& file = opened("a.xml");
    file.InstrumentDatas.push_back(std::make_unique<clsInsData>(session));
    EXPECT_FALSE(SaveFile(session, file, true, ask));
    EXPECT_TRUE(proposals.empty());
    ASSERT_EQ(messages.Boxes.size(), 1U);
    EXPECT_EQ(messages.Boxes[0].Prompt, session.LoadText(Text::FilesWithoutLogsNotSaved));
    session.Options.PreventEmptySaving = false;
    EXPECT_TRUE(SaveFile(session, file, false, ask));
}

TEST_F(DocumentsTest, ClosingAsksEverythingFirstAndSavesThen) {
    struct Case {
        std::vector<Button> answers;
        bool isClosed;
        std::size_t questions;
        std::vector<bool> isSaved; // a, b, c
    };

    const Case cases[] = {
        {{Button::Yes, Button::Cancel}, false, 2, {false, false, false}}, // nothing is saved
        {{Button::Yes, Button::No, Button::Yes}, true, 3, {true, false, true}},
    };
    for (const Case& c : cases) {
        session.OpenFiles.clear();
        messages.Boxes.clear();
        std::vector<std::string> names;
        for (const char* name : {"a.xml", "b.xml", "c.xml"}) {
            change(opened(name));
            names.push_back(folder.file(name));
        }
        opened("unchanged.xml");
        messages.Answers = c.answers;
        EXPECT_EQ(CloseFile(session, nullptr, ask), c.isClosed);
        ASSERT_EQ(messages.Boxes.size(), c.questions);
        EXPECT_EQ(messages.Boxes[1].Prompt, "Do you want to save the changes made to 'b.xml'");
        EXPECT_EQ(messages.Boxes[1].Flags, kButtonsYesNoCancel | kIconQuestion);
        for (std::size_t i = 0; i < names.size(); ++i)
            EXPECT_EQ(readText(names[i]) != kOneLog, c.isSaved[i]) << names[i];
        EXPECT_EQ(session.OpenFiles.size(), c.isClosed ? 0U : 4U);
    }
}

TEST_F(DocumentsTest, ClosingAsksAboutExposureRowsThatAreNotSaved) {
    for (const Button answer : {Button::Cancel, Button::No, Button::Yes}) {
        clsFile& file = opened("a.xml");
        clsLog& log = *file.InstrumentDatas.front()->Locations.front();
        log.DoseLogIntervals.resize(1);
        log.DoseLogIntervals.front().Note = "press";
        log.AreDoseRowsEdited = true;
        messages.Boxes.clear();
        messages.Answers = {answer};
        EXPECT_EQ(CloseFile(session, nullptr, ask), answer != Button::Cancel);
        ASSERT_EQ(messages.Boxes.size(), 1U);
        EXPECT_EQ(readText(folder.file("a.xml")).find("press") != std::string::npos, answer == Button::Yes);
    }
}

TEST_F(DocumentsTest, ClosingStopsAtASaveThatFailsAndRemembersNewNames) {
    clsFile& other = opened("b.xml");
    clsFile& file = opened("a.xml");
    file.FileName = "Untitled";
    change(file);
    messages.Answers = {Button::Yes};
    EXPECT_FALSE(CloseFile(session, &file, ask)) << "no name given";
    EXPECT_EQ(session.OpenFiles.size(), 2U);
    messages.Answers = {Button::Yes};
    chosen = {folder.file("none/new.xml"), folder.file("new.xml")}; // another name behind the one that fails
    EXPECT_TRUE(CloseFile(session, &file, ask));
    ASSERT_EQ(session.OpenFiles.size(), 1U);
    EXPECT_EQ(session.OpenFiles[0].get(), &other);
    EXPECT_EQ(session.RecentFiles, std::vector<std::string>{folder.file("new.xml")});
}

TEST_F(DocumentsTest, ClosingSavesWhatARunningRecalculationBrings) {
    clsFile& file = opened("a.xml");
    clsInsData& data = *file.InstrumentDatas.front();
    change(file);
    data.Locations.front()->IntervalsRecalculating = true;
    pump.post([&data] {
        data.Locations.front()->IntervalsRecalculating = false;
        data.NameX = "late";
    });
    messages.Answers = {Button::Yes};
    EXPECT_TRUE(CloseFile(session, &file, ask));
    EXPECT_NE(readText(folder.file("a.xml")).find("late"), std::string::npos);
}

// The threads that read are held up until the user has been asked.
TEST_F(DocumentsTest, OpeningFromASlowDiskCanBeGivenUp) {
    struct Asking : WatchedFrame {
        std::atomic<bool> isSlow = true;
        bool isPatient = false;
        std::vector<std::string> asked;

        bool WaitUntil(EventPump& events, const std::string& what, const std::function<bool()>& isDone) override {
            asked.push_back(what);
            isSlow = false;
            if (isPatient) events.runUntil(isDone);
            return isPatient;
        }
    } asking;

    session.frame = &asking;
    for (const bool isPatient : {false, true}) {
        asking.isPatient = isPatient;
        asking.isSlow = true;
        std::vector<std::shared_ptr<BackgroundWork>> busy;
        int ended = 0;
        for (int i = 0; i < 2; ++i)
            busy.push_back(server.Run(
                [&] {
                    while (asking.isSlow)
                        std::this_thread::yield();
                },
                [&ended] { ++ended; }));
        EXPECT_EQ(OpenFile(session, written("a.xml"), OpenSource::Named, true), isPatient);
        EXPECT_EQ(session.OpenFiles.size(), isPatient ? 1U : 0U);
        pump.runUntil([&] { return ended == 2 && noLogIsBusy(session); });
    }
    EXPECT_EQ(asking.asked, std::vector<std::string>(2, "Opening a.xml..."));
    EXPECT_TRUE(messages.Boxes.empty()) << "whoever gives up knows why";
    session.frame = &frame;
}

// The header has the figures of both rows, the selection leaves the second one out.
TEST_F(DocumentsTest, ARecalculationOnOpeningThatChangesFiguresIsALineOfTheHistory) {
    const std::string text =
        "<instruments><instrument-data><instrument-detail name=\"d\"/><logs><log "
        "name=\"a\"><ca><leq><f>85.1</f></leq></ca>"
        "<intvls><intvl><ca><leq><f>84</f></leq></ca></intvl><intvl><ca><leq><f>86</f></leq></ca></intvl></intvls>"
        "<cutintvls incl=\"false\"><cutintvl>2~2</cutintvl></cutintvls></log></logs></instrument-data></instruments>";
    clsFile& file = opened("a.xml", text);
    pump.runUntil([&] { return noLogIsBusy(session); });
    const std::vector<HistoryLine> lines = file.History.lines();
    ASSERT_EQ(lines.size(), 1U);
    EXPECT_EQ(lines[0].What + " of " + lines[0].Log, "Recalculation on Opening of a");
    EXPECT_NE(lines[0].Before.find(": 85.1"), std::string::npos) << lines[0].Before;
    EXPECT_NE(lines[0].After.find(": 84.0"), std::string::npos) << lines[0].After;
    EXPECT_FALSE(IsChanged(file)) << "the user has changed nothing";
    EXPECT_TRUE(opened("b.xml").History.lines().empty());

    change(file);
    EXPECT_TRUE(SaveFile(session, file, false, ask));
    session.OpenFiles.clear();
    EXPECT_TRUE(OpenFile(session, folder.file("a.xml"), OpenSource::Named, true));
    pump.runUntil([&] { return noLogIsBusy(session); });
    EXPECT_EQ(session.OpenFiles.front()->History.lines().size(), 2U) << "that line, and the save";
}

} // namespace
} // namespace kestrane

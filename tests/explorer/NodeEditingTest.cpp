#include "explorer/NodeEditing.h"

#include "TestSession.h"
#include "WatchedFrame.h"
#include "explorer/Edits.h"
#include "explorer/NodeKeys.h"

#include <gtest/gtest.h>

#include <limits>

namespace kestrane {
namespace {

constexpr std::string_view kOne = "77(L1a L2b O1o T1t) 88(L3c)";
constexpr std::string_view kTwo = "77(L4d T2u) 99(L5e)";

// Two documents, F1 and F2, of two collections each: I1, I2 and I3, I4.
struct TwoFiles : TestSession {
    TwoFiles() {
        addFile("one.xml",
                {{"77", {{modeBroadband, "a"}, {modeBroadband, "b"}, {modeFullOctave, "o"}, {modeThirdOctave, "t"}}},
                 {"88", {{modeBroadband, "c"}}}});
        addFile("two.xml", {{"77", {{modeBroadband, "d"}, {modeThirdOctave, "u"}}}, {"99", {{modeBroadband, "e"}}}});
    }

    struct Collection {
        std::string serial;
        std::vector<std::pair<LogMode, std::string>> logs; // mode, name
    };

    void addFile(const std::string& name, const std::vector<Collection>& collections) {
        session.OpenFiles.push_back(std::make_unique<clsFile>(session, "/" + name));
        for (const Collection& collection : collections) {
            auto data = std::make_unique<clsInsData>(session);
            data->InsSerial = collection.serial;
            for (const auto& [mode, logName] : collection.logs) {
                auto log = std::make_unique<clsLog>(session);
                log->Mode(mode);
                log->Name = logName;
                data->append(std::move(log), 0);
            }
            session.OpenFiles.back()->InstrumentDatas.push_back(std::move(data));
        }
        AssignIdentities(session, true, 0);
    }

    clsFile& file(int id) { return *session.fileById(id); }

    clsLog& log(const std::string& key) { return *resolve(session, key).log; }

    // "77(L1a T1t) ...": the collections with their logs, and each key resolves to its own object.
    std::string outline(int fileId) {
        std::string text;
        for (const auto& data : file(fileId).InstrumentDatas) {
            text += (text.empty() ? "" : " ") + data->InsSerial + "(";
            std::string logs;
            for (const LogMode mode : {modeBroadband, modeFullOctave, modeThirdOctave}) {
                for (const auto& item : data->logsOf(mode)) {
                    logs += (logs.empty() ? "" : " ") + std::string(1, logKind(mode)) + std::to_string(item->LogId) +
                            item->Name;
                    EXPECT_EQ(resolve(session, logKey(*item, *data, file(fileId))).log, item.get());
                }
            }
            text += logs + ")";
        }
        return text;
    }
};

struct PasteCase {
    const char* source;
    const char* target;
    bool move;
    std::string_view one, two; // afterwards; both as before: nothing is to be done
};

constexpr PasteCase kPastes[] = {
    {"F1", "F2", false, kOne, "77(L4d L6a L7b O2o T2u T3t) 99(L5e) 88(L8c)"},
    {"F1", "F2", true, "", "77(L4d L1a L2b O1o T2u T1t) 99(L5e) 88(L6c)"},
    {"F1", "F1", false, kOne, kTwo},
    {"F1", "I3F2", false, kOne, kTwo},
    {"I1F1", "F2", false, kOne, "77(L4d L6a L7b O2o T2u T3t) 99(L5e)"},
    {"I1F1", "I4F2", true, "88(L3c)", "77(L4d L1a L2b O1o T2u T1t) 99(L5e)"},
    {"I2F1", "F2", false, kOne, "77(L4d T2u) 99(L5e) 88(L6c)"},
    {"I2F1", "I3F2", true, "77(L1a L2b O1o T1t)", "77(L4d T2u) 99(L5e) 88(L3c)"},
    {"I2F1", "I1F1", false, "77(L1a L2b L6c O1o T1t) 88(L3c)", kTwo},
    {"I2F1", "I1F1", true, "77(L1a L2b L3c O1o T1t)", kTwo},
    {"I1F1", "F1", false, "77(L1a L2b L6a L7b O1o O2o T1t T3t) 88(L3c)", kTwo},
    {"I1F1", "F1", true, kOne, kTwo},
    {"X1F1", "I2F1", true, "77(O1o T1t) 88(L3c L1a L2b)", kTwo},
    {"X1F1", "L4I3F2", false, kOne, "77(L4d L6a L7b T2u) 99(L5e)"},
    {"X1F1", "L5I4F2", true, "77(O1o T1t) 88(L3c)", "77(L4d T2u) 99(L5e L1a L2b)"},
    {"X1F1", "X1F1", false, kOne, kTwo},
    {"Y1F1", "I4F2", false, kOne, "77(L4d T2u) 99(L5e O2o)"},
    {"Z1F1", "T2I3F2", true, "77(L1a L2b O1o) 88(L3c)", "77(L4d T2u T1t) 99(L5e)"},
    {"L1I1F1", "L2I1F1", false, "77(L1a L2b L6a O1o T1t) 88(L3c)", kTwo},
    {"L1I1F1", "L2I1F1", true, "77(L2b L1a O1o T1t) 88(L3c)", kTwo},
    {"L1I1F1", "X1F1", false, "77(L1a L2b L6a O1o T1t) 88(L3c)", kTwo},
    {"L1I1F1", "X1F1", true, kOne, kTwo},
    {"L2I1F1", "L4I3F2", true, "77(L1a O1o T1t) 88(L3c)", "77(L4d L2b T2u) 99(L5e)"},
    {"L1I1F1", "F2", false, kOne, "77(L4d L6a T2u) 99(L5e)"},
    {"L3I2F1", "F2", true, "77(L1a L2b O1o T1t) 88()", "77(L4d T2u) 99(L5e) 88(L3c)"},
    {"O1I1F1", "Y1F1", false, "77(L1a L2b O1o O2o T1t) 88(L3c)", kTwo},
    {"T1I1F1", "X3F2", true, kOne, kTwo},
    {"L9I1F1", "F2", true, kOne, kTwo},
    {"L1I1F1", "I9F2", true, kOne, kTwo},
};

TEST(PasteNode, TakesEveryKindWhereItBelongsAndIsUndoneAndDoneAgain) {
    for (const PasteCase& c : kPastes) {
        SCOPED_TRACE(std::string(c.source) + " to " + c.target + (c.move ? ", moved" : ""));
        TwoFiles files;
        Session& session = files.session;
        const bool isDone = c.one != kOne || c.two != kTwo;
        ASSERT_EQ(PasteNode(session, c.source, c.target, c.move), isDone);
        EXPECT_EQ(files.outline(1), c.one);
        EXPECT_EQ(files.outline(2), c.two);
        const bool isWithinOne = c.two == kTwo;
        EXPECT_EQ(files.file(1).Changed, isDone);
        EXPECT_EQ(files.file(2).Changed, isDone && !isWithinOne);
        clsFile& changed = files.file(isWithinOne ? 1 : 2);
        ASSERT_EQ(exchangeStep(session, &changed, Direction::Undo), isDone);
        EXPECT_EQ(files.outline(1), kOne);
        EXPECT_EQ(files.outline(2), kTwo);
        EXPECT_FALSE(files.file(1).Changed || files.file(2).Changed);
        ASSERT_EQ(exchangeStep(session, &changed, Direction::Redo), isDone);
        EXPECT_EQ(files.outline(1), c.one);
        EXPECT_EQ(files.outline(2), c.two);
        EXPECT_EQ(files.file(1).Changed, isDone);
    }
}

TEST(PasteNode, KeepsTheOrderOfMovedLogsWhoseIdentitiesAreTakenThere) {
    TwoFiles files;
    files.log("L4I3F2").LogId = 1; // as the first of those that come
    ASSERT_TRUE(PasteNode(files.session, "X1F1", "L1I3F2", true));
    EXPECT_EQ(files.outline(2), "77(L1d L6a L2b T2u) 99(L5e)");
}

TEST(PasteNode, TellsIntoWhichOtherCollectionTheLogsWent) {
    TwoFiles files;
    WatchedFrame frame;
    files.session.frame = &frame;
    ASSERT_TRUE(PasteNode(files.session, "F2", "F1", false));
    EXPECT_TRUE(frame.Told.empty()) << "they have the same name";
    files.file(1).dataOfSerial("77")->NameX = "Day shift";
    files.file(2).dataOfSerial("77")->NameX = "Night shift";
    ASSERT_TRUE(PasteNode(files.session, "F2", "F1", false));
    ASSERT_TRUE(PasteNode(files.session, "L4I3F2", "F1", true));
    ASSERT_TRUE(PasteNode(files.session, "T2I3F2", "I2F1", false));
    const std::string text = "The logs of 'Night shift' went into 'Day shift', which has the same serial number.";
    EXPECT_EQ(frame.Told, std::vector({text, text}));
}

TEST(PasteNode, IsTakenBackWhenNoIdentityIsLeft) {
    TwoFiles files;
    files.log("L5I4F2").LogId = std::numeric_limits<std::int32_t>::max();
    EXPECT_FALSE(PasteNode(files.session, "F1", "F2", false));
    EXPECT_EQ(files.outline(2), "77(L4d T2u) 99(L2147483647e)");
    EXPECT_EQ(files.messages.Boxes.size(), 1U);
    EXPECT_FALSE(files.file(2).Changed);
    EXPECT_EQ(files.file(2).Edits.next(Direction::Undo), nullptr);
}

TEST(DeleteNode, AsksByKindAndChoosesTheNextNode) {
    struct Case {
        const char* key;
        Text::Id question; // None: nothing is asked
        std::string_view one;
        const char* next;
    };

    for (const Case& c : {Case{"I1F1", Text::AskRemoveDataset, "88(L3c)", "F1"},
                          Case{"I2F1", Text::AskRemoveDataset, "77(L1a L2b O1o T1t)", "I1F1"},
                          Case{"X1F1", Text::AskRemoveBroadbandLogs, "77(O1o T1t) 88(L3c)", "I1F1"},
                          Case{"X2F1", Text::AskRemoveBroadbandLogs, "77(L1a L2b O1o T1t) 88()", "F1"},
                          Case{"Y1F1", Text::AskRemoveOctaveLogs, "77(L1a L2b T1t) 88(L3c)", "X1F1"},
                          Case{"Z1F1", Text::AskRemoveOctaveLogs, "77(L1a L2b O1o) 88(L3c)", "X1F1"},
                          Case{"L1I1F1", Text::AskRemoveBroadbandLog, "77(L2b O1o T1t) 88(L3c)", "X1F1"},
                          Case{"L2I1F1", Text::AskRemoveBroadbandLog, "77(L1a O1o T1t) 88(L3c)", "L1I1F1"},
                          Case{"L3I2F1", Text::AskRemoveBroadbandLog, "77(L1a L2b O1o T1t) 88()", "I2F1"},
                          Case{"O1I1F1", Text::AskRemoveOctaveLog, "77(L1a L2b T1t) 88(L3c)", "I1F1"},
                          Case{"T1I1F1", Text::AskRemoveOctaveLog, "77(L1a L2b O1o) 88(L3c)", "I1F1"},
                          Case{"F1", Text::None, kOne, "F1"}, Case{"", Text::None, kOne, ""},
                          Case{"L9I1F1", Text::None, kOne, "L9I1F1"}}) {
        SCOPED_TRACE(c.key);
        TwoFiles files;
        files.session.Options.FilesOnTreeView = eDisplayFilesAsNodes;
        ExplorerState state;
        state.SelectedKey = c.key;
        state.DisplayedKey = c.key;
        files.messages.Answers = {Button::Cancel, Button::Ok};
        EXPECT_FALSE(DeleteNode(files.session, state));
        EXPECT_EQ(files.outline(1), kOne);
        EXPECT_EQ(DeleteNode(files.session, state), c.question != Text::None);
        EXPECT_EQ(files.outline(1), c.one);
        EXPECT_EQ(state.SelectedKey, c.next);
        EXPECT_EQ(state.DisplayedKey.empty(), c.question != Text::None || state.SelectedKey.empty());
        if (c.question == Text::None) continue;
        ASSERT_EQ(files.messages.Boxes.size(), 2U);
        EXPECT_EQ(files.messages.Boxes[1].Prompt, files.session.LoadText(c.question));
        EXPECT_EQ(buttonsOf(files.messages.Boxes[1].Flags), buttonsOf(kButtonsOkCancel));
        EXPECT_TRUE(files.file(1).Changed);
        EXPECT_TRUE(exchangeStep(files.session, &files.file(1), Direction::Undo));
        EXPECT_EQ(files.outline(1), kOne);
        EXPECT_FALSE(files.file(1).Changed);
    }
}

TEST(DeleteNode, WithoutFileNodesASoleCollectionLeavesNothingSelected) {
    TwoFiles files;
    files.session.Options.FilesOnTreeView = eHideFileNames;
    ExplorerState state;
    state.SelectedKey = "X4F2"; // its collection, a root, stays
    files.messages.Answers = {Button::Ok, Button::Ok};
    ASSERT_TRUE(DeleteNode(files.session, state));
    EXPECT_EQ(state.SelectedKey, "I4F2");
    state.SelectedKey = "I1F1"; // the first root
    ASSERT_TRUE(DeleteNode(files.session, state));
    EXPECT_EQ(state.SelectedKey, "");
    EXPECT_EQ(documentToEdit(files.session, "", Direction::Undo), &files.file(2));
}

TEST(Editing, LeavesLogsAloneThatAreStillLoading) {
    TwoFiles files;
    files.log("L2I1F1").IntervalsToLoad = true;
    ExplorerState state;
    for (const char* source : {"F1", "I1F1", "X1F1", "L2I1F1"}) {
        files.messages.Boxes.clear();
        files.messages.Answers = {Button::Ok, Button::Ok};
        EXPECT_FALSE(PasteNode(files.session, source, "F2", true));
        state.SelectedKey = source;
        EXPECT_FALSE(DeleteNode(files.session, state));
        EXPECT_EQ(files.messages.Boxes.front().Prompt, files.session.LoadText(Text::StillLoading));
        EXPECT_EQ(files.messages.Boxes.back().Prompt, files.session.LoadText(Text::StillLoading));
    }
    EXPECT_EQ(files.outline(1), kOne);
    EXPECT_TRUE(PasteNode(files.session, "L1I1F1", "F2", true));
}

TEST(MovedBetweenDocuments, IsUndoneInBothOrInNeither) {
    TwoFiles files;
    Session& session = files.session;
    ASSERT_TRUE(PasteNode(session, "L1I1F1", "F2", true));
    ASSERT_TRUE(PasteNode(session, "L3I2F1", "I1F1", false)); // the source's document goes on
    EXPECT_FALSE(exchangeStep(session, &files.file(2), Direction::Undo));
    EXPECT_EQ(files.outline(2), "77(L4d L1a T2u) 99(L5e)"); // the log would be nowhere
    EXPECT_NE(files.messages.Boxes.back().Prompt.find("one.xml"), std::string::npos);
    EXPECT_TRUE(exchangeStep(session, &files.file(1), Direction::Undo));
    EXPECT_TRUE(exchangeStep(session, &files.file(1), Direction::Undo)); // now the move, from the source's side
    EXPECT_EQ(files.outline(1), kOne);
    EXPECT_EQ(files.outline(2), kTwo);
    EXPECT_TRUE(exchangeStep(session, &files.file(2), Direction::Redo));
    EXPECT_EQ(files.outline(1), "77(L2b O1o T1t) 88(L3c)");

    session.OpenFiles.erase(session.OpenFiles.begin()); // closed
    EXPECT_FALSE(canExchange(&files.file(2), Direction::Undo));
    EXPECT_EQ(exchangeText(session, &files.file(2), Direction::Undo), "&Undo");
    EXPECT_EQ(files.outline(2), "77(L4d L1a T2u) 99(L5e)");
}

TEST(PasteNode, MarksNoDocumentThatHasTheIdentityOfAClosedOne) {
    TwoFiles files;
    Session& session = files.session;
    ASSERT_TRUE(PasteNode(session, "L4I3F2", "F1", false)); // marks the second document
    session.OpenFiles.pop_back();
    session.OpenFiles.push_back(std::make_unique<clsFile>(session, "three.xml"));
    AssignIdentities(session, true, 0);
    files.file(2).Changed = true; // by something that cannot be undone
    ASSERT_TRUE(exchangeStep(session, &files.file(1), Direction::Undo));
    EXPECT_TRUE(files.file(2).Changed);
    files.file(2).Changed = false;
    ASSERT_TRUE(exchangeStep(session, &files.file(1), Direction::Redo));
    EXPECT_FALSE(files.file(2).Changed);
}

} // namespace
} // namespace kestrane

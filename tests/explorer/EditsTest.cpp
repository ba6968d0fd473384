#include "explorer/Edits.h"

#include "TestSession.h"
#include "explorer/CalculationEntries.h"
#include "explorer/CalibrationEdits.h"
#include "explorer/ExposureEdits.h"
#include "explorer/NodeEditing.h"
#include "explorer/NodeKeys.h"
#include "explorer/NodeRename.h"
#include "server/KestraneThread.h"
#include "views/Selection.h"

#include <gtest/gtest.h>

namespace kestrane {
namespace {

// One document of one log, L1I1F1, with ten rows.
struct OneLog : TestSession {
    OneLog() {
        session.server = &server;
        session.OpenFiles.push_back(std::make_unique<clsFile>(session, "a.xml"));
        auto data = std::make_unique<clsInsData>(session);
        data->append(std::make_unique<clsLog>(session), 0);
        session.OpenFiles.back()->InstrumentDatas.push_back(std::move(data));
        AssignIdentities(session, true, 0);
        log().LogIntervals.setArraySize(10);
        for (std::size_t row = 0; row < 10; ++row)
            log().LogIntervals.Columns().setLevel(Quantity::LeqA, 0, row, {80, 80});
        log().CalibDate.setDate("01/02/2020", session.locale);
        fillExposureRows(log());
    }

    ~OneLog() { session.OpenFiles.clear(); }

    void wait() {
        pump.runUntil([&] { return session.IsIdle(); });
    }

    clsFile& file() { return *session.OpenFiles.front(); }

    clsLog& log() { return *file().InstrumentDatas.front()->Locations.front(); }

    bool undo() { return exchangeStep(session, &file(), Direction::Undo); }

    bool redo() { return exchangeStep(session, &file(), Direction::Redo); }

    std::string undoText() { return exchangeText(session, &file(), Direction::Undo); }

    BackgroundServer server{pump};
};

// What the commands below change.
std::string stateOf(const clsLog& log) {
    std::string text = log.Name + "|" + std::to_string(log.Criterion) + "|" + std::to_string(log.Exchange) + "|" +
                       log.CalibDate.Format() + "|" + std::to_string(log.UserCalibration.Offset) + "|" +
                       std::to_string(log.DoseLogIntervals.size()) + "|";
    for (const std::string& cut : log.LogIntervals.CutIntervals)
        text += cut + ",";
    return text + std::to_string(log.LogIntervals.IncludedCount());
}

TEST(Undo, TakesBackEveryCommandInTurnAndDoesItAgain) {
    OneLog one;
    clsLog& log = one.log();
    one.messages.Answers = {Button::Yes};
    const AskText two = [](const std::string&, const std::string&) { return std::string("2"); };

    struct Command {
        const char* title;
        std::function<bool()> run;
    };

    const Command commands[] = {
        {"&Undo Rename", [&] { return renameNode(one.session, "L1I1F1", "Morning"); }},
        {"&Undo Calculation Settings",
         [&] {
             return applyChanges(log, log, {"85", "5", "01/02/2020"}, {});
         }},
        {"&Undo Calibration",
         [&] {
             return setCalibration(log, log, {9400, 9460, 30});
         }},
        {"&Undo Calibration Date",
         [&] {
             return applyChanges(log, log, {"85", "5", "03/02/2020"}, {});
         }},
        {"&Undo Recalculation", [&] { return FullRecalc(log, log); }},
        {"&Undo Exposure Rows", [&] { return InsertRows(log, 0, two); }},
        {"&Undo Exposure Rows", [&] { return EnterCell(log, 1, eColumnLeq, "91.5") == CellEntry::Stored; }},
        {"&Undo Exposure Rows", [&] { return DeleteRows(log, 1, two); }},
        {"&Undo Exposure Rows", [&] { return pasteExposureRows(log, 0, eColumnLeq, "88\n89\n").Rows == 2; }},
        {"&Undo Interval Selection", [&] {
             return editLog(log, Text::StepIntervalSelection, [&] {
                 setIntervalSelection(log, {{2, 4}}, false);
                 log.LogIntervals.ApplySelection();
                 return true;
             });
         }}};
    std::vector<std::string> states = {stateOf(log)};
    for (const Command& command : commands) {
        ASSERT_TRUE(command.run()) << command.title;
        one.wait();
        EXPECT_EQ(one.undoText(), command.title);
        states.push_back(stateOf(log));
    }
    EXPECT_TRUE(one.file().Changed); // no text but that of the rows tells a selection
    for (std::size_t i = std::size(commands); i-- > 0;) {
        EXPECT_TRUE(one.undo());
        EXPECT_EQ(stateOf(log), states[i]) << commands[i].title;
    }
    EXPECT_FALSE(one.undo());
    EXPECT_FALSE(one.file().Changed);
    for (std::size_t i = 0; i < std::size(commands); ++i) {
        EXPECT_TRUE(one.redo());
        EXPECT_EQ(stateOf(log), states[i + 1]) << commands[i].title;
    }
    EXPECT_FALSE(one.redo());
}

TEST(Calibration, IsTypedAppliedNamedAndTakenBack) {
    const auto typed = [](const char* before, const char* after, const char* offset) {
        return typedCalibration({before, after, offset}, {});
    };
    EXPECT_EQ(typed(" 94", "93.98", "-0.3"), (Calibration{9400, 9398, -30}));
    EXPECT_EQ(typed("", "", ""), Calibration());
    EXPECT_FALSE(typed("94 dB", "", "") || typed("9.4", "", "") || typed("", "nan", "") || typed("", "", "21"));
    EXPECT_FALSE((Calibration{9400, 9350, 0}.DriftsTooFar())) << "half a decibel is allowed";
    EXPECT_TRUE((Calibration{9400, 9349, 0}.DriftsTooFar()));
    EXPECT_FALSE((Calibration{0, 9349, 0}.DriftsTooFar())) << "what was not noted does not drift";

    OneLog one;
    clsLog& log = one.log();
    log.LeqCumA(0).Value(80);
    log.LmaxCumA(0).Value(95); // of the meter, which no row reaches
    const auto set = [&](std::int16_t offset) { EXPECT_TRUE(setCalibration(log, log, {9400, 9460, offset})); };
    set(30);
    EXPECT_TRUE(one.file().Changed);
    EXPECT_FLOAT_EQ(log.LeqCumA(0).CalcValue(), 80.3F);
    EXPECT_FLOAT_EQ(log.LmaxCumA(0).CalcValue(), 95.3F);
    const HistoryLine line = one.file().History.lines().back();
    EXPECT_EQ(line.What, "Calibration");
    EXPECT_NE(line.After.find("94.0 dB before, 94.6 dB after, drift +0.6 dB"), std::string::npos) << line.After;
    EXPECT_NE(line.After.find("+0.3 dB added to all levels"), std::string::npos) << line.After;
    set(-20);
    EXPECT_FLOAT_EQ(log.LeqCumA(0).CalcValue(), 79.8F) << "the offset is that of the levels as they were measured";
    EXPECT_FALSE(setCalibration(log, log, {9400, 9460, -20}));
    one.undo();
    one.undo();
    EXPECT_EQ(log.UserCalibration, Calibration());
    EXPECT_EQ(log.LogIntervals.Columns().level(Quantity::LeqA, 0, 9), (Level{80, 80}));
}

TEST(Undo, KeepsNoStepOfACommandThatChangedNothing) {
    OneLog one;
    clsLog& log = one.log();
    one.messages.Answers = {Button::No};
    const AskText nothing = [](const std::string&, const std::string&) { return std::nullopt; };
    ASSERT_TRUE(renameNode(one.session, "L1I1F1", "Morning"));
    ASSERT_TRUE(one.undo());
    one.file().InstrumentDatas.front()->NameX = "Site";
    one.file().InstrumentDatas.front()->InsSerial = "77";
    EXPECT_EQ(editableText(one.session, "I1F1"), "Site") << "without the serial that its node shows";
    EXPECT_FALSE(renameNode(one.session, "L1I1F1", ""));
    EXPECT_FALSE(applyChanges(log, log, {"85", "3", "01/02/2020"}, {}));
    EXPECT_FALSE(InsertRows(log, 0, nothing));
    EXPECT_NE(EnterCell(log, 0, eColumnLeq, "loud"), CellEntry::Stored);
    EXPECT_FALSE(one.undo());
    EXPECT_TRUE(one.redo()); // and they leave what was undone
    ASSERT_TRUE(one.undo());
    ASSERT_TRUE(renameNode(one.session, "L1I1F1", "Evening"));
    EXPECT_FALSE(one.redo());
}

TEST(Undo, ComparesWithThePlaceOfSaving) {
    OneLog one;
    const auto rename = [&](const char* name) { ASSERT_TRUE(renameNode(one.session, "L1I1F1", name)); };
    rename("1");
    rename("2");
    one.file().Edits.markSaved();
    one.file().Changed = false;
    one.undo();
    EXPECT_TRUE(one.file().Changed);
    one.redo();
    EXPECT_FALSE(one.file().Changed);
    one.undo();
    rename("3"); // the saved state is out of reach
    one.undo();
    one.undo();
    EXPECT_TRUE(one.file().Changed);

    one.file().Edits.markSaved();
    one.file().Changed = true; // by something that cannot be undone
    rename("4");
    one.undo();
    EXPECT_TRUE(one.file().Changed);

    one.file().Edits.markSaved();
    for (int i = 0; i < 150; ++i)
        rename(std::to_string(i).c_str());
    int undone = 0;
    while (one.undo())
        ++undone;
    EXPECT_EQ(undone, 100);
    EXPECT_TRUE(one.file().Changed);
    EXPECT_EQ(one.log().Name, "49");
}

TEST(Undo, SharesTheColumnsThatTheChangeLeftAlone) {
    OneLog one;
    clsLog& log = one.log();
    const IntervalColumns& columns = log.LogIntervals.Columns();
    const Level* const levels = columns.levels(Quantity::LeqA, 0).data();
    ASSERT_TRUE(editLog(log, Text::StepNote, [&] {
        log.LogIntervals.Columns().setLevel(Quantity::PeakA, 0, 3, {100, 100});
        return true;
    }));
    EXPECT_EQ(columns.levels(Quantity::LeqA, 0).data(), levels);
    ASSERT_TRUE(one.undo());
    EXPECT_EQ(columns.levels(Quantity::LeqA, 0).data(), levels);
    EXPECT_EQ(columns.level(Quantity::PeakA, 0, 3).Value, 0);
}

TEST(Undo, WaitsForBackgroundWorkAndMakesGoodARecalculationThatItCutShort) {
    OneLog one;
    clsLog& log = one.log();
    log.RecalcMode = kCalcFull;
    log.IntervalsRecalculating = true; // the figures kept are those before it ended
    ASSERT_TRUE(editLog(log, Text::StepNote, [&] { return log.Note = "x", true; }));
    EXPECT_FALSE(canExchange(&one.file(), Direction::Undo));
    EXPECT_FALSE(one.undo());
    log.IntervalsRecalculating = false;
    log.FullyCalculated = false;
    const auto recalculations = log.RecalcID;
    ASSERT_TRUE(one.undo());
    EXPECT_EQ(log.RecalcID, recalculations + 1);
    one.wait();

    log.IntervalsToLoad = true;
    EXPECT_FALSE(editLog(log, Text::StepNote, [&] { return log.Note = "y", true; }));
    EXPECT_EQ(one.messages.Boxes.back().Prompt, one.session.LoadText(Text::StillLoading));
    EXPECT_EQ(log.Note, "");
    EXPECT_TRUE(renameNode(one.session, "L1I1F1", "Morning")); // a name needs no rows
}

TEST(Undo, AZoomedCopyWithOtherSettingsGivesWayToTheLog) {
    OneLog one;
    clsLog& log = one.log();
    ExplorerState state;
    state.NodeClick("L1I1F1");
    state.takeDisplayed(one.session);
    state.ZoomRange.ByTime = true;
    state.ZoomRange.Range = {2, 5};
    one.messages.Answers = {Button::No, Button::Yes};
    ASSERT_TRUE(state.ApplyZoom(one.session));
    ASSERT_TRUE(applyChanges(log, *state.LogInView(one.session), {"85", "5", "01/02/2020"}, {}));
    one.wait();
    one.pump.runUntil([&] { return !state.LogInView(one.session)->IntervalsRecalculating; });
    const std::string basis = state.BasisOfFigures(one.session);
    ASSERT_TRUE(one.undo());
    EXPECT_NE(state.BasisOfFigures(one.session), basis);
    EXPECT_TRUE(state.endZoom(one.session));
    EXPECT_FALSE(state.endZoom(one.session));
    EXPECT_EQ(state.LogInView(one.session), &log);
}

TEST(Undo, FollowsAPasteWhateverIsSelectedUntilSomethingElseIsDone) {
    OneLog one;
    one.session.OpenFiles.push_back(std::make_unique<clsFile>(one.session, "/b.xml"));
    AssignIdentities(one.session, true, 0);
    const clsFile& other = *one.session.OpenFiles.back();
    const auto edited = [&](Direction direction) { return documentToEdit(one.session, "L1I1F1", direction); };
    ASSERT_TRUE(renameNode(one.session, "L1I1F1", "Morning"));
    EXPECT_FALSE(other.IsUnsaved());
    ASSERT_TRUE(PasteNode(one.session, "F1", "F2", false));
    EXPECT_TRUE(other.IsUnsaved());
    EXPECT_EQ(exchangeText(one.session, edited(Direction::Undo), Direction::Undo), "&Undo Merge");
    ASSERT_TRUE(exchangeStep(one.session, edited(Direction::Undo), Direction::Undo));
    EXPECT_TRUE(other.InstrumentDatas.empty());
    EXPECT_FALSE(other.IsUnsaved());
    EXPECT_EQ(edited(Direction::Redo), &other);
    EXPECT_EQ(edited(Direction::Undo), &one.file());
    ASSERT_TRUE(exchangeStep(one.session, edited(Direction::Redo), Direction::Redo));
    ASSERT_TRUE(renameNode(one.session, "L1I1F1", "Evening"));
    EXPECT_EQ(edited(Direction::Undo), &one.file());
}

TEST(History, SaysWhatEveryEditChangedOnceItsFiguresAreThere) {
    OneLog one;
    clsLog& log = one.log();
    log.Name = "Morning";
    log.Interval = 60;
    one.messages.Answers = {Button::Yes};
    applyChanges(log, log, {"85", "5", "01/02/2020"}, {});
    EXPECT_TRUE(log.IntervalsRecalculating);
    EXPECT_EQ(one.file().History.lines().back().After.find("LAeq"), std::string::npos); // they are not there yet
    one.wait();
    HistoryLine line = one.file().History.lines().back();
    EXPECT_EQ(line.What + "|" + line.Log + "|" + line.Identity, "Calculation Settings|Morning|Broadband");
    EXPECT_TRUE(line.Before.starts_with("Criterion Level: 90 dB; Exchange Rate: 3 dB; ")) << line.Before;
    EXPECT_TRUE(line.After.starts_with("Criterion Level: 85 dB; Exchange Rate: 5 dB; ")) << line.After;
    EXPECT_NE(line.After.find("Leq: 80.0 dB"), std::string::npos) << line.After; // every row has 80 dB

    editLog(log, Text::StepIntervalSelection, [&] {
        setIntervalSelection(log, {{2, 3}, {5, 5}}, false);
        log.CutReason = "Radio";
        return true;
    });
    const auto last = [&] {
        line = one.file().History.lines().back();
        return line.What + "|" + line.Before + "|" + line.After + "|" + line.Reason;
    };
    EXPECT_EQ(last(),
              "Interval Selection|Interval Selection: none|Interval Selection: Exclude From Display 2-3, 5-5|Radio");
    one.undo();
    EXPECT_EQ(last(),
              "Undo Interval Selection|Interval Selection: Exclude From Display 2-3, 5-5|Interval Selection: none|");
    EXPECT_EQ(log.CutReason, "");

    one.session.Show(LanguageOf("de")); // a history is a file, and does not depend on the user's language
    one.redo();
    EXPECT_EQ(last(), "Redo Interval Selection|Interval Selection: none|"
                      "Interval Selection: Exclude From Display 2-3, 5-5|Radio");
    EXPECT_EQ(one.undoText(), "&R\u00FCckg\u00E4ngig: Intervallauswahl");
    one.undo();
    one.session.Show({});

    renameNode(one.session, "L1I1F1", "Evening");
    EXPECT_EQ(last(), "Rename|Morning|Evening|");
    EXPECT_EQ(line.Log, "Evening");
    EXPECT_EQ(one.file().History.lines().at(2).Log, "Morning");
    PasteNode(one.session, "L1I1F1", "I1F1", false);
    EXPECT_EQ(last(), "Paste||Evening [Broadband]|");
    ExplorerState state;
    state.SelectedKey = "L1I1F1";
    one.messages.Answers = {Button::Ok};
    EXPECT_TRUE(DeleteNode(one.session, state));
    EXPECT_EQ(last(), "Delete Log|Evening [Broadband]||");
    one.undo();
    EXPECT_EQ(last(), "Undo Delete Log||Evening [Broadband]|");
    EXPECT_EQ(one.file().History.lines().size(), 9U);
}

} // namespace
} // namespace kestrane

#include "app/Menus.h"

#include "TestSession.h"
#include "explorer/Edits.h"
#include "explorer/NodeKeys.h"
#include "views/LogView.h"

#include <gtest/gtest.h>

#include <cctype>
#include <map>
#include <set>
#include <sstream>

namespace kestrane {
namespace {

struct OpenFile : TestSession {
    OpenFile() {
        session.OpenFiles.push_back(std::make_unique<clsFile>(session, "/data/a.xml"));
        auto data = std::make_unique<clsInsData>(session);
        data->append(clsLog(session), 0);
        session.OpenFiles.back()->InstrumentDatas.push_back(std::move(data));
        AssignIdentities(session, true, 0);
    }

    clsLog& log() { return *session.OpenFiles.front()->InstrumentDatas.front()->Locations.front(); }
};

TEST(IsMenuEnabled, FollowsWhatIsOpenAndSelected) {
    // Columns: no explorer, nothing selected, file, group, log, log while its rows load, log on display: full log,
    // panel
    struct Case {
        Command command;
        const char* enabled;
    };

    const Case cases[] = {
        {Command::FileDownload, "yyyyyyyy"},
        {Command::FileOpen, "yyyyyyyy"},
        {Command::FileMerge, "nnyyynyy"},
        {Command::FileCloseAll, "yyyyyyyy"},
        {Command::FileSave, "nnyyynyy"},
        {Command::FileSaveAs, "nnyyynyy"},
        {Command::EditFind, "nyyyyyyy"},
        {Command::FilePrint, "nnnnnnyy"},
        {Command::PrintDefault, "nnnnnnyy"},
        {Command::PrintIntervals, "nnnnnnnn"}, // there are none
        {Command::PrintCurrentView, "nnnnnnyy"},
        {Command::ForceRecalc, "nnnnynyy"},
        {Command::TreeDisplayOptions, "nyyyyyyy"},
        {Command::LogLegend, "nnnnnnyn"},
        {Command::LogInsertRows, "nnnnnnnn"},
        {Command::LogCompareHPD, "nnnnnnnn"},
        {Command::LogConvertWeighting, "nnnnnnnn"},
        {Command::LogAddToAssessment, "nnnnnnnn"},
        {Command::ViewHPD, "nnnnnnnn"},
        {Command::LogDisplayOptions, "nnnnnnyy"},
        {Command::ToolsSettings, "yyyyyyyy"},
        {Command::ToolsSynchronizeClocks, "yyyyyyyy"},
    };
    OpenFile open;
    const auto answer = [&](Command command, const MenuState& state) {
        return IsMenuEnabled(open.session, command, state) ? 'y' : 'n';
    };
    for (const Case& c : cases) {
        std::string enabled;
        enabled += answer(c.command, {});
        for (const char* key : {"", "F1", "X1F1", "L1I1F1"})
            enabled += answer(c.command, {true, key, nullptr, eTabFullLog});
        open.log().IntervalsLoading = true;
        enabled += answer(c.command, {true, "L1I1F1", nullptr, eTabFullLog});
        open.log().IntervalsLoading = false;
        for (const LogTab tab : {eTabFullLog, eTabCumulativeData})
            enabled += answer(c.command, {true, "L1I1F1", &open.log(), tab});
        EXPECT_EQ(enabled, c.enabled) << static_cast<int>(c.command);
    }
    const MenuState shown = {true, "L1I1F1", &open.log(), eTabFullLog};
    open.log().LogIntervals.setArraySize(1);
    EXPECT_EQ(answer(Command::PrintIntervals, shown), 'y');
    EXPECT_EQ(answer(Command::LogAddToAssessment, shown), 'y');
    open.log().IntervalsRecalculating = true;
    EXPECT_EQ(answer(Command::FilePrint, shown), 'n');
    clsLog octaves(open.session);
    octaves.Mode(modeFullOctave);
    EXPECT_EQ(answer(Command::LogConvertWeighting, {true, "O1I1F1", &octaves}), 'y');
    octaves.IntervalsRecalculating = true;
    EXPECT_EQ(answer(Command::LogConvertWeighting, {true, "O1I1F1", &octaves}), 'n');
    open.session.OpenFiles.clear();
    EXPECT_EQ(answer(Command::FileCloseAll, {true, "", nullptr, eTabFullLog}), 'n');
    EXPECT_EQ(answer(Command::FileSave, {true, "F1", nullptr, eTabFullLog}), 'n'); // of a file that has gone

    const std::pair<int, bool> groups[] = {{0, false}, {3, false}, {10, false}, {14, false}, {24, false}};
    for (const auto& [index, isEnabled] : groups)
        EXPECT_EQ(IsGroupEnabled(open.session, Menu::LogPopup, index, {true, "", nullptr, eTabFullLog}), isEnabled)
            << index;
    EXPECT_TRUE(IsGroupEnabled(open.session, Menu::LogPopup, 14, {true, "L1I1F1", nullptr, eTabFullLog}));
}

TEST(IsMenuEnabled, CopyFollowsTheActiveControlZoomAndCutTheRows) {
    OpenFile open;
    clsLog part(open.session);
    const auto answer = [&](Command command, const MenuState& state) {
        return IsMenuEnabled(open.session, command, state);
    };
    MenuState state{true, "L1I1F1", &open.log(), eTabFullLog, false, false, true, &open.log()};
    EXPECT_TRUE(answer(Command::EditCopy, state) && answer(Command::EditCopyValues, state));
    EXPECT_TRUE(answer(Command::LogShowTable, state));
    state.Tab = eTabIntervalsTable;
    EXPECT_TRUE(answer(Command::EditCopy, state));
    EXPECT_FALSE(answer(Command::EditCopyValues, state) || answer(Command::LogShowTable, state));
    state.IsTreeActive = true;
    EXPECT_FALSE(answer(Command::EditCopyValues, state));

    EXPECT_FALSE(answer(Command::ViewZoom, state) || answer(Command::ViewIntervals, state));
    open.log().LogIntervals.setArraySize(2);
    EXPECT_TRUE(answer(Command::ViewZoom, state) && answer(Command::ViewIntervals, state));
    part.LogIntervals.setArraySize(1);
    state.InView = &part;
    EXPECT_TRUE(answer(Command::ViewZoom, state)) << "back to the whole log";
    EXPECT_FALSE(answer(Command::ViewIntervals, state));
    state.Tab = eTabNoiseRating;
    EXPECT_FALSE(answer(Command::ViewZoom, state));

    state.Tab = eTabFullLog;
    state.InView = &open.log();
    EXPECT_TRUE(answer(Command::LogDistribution, state) && answer(Command::RangeLoudest, state));
    EXPECT_FALSE(answer(Command::RangeExclude, state) || answer(Command::RangeZoom, state));
    state.HasRange = true;
    EXPECT_TRUE(answer(Command::RangeExclude, state) && answer(Command::RangeZoom, state));
    state.InView = &part; // a single row
    EXPECT_FALSE(answer(Command::RangeExclude, state));
    EXPECT_TRUE(answer(Command::RangeCopy, state));
    part.IntervalsRecalculating = true;
    EXPECT_FALSE(answer(Command::RangeCopy, state) || answer(Command::LogDistribution, state));
}

TEST(IsMenuEnabled, EditingOfNodesIsForTheTree) {
    OpenFile open;
    MenuState state = {true, "L1I1F1", nullptr, eTabFullLog};
    const auto enabled = [&] {
        std::string text;
        for (const Command command :
             {Command::EditCut, Command::EditCopy, Command::EditPaste, Command::EditDelete, Command::EditUndo})
            text += IsMenuEnabled(open.session, command, state) ? 'y' : 'n';
        return text;
    };
    EXPECT_EQ(enabled(), "nnnyn"); // the log view has the focus
    state.IsTreeActive = true;
    EXPECT_EQ(enabled(), "yynyn");
    state.CopiedKey = "L1I1F1";
    EXPECT_EQ(enabled(), "yynyn"); // not on itself
    state.SelectedKey = "I1F1";
    EXPECT_EQ(enabled(), "nnyyn");
    state.SelectedKey = "Y1F1";
    EXPECT_EQ(enabled(), "nnnyn");
    state.HasClipboardFiles = true;
    EXPECT_EQ(enabled(), "nnyyn");
    ASSERT_TRUE(editLog(open.log(), Text::StepNote, [&] { return open.log().Note = "x", true; }));
    state.SelectedKey = "F1";
    EXPECT_EQ(enabled(), "nnyny");
    state.SelectedKey = "";
    EXPECT_EQ(enabled(), "nnyny"); // of the only document that has a step
    open.log().IntervalsLoading = true;
    EXPECT_EQ(enabled(), "nnynn");
    EXPECT_EQ(IsMenuEnabled(open.session, Command::EditPaste, {}), false);
}

TEST(MenuItems, StandInOrderAndNoKeyServesTwoCommands) {
    const MenuItem* before = nullptr;
    std::map<std::string, Command> keys;
    TestSession test;
    for (const MenuItem& item : menuItems()) {
        EXPECT_TRUE(before == nullptr || before->menu != item.menu || before->index < item.index) << item.text;
        before = &item;
        EXPECT_NE(test.session.LoadText(item.text), std::to_string(item.text));
        if (*item.keys == '\0') continue;
        std::istringstream each(item.keys);
        for (std::string key; std::getline(each >> std::ws, key, ';');) {
            const auto known = keys.emplace(key, item.command);
            EXPECT_EQ(known.first->second, item.command) << key;
        }
    }
    std::set<Command> reachable;
    for (const MenuItem& item : menuItems())
        reachable.insert(item.command);
    for (int command = 0; command <= static_cast<int>(Command::LogCalibration); ++command)
        EXPECT_TRUE(reachable.contains(static_cast<Command>(command))) << command;
}

TEST(MenuTexts, GiveEveryItemALetterOfItsOwnInEveryLanguage) {
    TestSession test;
    const auto isLetterThere = [](const std::string& text) { return text.find('&') != std::string::npos; };
    for (const Language& language : Languages()) {
        test.session.Show(language);
        for (int menu = 0; menu <= static_cast<int>(Menu::Range); ++menu) {
            std::set<int> letters;
            for (const std::string& text : menuTexts(test.session, static_cast<Menu>(menu))) {
                std::string marked = ReplaceText(text, "&&", "");
                ASSERT_TRUE(isLetterThere(marked)) << text;
                EXPECT_TRUE(letters.insert(std::tolower(marked.at(marked.find('&') + 1))).second) << menu << text;
                EXPECT_FALSE(isLetterThere(marked.replace(marked.find('&'), 1, ""))) << text;
            }
        }
    }
    test.session.Show({});
    EXPECT_EQ(menuTexts(test.session, Menu::Print),
              (std::vector<std::string>{"Default &Report", "&Cumulative Report", "Cumulative && &Intervals Report",
                                        "Cri&teria Report", "Current &View"}));
    EXPECT_EQ(menuTexts(test.session, Menu::Edit).back(), "&Edit Note...");
}

} // namespace
} // namespace kestrane

#include "views/Zoom.h"

#include "ShownLog.h"
#include "calc/Recalculation.h"
#include "explorer/CalculationEntries.h"
#include "explorer/ExplorerState.h"
#include "explorer/NodeKeys.h"
#include "server/KestraneThread.h"
#include "views/BandChart.h"
#include "views/Selection.h"

#include <gtest/gtest.h>

namespace kestrane {
namespace {

// A window on a log of rows of a minute, of 80 dB but for the last two of 90 dB; its instrument has told 85 dB.
struct Window : ShownLog {
    BackgroundServer server{pump};
    ExplorerState state;
    clsLog* opened;

    explicit Window(std::size_t count = 10) {
        session.server = &server;
        log.LeqCumA(0).Value(85);
        log.SELCumA.CalcValue(99); // computed, not told
        addRows(count);
        for (std::size_t row = 0; row < count; ++row)
            setLevel(Quantity::LeqA, 0, row, row + 2 < count ? 80 : 90);
        auto data = std::make_unique<clsInsData>(session);
        for (int i = 0; i < 2; ++i)
            data->append(log, 0);
        opened = data->Locations.front().get();
        session.OpenFiles.push_back(std::make_unique<clsFile>(session, "/data/a.xml"));
        session.OpenFiles.back()->InstrumentDatas.push_back(std::move(data));
        AssignIdentities(session, true, 0);
        show("L1I1F1");
    }

    void show(const char* key) {
        state.NodeClick(key);
        state.takeDisplayed(session);
    }

    bool zoom(std::int64_t from, std::int64_t to) {
        state.ZoomRange.ByTime = true;
        state.ZoomRange.Range = {from, to};
        return state.ApplyZoom(session);
    }

    clsLog& inView() { return *state.LogInView(session); }
};

TEST(Zoom, ShowsAPartAsALogOfItsOwn) {
    Window window;
    window.state.View.IntervalRow = 10;
    ASSERT_TRUE(window.zoom(9, 10));
    EXPECT_EQ(window.messages.Boxes.back().Prompt, "Recalculate cumulative data?");
    EXPECT_EQ(window.messages.Boxes.back().Flags, kButtonsYesNo | kIconQuestion | kDefaultSecond);
    clsLog& part = window.inView();
    EXPECT_NE(&part, window.opened);
    EXPECT_EQ(window.state.OpenedLog(window.session), window.opened);
    EXPECT_EQ(part.LogIntervals.Count(), 2);
    EXPECT_EQ(part.StartTime.hh_mm_ss(), "09:08:00");
    EXPECT_EQ(window.state.View.IntervalRow, 2) << "the row on view stays";
    EXPECT_EQ(part.SELCumA.CalcValue(), 0) << "the figures begin as the instrument told them";
    ASSERT_TRUE(window.zoom(1, 8));
    EXPECT_EQ(window.state.View.IntervalRow, 1) << "the row on view is none of these";

    window.messages.Answers = {Button::Yes};
    window.opened->LeqCumA(0).Value(0);
    ASSERT_TRUE(window.zoom(9, 10));
    EXPECT_FLOAT_EQ(window.inView().LeqCumA(0).CalcValue(), 90) << "what is missing is filled in from its rows";
    EXPECT_EQ(window.opened->LeqCumA(0).CalcValue(), 0);
    EXPECT_FALSE(window.inView().IntervalsRecalculating);
}

TEST(Zoom, SaysWhoseFiguresItHasUntilTheyAreItsOwn) {
    Window window;
    EXPECT_FALSE(showsWholeFigures(*window.opened, eTabCumulativeData));
    for (const Button answer : {Button::No, Button::Yes}) { // recalculated, the figures that were told stay
        window.messages.Answers = {answer};
        ASSERT_TRUE(window.zoom(9, 10));
        EXPECT_EQ(window.inView().LeqCumA(0).CalcValue(), 85);
        EXPECT_TRUE(showsWholeFigures(window.inView(), eTabCumulativeData));
        EXPECT_FALSE(showsWholeFigures(window.inView(), eTabIntervalsTable)) << "its rows are its own";
        EXPECT_TRUE(shownPanels(window.inView(), eTabIntervalsTable).WholeFigures) << "of all that is in view";
        EXPECT_FALSE(shownPanels(window.inView(), eTabExposureCalculator).WholeFigures);
    }
    EXPECT_EQ(wholeFiguresLine(window.inView()), "These cumulative figures are those of the whole log.");
    EXPECT_EQ(bandChart(window.inView(), 1, {"", eLeq}, kByDecibels)->Footnote, "");
    window.state.ZoomRange.RecalculateRange();
    window.pump.runUntil([&] { return !window.inView().IntervalsRecalculating; });
    EXPECT_FLOAT_EQ(window.inView().LeqCumA(0).CalcValue(), 90);
    EXPECT_EQ(wholeFiguresLine(window.inView()), "");
    EXPECT_EQ(window.opened->LeqCumA(0).CalcValue(), 85);

    window.opened->LeqCumA(0).Value(0);
    ASSERT_TRUE(window.zoom(9, 10));
    EXPECT_EQ(wholeFiguresLine(window.inView()), "") << "nothing was told";
}

TEST(Zoom, HasWhatTheWholeLogShowsNotWhatWasReported) {
    Window window;
    clsLog& log = *window.opened;
    log.LeqCumA(0).CalcValue(80); // two loud rows are left out
    log.DoseETCumA.Value(100);
    log.DoseETCumA.CalcValue(31.5F);
    setCriterion(log, {80, 3});
    ASSERT_TRUE(window.zoom(9, 10));
    EXPECT_EQ(window.inView().LeqCumA(0).CalcValue(), 80);
    EXPECT_EQ(window.inView().DoseETCumA.CalcValue(), 31.5F);
    EXPECT_EQ(reportedNote(window.inView(), kChannelA, eDoseET), "") << "it was computed";
}

TEST(Zoom, SaysWhetherItLeavesOtherRowsOutThanItsLog) {
    Window window;
    excludeRows(*window.opened, {4, 4});
    ASSERT_TRUE(window.zoom(3, 6));
    const Zoom& zoom = window.state.ZoomRange;
    EXPECT_EQ(zoom.otherSelectionLine(*window.opened), "");
    excludeRows(*window.opened, {9, 9}); // none of the zoom's
    EXPECT_EQ(zoom.otherSelectionLine(*window.opened), "");
    excludeRows(window.inView(), {3, 3});
    EXPECT_TRUE(zoom.otherSelectionLine(*window.opened).starts_with("Other intervals are left out here"));
    excludeRows(*window.opened, {5, 5}); // the same row
    EXPECT_EQ(zoom.otherSelectionLine(*window.opened), "");
}

TEST(Zoom, RefusesWhatCannotBeAndLeavesTheView) {
    Window window;
    ASSERT_TRUE(window.zoom(2, 5));
    const clsLog* before = &window.inView();
    EXPECT_FALSE(window.zoom(3, 11));
    window.opened->IntervalsRecalculating = true;
    EXPECT_FALSE(window.zoom(2, 3));
    EXPECT_EQ(window.messages.Boxes.back().Prompt, "Log intervals are still loading and are not yet available");
    EXPECT_EQ(&window.inView(), before);
}

TEST(Zoom, EndsWithTheWholeRangeAnotherLogAndALostNode) {
    Window window;
    window.zoom(2, 5);
    window.messages.Boxes.clear();
    ASSERT_TRUE(window.zoom(1, 10));
    EXPECT_EQ(&window.inView(), window.opened) << "the whole range makes no copy";
    window.zoom(2, 5);
    window.state.ZoomRange.ByTime = false;
    ASSERT_TRUE(window.state.ApplyZoom(window.session));
    EXPECT_EQ(&window.inView(), window.opened);
    EXPECT_EQ(window.state.ZoomRange.Range.To, 10) << "the lists go back to first and last";

    window.zoom(2, 5);
    window.show("L2I1F1");
    EXPECT_EQ(window.inView().LogId, 2);
    window.show("L1I1F1");
    EXPECT_EQ(&window.inView(), window.opened);
    EXPECT_FALSE(window.state.ZoomRange.ByTime);

    window.zoom(2, 5);
    window.session.OpenFiles.clear();
    window.state.RebuildTree(window.session, {});
    window.state.takeDisplayed(window.session);
    EXPECT_EQ(window.state.LogInView(window.session), nullptr);
    EXPECT_EQ(window.state.ZoomRange.copy(), nullptr);
}

TEST(Zoom, FollowsWhatIsChangedOfTheOpenedLog) {
    Window window;
    window.zoom(1, 5);
    window.opened->Name = "Another";
    window.opened->objLogOptions.ExposureTime = 4;
    window.opened->objLogOptions.LineWidth = 40;
    window.state.ZoomRange.follow(*window.opened);
    EXPECT_EQ(window.inView().Name, "Another");
    EXPECT_EQ(window.inView().objLogOptions.LineWidth, 40);
    EXPECT_NEAR(window.inView().LepdETCumA.CalcValue(), 82, 0.05) << "85 dB over 4 of 8 hours";
}

TEST(Zoom, OfFiveMinutesOrMoreIsAskedAboutBeforeAForcedRecalculation) {
    for (const auto& [rows, isAsked] : {std::pair(4, false), std::pair(5, true)}) {
        Window window;
        window.zoom(1, rows);
        window.messages.Boxes.clear();
        window.messages.Answers = {Button::No};
        EXPECT_EQ(FullRecalc(*window.opened, window.inView()), !isAsked) << rows;
        EXPECT_EQ(window.messages.Boxes.empty(), !isAsked);
    }
}

TEST(Zoom, CopiesNoMoreThanItsRange) {
    Window window(100'000);
    window.zoom(10, 19);
    EXPECT_LT(window.inView().LogIntervals.Columns().bytes(), 100'000U);
}

} // namespace
} // namespace kestrane

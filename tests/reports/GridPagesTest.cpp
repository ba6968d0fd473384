#include "reports/GridPages.h"
#include "ShownLog.h"
#include "reports/RecordingPage.h"
#include "reports/ViewPages.h"

#include <gtest/gtest.h>

namespace kestrane {
namespace {

const RecordedMetrics kUpright;

using Cells = std::vector<std::vector<std::string>>;

RecordingPage drawn(std::vector<std::string> captions, const Cells& cells, std::size_t totals = 0) {
    TestSession test;
    PageGrid grid{std::move(captions), cells.size(),
                  [&](std::size_t row, std::size_t column) { return cells[row][column]; }, totals};
    GridPages pages(test.session, {"Yard - Exp Calc", "yard.xml"}, std::move(grid), kUpright);
    RecordingPage page = recorded(pages, kUpright);
    EXPECT_EQ(page.pages, pages.pageCount());
    EXPECT_EQ(page.faults(), "");
    return page;
}

TEST(GridPages, ColumnsAreAsWideAsTheirLongestCellAndTwoCharacters) {
    const RecordingPage page = drawn({"", "Criterion", "Note"}, {{"1", "85", "press"}, {"2", "80", "a long one"}});
    std::vector<std::string> lines = page.lines(0);
    EXPECT_TRUE(lines.back().ends_with("|yard.xml|Page 1 of 1"));
    lines.pop_back();
    EXPECT_EQ(lines, (std::vector<std::string>{"Yard - Exp Calc", "Criterion|Note", "1|85|press", "2|80|a long one"}));
    EXPECT_NEAR(page.find("85")->box.Left, 1.5 + 0.3, 1e-9);
    EXPECT_NEAR(page.find("press")->box.Left, 1.5 + 0.3 + 1.1, 1e-9);
}

TEST(GridPages, AWideGridGoesOnBehindItsFirstColumn) {
    std::vector<std::string> captions = {"Time"};
    Cells cells(100, {"09:00:00"});
    for (int band = 0; band < 33; ++band) { // of 1.2 cm each, 14 in 17 cm
        captions.push_back("Band " + std::to_string(band + 10) + " Hz");
        for (std::size_t row = 0; row < cells.size(); ++row)
            cells[row].push_back(std::to_string(1000 * band) + "." + std::to_string(row));
    }
    const RecordingPage page = drawn(captions, cells);
    EXPECT_EQ(page.pages, 6U); // three parts of the columns, each of two pages
    EXPECT_EQ(page.lines(4).front(), "Yard - Exp Calc");
    EXPECT_EQ(page.lines(4)[1].substr(0, 15), "Time|Band 38 Hz");
    for (const std::vector<std::string>& row : cells) {
        for (std::size_t column = 1; column < row.size(); ++column)
            ASSERT_NE(page.find(row[column]), nullptr) << row[column];
    }
}

TEST(GridPages, OneLongColumnIsBrokenIntoLines) {
    const std::string note = "Two hundred and more characters about the press and what was done there, which is more "
                             "than the page has room for beside the figures, so that it stands in lines";
    const RecordingPage page =
        drawn({"Note", "Leq"}, {{note, "85.0"}, {"", "80.0"}, {std::string(3000, 'x'), "81.0"}, {"all", "90.0"}}, 1);
    EXPECT_NE(page.find("85.0"), nullptr);
    EXPECT_GE(page.find("80.0")->box.Top, page.find("85.0")->box.Top + 0.6);
    EXPECT_NEAR(page.find("90.0")->box.Left, page.find("85.0")->box.Left, 1e-9);
}

TEST(GridPages, NoCellOfALongGridRunsIntoTheNext) {
    Cells cells(12000, {"85.0", "80.0"});
    cells[7][0] = "850000000.0"; // in a row that is not measured
    const RecordingPage page = drawn({"Leq", "Lmin"}, cells);
    EXPECT_GT(page.pages, 100U);
    EXPECT_EQ(page.find("850000000.0"), nullptr);
}

TEST(GridPages, AnEmptyGridIsAPage) {
    EXPECT_EQ(drawn({"Time", "Leq"}, {}).pages, 1U);
}

TEST(ViewPages, PrintWhatTheTabsShow) {
    ShownLog shown;
    clsLog& log = shown.log;
    const clsFile file(shown.session, "/data/yard.xml");
    shown.addRows(2);
    shown.plot(kChannelA, kInterval, {eLeq});
    shown.setLevel(Quantity::LeqA, 0, 1, 70.5F);
    log.LeqCumA(0).Value(81.25F);
    log.IsChannelBOn = true;
    log.LeqCumB.Value(90);
    clsDoseLogSample row;
    row.Note = "press";
    row.Leq.Value(85);
    row.Duration = {4, 0, 0};
    row.IsIncluded = true;
    log.DoseLogIntervals.push_back(row);
    const auto lines = [&](PagedDocument& document) { return recorded(document, kUpright).lines(0); };
    const auto has = [](const std::vector<std::string>& all, const char* line) {
        return std::find(all.begin(), all.end(), line) != all.end();
    };

    const auto table = lines(*tablePages({file, log, eTabIntervalsTable, false, kUpright}, kChannelA, {}));
    EXPECT_TRUE(has(table, "Yard - Intervals (Table)"));
    EXPECT_TRUE(has(table, "Time|LAeq (CHA)"));
    EXPECT_TRUE(has(table, "03/06/24 09:01:00|70.5"));
    const auto both = lines(*panelPages({file, log, eTabCumulativeData, false, kUpright}, 0, ePanelBothChannels));
    EXPECT_TRUE(has(both, "Channel A|Channel B"));
    EXPECT_TRUE(has(both, "LAeq|81.3 dB|Leq|90.0 dB"));
    EXPECT_TRUE(has(lines(*panelPages({file, log, eTabCumulativeData, true, kUpright}, 0, ePanelMainChannelA)),
                    "LAeq|81.3 dB"));
    const auto exposures = lines(*exposurePages({file, log, eTabExposureCalculator, false, kUpright}));
    EXPECT_TRUE(has(exposures, "1|00:00:00|press|85.0|04:00:00|82.0|0.0|Y")); // without a criterion and rate
    shown.log.Name.clear();
    EXPECT_EQ(lines(*exposurePages({file, log, eTabExposureCalculator, false, kUpright})).front(), "Exp Calc");
    ShownLog octave(modeFullOctave);
    EXPECT_EQ(
        lines(*panelPages({file, octave.log, eTabCumulativeData, false, kUpright}, 7, ePanelMainChannelA)).front(),
        "Yard - Cumultv (Data) - 1k Hz");
    EXPECT_TRUE(has(exposures, "Total|04:00:00|82.0|0.0")) << exposures[3];
}

} // namespace
} // namespace kestrane

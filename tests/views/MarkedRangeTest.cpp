// The range that is marked on the time chart, its figures, and what becomes of the rows that count.
#include "views/MarkedRange.h"

#include "ShownLog.h"
#include "views/RangeTable.h"
#include "views/Selection.h"

#include <gtest/gtest.h>

#include <cmath>

namespace kestrane {
namespace {

using Rows = std::optional<std::pair<std::size_t, std::size_t>>;

Rows rows(std::size_t first, std::size_t last) {
    return std::pair(first, last);
}

TEST(MarkedRange, ADragMarksTheRowsThatItTouchesOrMovesAnEnd) {
    MarkedRange range(10);
    EXPECT_FALSE(range.rows());
    range.moveTo(3); // nothing has been taken hold of
    EXPECT_FALSE(range.rows());
    range.takeAt({6.4, 0.3});
    range.moveTo(2.6);
    EXPECT_EQ(range.rows(), rows(3, 6));
    EXPECT_EQ(range.movingRow(), 3U);
    range.moveTo(-20);
    EXPECT_EQ(range.rows(), rows(0, 6));
    range.takeAt({6.6, 0.3}); // the last row ends at 6.5
    range.moveTo(99);
    EXPECT_EQ(range.rows(), rows(0, 9));
    range.takeAt({-0.3, 0.3});
    range.moveTo(4);
    EXPECT_EQ(range.rows(), rows(4, 9));
    range.takeAt({7, 0.3}); // in the middle: a new one
    EXPECT_EQ(range.rows(), rows(7, 7));
    range.clear();
    EXPECT_FALSE(range.rows());

    MarkedRange none(0);
    none.takeAt({1, 1});
    none.step(1, 0);
    none.mark(0, 3);
    EXPECT_FALSE(none.rows());
}

TEST(MarkedRange, KeysMoveOneCursorPastTheOther) {
    MarkedRange range(10);
    range.step(2, 5);
    EXPECT_EQ(range.rows(), rows(5, 7));
    range.exchange();
    range.step(4, 0);
    EXPECT_EQ(range.rows(), rows(7, 9));
    EXPECT_EQ(range.movingRow(), 9U);
    range.step(-100, 0);
    EXPECT_EQ(range.rows(), rows(0, 7));
    range.mark(8, 40);
    EXPECT_EQ(range.rows(), rows(8, 9));
    range.mark(10, 11);
    EXPECT_FALSE(range.rows());
}

// Four rows of ten minutes from 23:30 on.
struct NightLog : ShownLog {
    NightLog() {
        log.Interval = 600;
        log.Criterion = 85;
        log.Exchange = 3;
        addRows(4);
        IntervalColumns& columns = log.LogIntervals.Columns();
        for (std::size_t row = 0; row < 4; ++row) {
            columns.set(columns.StartTime, row, (23 * 3600 + 1800 + static_cast<std::int32_t>(row) * 600) % 86400);
            if (row == 3) columns.set(columns.StartDate, row, fromCivil({2024, 6, 4}));
            setLevel(Quantity::LeqA, 0, row, row == 1 ? 95.0F : 85.0F);
        }
        setLevel(Quantity::PeakA, 0, 2, 131.25F);
    }

    std::string value(const RowRange& range, const std::string& name, double percent = 50) {
        for (const RangeFigure& figure : rangeTable(log, analysedRows(log), range, percent))
            if (figure.Name == name) return figure.Value;
        return "?";
    }

    void exclude(const RowRange& range) {
        excludeRows(log, range);
        log.LogIntervals.ApplySelection();
    }
};

TEST(RangeTable, MeasuresTheRangeAndTheRestOfTheLog) {
    NightLog night;
    const RowRange range = {2, 3};
    EXPECT_EQ(night.value(range, "lblRangeStart"), "03/06/24 23:40:00");
    EXPECT_EQ(night.value(range, "lblRangeEnd"), "04/06/24 00:00:00");
    EXPECT_EQ(night.value(range, "lblRangeLength"), "00:20:00");
    EXPECT_EQ(night.value(range, "lblRangeLeq"), "92.4 dB"); // 10 lg((10^9.5 + 10^8.5) / 2)
    EXPECT_EQ(night.value(range, "lblRangeLE"), "123.2 dB"); // and 10 lg 1200
    EXPECT_EQ(night.value(range, "lblRangePeak"), "131.3 dB");
    EXPECT_EQ(night.value(range, "lblRangeLmax"), "");
    EXPECT_EQ(night.value(range, "lblRangeDose"), "23.1 %"); // 10 / 480 of 2^(10/3) and of 1
    EXPECT_EQ(night.value(range, "lblRangeLn"), "90.0 dB");  // half way from 95 to 85
    EXPECT_EQ(night.value(range, "lblRestLeq"), "85.0 dB");
    EXPECT_EQ(night.value(range, "lblRestDose"), "4.2 %"); // 20 / 480

    const auto figures = rangeTable(night.log, analysedRows(night.log), {4, 4}, 12.5);
    EXPECT_EQ(
        spokenRange(figures),
        "Start 04/06/24 00:00:00, End 04/06/24 00:10:00, Length 00:10:00, LAeq 85.0 dB, LE 112.8 dB, Dose (85 dB, 3 "
        "dB) 2.1 %, L12.5 85.0 dB, LAeq without it 91.0 dB, Dose (85 dB, 3 dB) without it 25.2 %");
    const ClipboardForms copied = copiedRange(night.log, figures);
    EXPECT_TRUE(copied.Text.starts_with("Yard\r\nStart\t04/06/24 00:00:00\r\n"));
    EXPECT_NE(copied.Html.find("<th scope=\"row\">LAeq</th><td>85.0 dB</td>"), std::string::npos);
    night.log.FreqWeightA("C");
    EXPECT_NE(spokenRange(rangeTable(night.log, analysedRows(night.log), {4, 4}, 12.5))
                  .find("LCeq 85.0 dB, LE (not A-weighted) 112.8 dB, Dose (85 dB, 3 dB) (not A-weighted) 2.1 %"),
              std::string::npos);
}

TEST(RangeTable, LeavesEmptyWhatIsNotKnown) {
    NightLog night;
    night.exclude({2, 2});
    EXPECT_EQ(night.value({2, 3}, "lblRangeLength"), "00:10:00 of 00:20:00");
    EXPECT_EQ(night.value({2, 3}, "lblRangeLeq"), "85.0 dB");
    night.exclude({1, 4});
    for (const char* name : {"lblRangeLeq", "lblRangeLE", "lblRangeDose", "lblRangeLn", "lblRestLeq", "lblRestDose"})
        EXPECT_EQ(night.value({1, 2}, name), "") << name;

    NightLog untimed;
    untimed.log.Interval = 0;
    EXPECT_EQ(untimed.value({2, 3}, "lblRangeLength"), "");
    EXPECT_EQ(untimed.value({2, 3}, "lblRangeLE"), "");
    EXPECT_EQ(untimed.value({2, 3}, "lblRangeLeq"), "92.4 dB");
    EXPECT_EQ(untimed.value({2, 3}, "lblRangeEnd"), "03/06/24 23:50:00");
}

TEST(Selection, ARangeIsLeftOutBesidesWhatWasLeftOutBefore) {
    ShownLog shown;
    shown.addRows(10);
    clsLogIntervals& intervals = shown.log.LogIntervals;
    using Texts = std::vector<std::string>;
    EXPECT_TRUE(excludeRows(shown.log, {4, 5}));
    shown.log.CutReason = "Radio";
    EXPECT_FALSE(excludeRows(shown.log, {5, 5}));
    EXPECT_EQ(shown.log.CutReason, "Radio");
    EXPECT_TRUE(excludeRows(shown.log, {5, 6}));
    EXPECT_EQ(shown.log.CutReason, "") << "nobody gave it for row 6";
    EXPECT_TRUE(excludeRows(shown.log, {9, 9}));
    EXPECT_EQ(intervals.CutIntervals, (Texts{"4~6", "9~9"}));
    EXPECT_FALSE(excludeRows(shown.log, {5, 6}));

    shown.log.CutReason = "Break";
    EXPECT_TRUE(includeOnly(shown.log, {3, 8}));
    EXPECT_EQ(shown.log.CutReason, "") << "it is not why these rows count";
    EXPECT_FALSE(includeOnly(shown.log, {3, 8}));
    EXPECT_TRUE(excludeRows(shown.log, {5, 10}));
    EXPECT_FALSE(intervals.IntervalsToBeIncluded);
    EXPECT_EQ(intervals.CutIntervals, (Texts{"1~2", "5~10"})); // rows 3 and 4 are left
    EXPECT_TRUE(excludeRows(shown.log, {1, 10}));
    EXPECT_EQ(intervals.CutIntervals, Texts{"1~10"});
}

} // namespace
} // namespace kestrane

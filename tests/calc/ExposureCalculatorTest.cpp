#include "calc/ExposureCalculator.h"

#include "TestSession.h"
#include "platform/Calendar.h"

#include <gtest/gtest.h>

namespace kestrane {
namespace {

struct Table : TestSession {
    clsLog log{session};

    void add(float leq, const char* duration, bool isIncluded = true, std::int16_t criterion = 85,
             std::int16_t exchange = 3) {
        clsDoseLogSample row;
        row.Criterion = criterion;
        row.Exchange = exchange;
        row.Leq.Value(leq);
        row.Duration.setTime(duration, session.locale);
        row.IsIncluded = isIncluded;
        row.Note = "note";
        log.DoseLogIntervals.push_back(row);
    }

    std::string cell(std::size_t row, int column) {
        return exposureLine(session, log.DoseLogIntervals[row], 1)[static_cast<std::size_t>(column)];
    }
};

TEST(DoseTotals, SumTheIncludedRows) {
    Table table;
    table.add(85, "04:00:00");
    table.add(85, "04:00:00");
    table.add(100, "08:00:00", false);
    const DoseTotals totals = doseTotals(table.log);
    EXPECT_FLOAT_EQ(totals.Dose.Value(), 100);
    EXPECT_NEAR(totals.Lex.Value(), 85, 1e-4);
    EXPECT_NEAR(totals.Leq.Value(), 85, 1e-4);
    EXPECT_EQ(totals.Duration.hh_mm_ss(), "08:00:00");
    EXPECT_EQ(table.cell(0, eColumnLex), "82.0");

    Table mixed; // 88 dB for 4 h is 100 % at criterion 85; 90 dB for 2 h is 25 % at 90, by 5 dB
    mixed.add(88, "04:00:00");
    mixed.add(90, "02:00:00", true, 90, 5);
    EXPECT_NEAR(doseTotals(mixed.log).Dose.Value(), 125, 0.3);
}

TEST(DoseTotals, AMissingLevelOrDurationEmptiesItsTotalAlone) {
    Table table;
    table.add(85, "08:00:00");
    table.add(0, "01:00:00");
    table.add(85, "08:00:00");
    DoseTotals totals = doseTotals(table.log);
    EXPECT_EQ(totals.Leq.Value(), 0);
    EXPECT_EQ(totals.Lex.Value(), 0);
    EXPECT_FLOAT_EQ(totals.Dose.Value(), 200);
    EXPECT_EQ(totals.Duration.hh_mm_ss(), "17:00:00");

    table.log.DoseLogIntervals[1].Leq.Value(9999); // an energy past every single: the totals stay as far as they came
    EXPECT_FLOAT_EQ(doseTotals(table.log).Dose.Value(), 100);
    table.log.DoseLogIntervals[1].Leq.Value(85);
    table.log.DoseLogIntervals[1].Duration = clsTime();
    totals = doseTotals(table.log);
    EXPECT_NEAR(totals.Leq.Value(), 85, 1e-4); // a plain mean over rows
    EXPECT_EQ(totals.Lex.Value(), 0);

    for (clsDoseLogSample& row : table.log.DoseLogIntervals)
        row.IsIncluded = false;
    totals = doseTotals(table.log);
    EXPECT_EQ(totals.Dose.Value() + totals.Lex.Value() + totals.Leq.Value(), 0);
    EXPECT_EQ(exposureTotalsLine(table.log)[eColumnExposureTime], "00:00:00");
}

TEST(ExposureRows, AnEmptyTableGetsTheLogsOwnRow) {
    Table table;
    table.log.Criterion = 80;
    table.log.Exchange = 4;
    table.log.LeqCumA(0).Value(91.5F);
    table.log.objLogOptions.ExposureTime = 7.5F;
    table.log.StartDate.setDate("03/06/2024", table.session.locale);
    fillExposureRows(table.log);
    fillExposureRows(table.log);
    ASSERT_EQ(table.log.DoseLogIntervals.size(), 1U);
    const auto line = exposureLine(table.session, table.log.DoseLogIntervals.front(), 1);
    const std::vector<std::string> expected = {"1",    "80",       "4",    "03/06/2024",      "00:00:00", "",
                                               "91.5", "07:30:00", "91.2", line[eColumnDose], "Y"};
    EXPECT_EQ(line, expected);
    EXPECT_EQ(exposureCaptions(table.session),
              (std::vector<std::string>{"", "Criterion", "Exch Rate", "Date", "Time", "Note", "Leq", "Exp Time",
                                        "LEP,d", "Dose %", "Inc"}));
}

TEST(EnterExposureCell, TakesWhatFitsTheColumnAndLeavesTheRest) {
    struct Case {
        int column;
        const char* entry;
        const char* cell; // nullptr: not accepted
    };

    const Case cases[] = {
        {eColumnCriterion, "90", "90"},
        {eColumnCriterion, "84", nullptr},
        {eColumnExchange, "5", "5"},
        {eColumnExchange, "6", nullptr},
        {eColumnDate, "1/2/2023", "01/02/2023"},
        {eColumnDate, "31/02/2023", nullptr},
        {eColumnTime, "830", "08:30:00"},
        {eColumnNote, "a, \"b\"", "a, \"b\""},
        {eColumnLeq, "91.26", "91.3"},
        {eColumnLeq, "loud", nullptr},
        {eColumnLeq, "1e999", nullptr},
        {eColumnLeq, "914", nullptr}, // the point of 91.4 was forgotten
        {eColumnLeq, "200", "200.0"},
        {eColumnLeq, "0", "0.0"},
        {eColumnLeq, "91,3", "91.3"},
        {eColumnExposureTime, "24:00:00", "24:00:00"},
        {eColumnExposureTime, "2,5", "02:30:00"},
        {eColumnTime, "2:00", "02:00:00"},
        {eColumnExposureTime, "24:00:01", nullptr},
        {eColumnIncluded, "no", "N"},
        {eColumnIncluded, "maybe", nullptr},
        {eColumnLex, "80", nullptr},
        {eColumnDose, "1", nullptr},
        {eColumnNumber, "9", nullptr},
    };
    for (const Case& c : cases) {
        Table table;
        table.add(85, "08:00:00");
        const std::string before = table.cell(0, c.column);
        const CellEntry expected = c.cell == nullptr ? CellEntry::Refused : CellEntry::Stored;
        EXPECT_EQ(enterExposureCell(table.log, 0, c.column, c.entry), expected) << c.column << c.entry;
        EXPECT_EQ(table.cell(0, c.column), c.cell == nullptr ? before : c.cell) << c.column << c.entry;
        if (c.cell != nullptr || exposureMaxLength(c.column) == 0) continue;
        EXPECT_TRUE(exposureRefusal(table.session, c.column, c.entry)
                        .starts_with("'" + std::string(c.entry) + "' was not taken.  A"));
    }
    Table table;
    table.add(85, "08:00:00");
    EXPECT_EQ(enterExposureCell(table.log, 0, eColumnLeq, "85.0"), CellEntry::Same);
}

TEST(InsertRows, CountsFromOneToAHundred) {
    const Locale locale;
    for (const char* entry : {"0", "101", "1.5", "", "x", "1000", "-1"})
        EXPECT_FALSE(insertCount(entry, locale)) << entry;
    EXPECT_EQ(insertCount(" 7 ", locale), 7);
    EXPECT_EQ(insertCount("100", locale), 100);

    Table table;
    table.add(85, "08:00:00", false);
    table.add(90, "01:00:00");
    insertExposureRows(table.log, 0, 2);
    ASSERT_EQ(table.log.DoseLogIntervals.size(), 4U);
    EXPECT_EQ(table.cell(0, eColumnLeq), "85.0");
    EXPECT_EQ(table.cell(0, eColumnNote), "");
    EXPECT_EQ(table.cell(0, eColumnIncluded), "Y");
    EXPECT_EQ(table.cell(2, eColumnNote), "note");
    insertExposureRows(table.log, 4, 1); // at the totals: behind the last
    EXPECT_EQ(table.cell(4, eColumnLeq), "90.0");
}

TEST(InsertRows, AnEmptyTableGetsRowsFromNow) {
    FixedClock clock(fromCivil({2024, 6, 3}, 9 * 3600));
    Table table;
    Session session("Ordwyn Acoustics", {}, table.settings, table.messages, table.pump, clock);
    clsLog log(session);
    insertExposureRows(log, 0, 1);
    EXPECT_EQ(exposureLine(session, log.DoseLogIntervals.front(), -1),
              (std::vector<std::string>{" ", "80", "3", "03/06/2024", "09:00:00", "", "90.0", "00:01:00", "63.2", "2.1",
                                        "Y"}));
}

TEST(DeleteRows, ReadsAListOfRowsAndRanges) {
    using Rows = std::vector<std::size_t>;
    const std::pair<const char*, Rows> cases[] = {
        {"2", {1}}, {"1:3,5", {0, 1, 2, 4}}, {" 5 , 1 : 2 ", {0, 1, 4}}, {"2,2", {1}}};
    for (const auto& [entry, rows] : cases)
        EXPECT_EQ(rowList(entry, 5), rows) << entry;
    for (const char* wrong : {"3:1", "6", "0", "1:2:3", ":", ",", "", "1;2", "1:", "99999999999999999999"})
        EXPECT_FALSE(rowList(wrong, 5)) << wrong;
    Table table;
    for (const float leq : {80.0F, 81.0F, 82.0F, 83.0F})
        table.add(leq, "01:00:00");
    deleteExposureRows(table.log, {0, 2});
    ASSERT_EQ(table.log.DoseLogIntervals.size(), 2U);
    EXPECT_EQ(table.cell(0, eColumnLeq), "81.0");
    EXPECT_EQ(table.cell(1, eColumnLeq), "83.0");
}

} // namespace
} // namespace kestrane

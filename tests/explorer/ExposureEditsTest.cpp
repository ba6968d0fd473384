#include "explorer/ExposureEdits.h"

#include "views/ExposureTable.h"

#include "ShownLog.h"

#include <gtest/gtest.h>

#include <deque>

namespace kestrane {
namespace {

struct Day : ShownLog {
    std::deque<const char*> answers; // nullptr: cancels
    std::vector<std::string> prompts, proposals;
    AskText ask = [this](const std::string& prompt, const std::string& proposal) -> std::optional<std::string> {
        prompts.push_back(prompt);
        proposals.push_back(proposal);
        const char* const answer = answers.empty() ? nullptr : answers.front();
        if (!answers.empty()) answers.pop_front();
        return answer == nullptr ? std::nullopt : std::optional<std::string>(answer);
    };

    explicit Day(std::initializer_list<float> levels, Locale locale = {}) : ShownLog(modeBroadband, std::move(locale)) {
        for (const float level : levels) {
            clsDoseLogSample& row = log.DoseLogIntervals.emplace_back();
            row.Criterion = 85;
            row.Exchange = 3;
            row.Leq.Value(level);
            row.Duration.Hours = 4;
            row.IsIncluded = true;
        }
    }

    std::string column(int column) const {
        std::string text;
        for (const auto& row : exposureTable(log).Rows)
            text += row[static_cast<std::size_t>(column)] + ' ';
        return text;
    }
};

TEST(ExposureEdits, SharesAreOfTheIncludedDose) {
    Day day({85, 88, 88});
    day.log.DoseLogIntervals[1].IsIncluded = false;
    const ExposureTable table = exposureTable(day.log);
    ASSERT_EQ(table.Rows.size(), 3U);
    EXPECT_NEAR(table.Shares[0], 1.0 / 3, 0.002); // 50 % against 100 %
    EXPECT_EQ(table.Shares[1], 0);
    EXPECT_NEAR(table.Shares[2], 2.0 / 3, 0.002);
    EXPECT_EQ(table.Totals[eColumnExposureTime], "08:00:00");
    EXPECT_EQ(exposureTable(Day({0}).log).Shares[0], 0);
}

TEST(ExposureEdits, ALevelThatTheRowIsNotComputedFromIsMarked) {
    Day day({85, 85});
    day.log.DoseLogIntervals[0].Leq.CalcValue(82.5F);
    const ExposureTable table = exposureTable(day.log);
    EXPECT_EQ(table.Rows[0][eColumnLeq], "82.5");
    EXPECT_EQ(table.Rows[0][eColumnLex], table.Rows[1][eColumnLex]);
    EXPECT_EQ(table.LevelNotes[0], "The figures of this row are made of the reported level, 85.0 dB.");
    EXPECT_EQ(table.LevelNotes[1], "");
    day.log.FreqWeightA("C");
    day.log.LeqCumA(0).CalcValue(85);
    EXPECT_EQ(exposureTable(day.log).LevelNotes[1], "not A-weighted");
}

TEST(ExposureEdits, AsksForRowsUntilTheAnswerIsGood) {
    Day day({80, 85});
    day.answers = {"0", " 2 "};
    EXPECT_TRUE(InsertRows(day.log, 1, day.ask));
    EXPECT_EQ(day.column(eColumnLeq), "80.0 85.0 85.0 85.0 ");
    EXPECT_TRUE(day.log.AreDoseRowsEdited);
    EXPECT_EQ(day.prompts[0], "Enter the row numbers to be inserted (1 to 100)");
    EXPECT_TRUE(day.prompts[1].starts_with("Selection error - please re-enter"));
    EXPECT_EQ(day.proposals, (std::vector<std::string>{"1", "0"}));

    day.answers = {"3:1", "1,3:4"};
    EXPECT_TRUE(DeleteRows(day.log, 1, day.ask));
    EXPECT_EQ(day.column(eColumnLeq), "85.0 ");
    EXPECT_EQ(day.proposals[2], "2");

    for (const char* answer : {static_cast<const char*>(nullptr), "  "}) {
        day.answers = {answer, answer};
        EXPECT_FALSE(InsertRows(day.log, 0, day.ask));
        EXPECT_FALSE(DeleteRows(day.log, 0, day.ask));
    }
    day.answers = {"1"};
    EXPECT_FALSE(DeleteRows(day.log, 1, day.ask)); // the totals
    EXPECT_EQ(day.log.DoseLogIntervals.size(), 1U);
}

TEST(ExposureEdits, PastesRowsThroughTheChecksOfACell) {
    Day day({80, 85}, Locale{",", "/"});
    const PasteOutcome outcome =
        pasteExposureRows(day.log, 1, eColumnCriterion,
                          "Criterion\tExch Rate\tDate\tTime\tNote\tLeq\tExp Time\r\n"
                          "90\t5\t3/6/2024\t0730\tPress <b>\t91,26\t2:00:00\t99\t99\tN\textra\r\n"
                          "\r\n"
                          "84\t\t30/2/2024\tx\t\t92.5\t26:00:00\r\n"
                          "80\t\t\t\t\tn/a\t2,5\tx\tx\tmaybe\r\n");
    EXPECT_EQ(outcome.Rows, 3U);
    EXPECT_EQ(outcome.Refused, 6U);
    EXPECT_EQ(day.column(eColumnCriterion), "85 90  80 ");
    EXPECT_EQ(day.column(eColumnExchange), "3 5 5 5 ");
    EXPECT_EQ(day.column(eColumnTime), "00:00:00 07:30:00   ");
    EXPECT_EQ(day.column(eColumnNote), " Press <b>   ");
    EXPECT_EQ(day.column(eColumnLeq), "80,0 91,3 92,5  ");
    EXPECT_EQ(day.column(eColumnExposureTime), "04:00:00 02:00:00  02:30:00 ");
    EXPECT_EQ(day.column(eColumnIncluded), "Y N Y N ");
    const std::vector<std::array<bool, kExposureColumns>> missing = exposureTable(day.log).Missing;
    EXPECT_TRUE(missing[2][eColumnCriterion] && missing[2][eColumnDate] && missing[2][eColumnTime] &&
                missing[2][eColumnExposureTime] && missing[3][eColumnLeq]);
    EXPECT_FALSE(missing[0][eColumnTime] || missing[1][eColumnLeq] || missing[3][eColumnExposureTime]);

    EXPECT_EQ(pasteExposureRows(day.log, 0, eColumnNote, std::string(300, 'n').append("\n")).Rows, 1U);
    EXPECT_EQ(day.log.DoseLogIntervals[0].Note.size(), 256U);
    const PasteOutcome none = pasteExposureRows(day.log, 3, eColumnLeq, "no level\nnone\n");
    EXPECT_EQ(none.Rows, 0U);
    EXPECT_EQ(none.Refused, 2U);
    EXPECT_EQ(day.column(eColumnLeq), "80,0 91,3 92,5  ") << "as it was";
}

} // namespace
} // namespace kestrane

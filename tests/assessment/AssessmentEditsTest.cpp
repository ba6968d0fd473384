#include "assessment/AssessmentEdits.h"

#include "TestSession.h"
#include "assessment/AssessmentDocument.h"
#include "assessment/AssessmentFile.h"
#include "assessment/AssessmentShown.h"
#include "platform/TemporaryFolder.h"

#include <gtest/gtest.h>

namespace kestrane {
namespace {

using Column = AssessmentColumn;
using Kind = AssessmentKind;

LogRows rowsOf(const std::string& file, std::optional<std::int64_t> from = {}, std::optional<std::int64_t> to = {}) {
    LogRows rows;
    rows.File = file;
    rows.Log = "L1I1F1";
    rows.From = from;
    rows.To = to;
    return rows;
}

// A group by tasks with one task of two levels, rows and a day, and a group by job.
struct Edited : TestSession {
    Assessment assessment;
    const AssessmentPlace group{Kind::Group, 0}, job{Kind::Group, 1}, task{Kind::Task, 0, 0}, rows{Kind::Rows, 0, 0, 2},
        day{Kind::Day, 0, {}, 0};

    Edited() {
        assessment = withTask(session, withGroup(session, assessment).Next, 0).Next;
        assessment.Groups[0].Tasks[0].Samples = {80.125, 82.0, rowsOf("/d/a.xml", 2, 60)};
        assessment = withGroup(session, withDay(session, assessment, 0).Next).Next;
        assessment.Groups[1].Strategy = Strategy::Job;
    }

    // What stands in a cell behind an entry; "-": it was refused.
    std::string entered(const AssessmentPlace& place, Column column, const std::string& entry) {
        const auto edit = withEntry(session, assessment, place, column, entry);
        return edit ? enteredText(session, edit->Next, place, column) : "-";
    }
};

TEST(AssessmentEdits, EntriesAreTakenOrRefused) {
    Edited e;

    struct Case {
        AssessmentPlace place;
        Column column;
        const char *entry, *text;
    };

    for (const Case& c : {Case{e.group, Column::Name, " Press ", "Press"},
                          Case{e.group, Column::Hours, "7:30", "7.5"},
                          Case{e.group, Column::Hours, "", ""},
                          Case{e.group, Column::Peak, "135.2", "135.2"},
                          Case{e.group, Column::Samples, "80", "-"},
                          Case{e.group, Column::Level, "80", "-"},
                          Case{e.job, Column::Samples, "80;81.25 x", "-"},
                          Case{e.job, Column::Samples, "80;81.25  82", "80.0  81.25  82.0"},
                          Case{e.task, Column::Samples, "", ""},
                          Case{e.task, Column::Hours, "1:20", "1.3333333333"},
                          Case{e.task, Column::Hours, "", "-"},
                          Case{e.task, Column::Hours, "-1", "-1.0"},
                          Case{e.task, Column::Range, "4 - 6", "4.0 - 6.0"},
                          Case{e.task, Column::Range, "4 to 6:30", "4.0 - 6.5"},
                          Case{e.task, Column::Range, "4.0\u20136.0", "4.0 - 6.0"},
                          Case{e.task, Column::Range, "4", "-"},
                          Case{e.task, Column::Range, "-1 9 7", "-"},
                          Case{e.task, Column::Range, "-4 - 6", "-"},
                          Case{e.task, Column::Range, "1 9 7", "-"},
                          Case{e.rows, Column::Samples, "5-7", "5-7"},
                          Case{e.rows, Column::Samples, "5", "5-5"},
                          Case{e.rows, Column::Samples, "302-", "302-"},
                          Case{e.rows, Column::Samples, "-7", "1-7"},
                          Case{e.rows, Column::Samples, "-", "-"},
                          Case{e.rows, Column::Samples, "5--7", "-"},
                          Case{e.rows, Column::Samples, "", ""},
                          Case{e.rows, Column::Samples, "a-b", "-"},
                          Case{e.rows, Column::Name, "b.xml", "-"},
                          Case{e.day, Column::Samples, "84.3", "84.3"}})
        EXPECT_EQ(e.entered(c.place, c.column, c.entry), c.text) << c.entry;
    EXPECT_EQ(refusedPart(e.session, e.job, Column::Samples, "80;8l.2 82 x"), "8l.2");
    EXPECT_EQ(refusedPart(e.session, e.task, Column::Range, "4 x"), "4 x");
    const auto edit = withEntry(e.session, e.assessment, e.task, Column::Samples, "79 80.125");
    const std::vector<Sample>& samples = edit->Next.Groups[0].Tasks[0].Samples;
    EXPECT_EQ(std::get<double>(samples[1]), 80.125);
    EXPECT_EQ(std::get<LogRows>(samples[2]).To, 60) << "rows stay, behind the levels";
}

TEST(AssessmentEdits, RowsGoWhereTheyAreDropped) {
    Edited e;
    AssessmentEdit edit = withRows(e.session, e.assessment, e.rows, rowsOf("b.xml"), "Log");
    EXPECT_EQ(edit.Next.Groups[0].Tasks[0].Samples.size(), 4U);
    EXPECT_EQ(edit.Place, e.task);
    edit = withRows(e.session, e.assessment, e.day, rowsOf("b.xml"), "Log");
    EXPECT_EQ(edit.Next.Groups[0].Tasks[1].Name, "Log") << "a task of its own, without a duration";
    EXPECT_EQ(edit.Next.Groups[0].Tasks[1].Hours, 0);
    edit = withRows(e.session, e.assessment, std::nullopt, rowsOf("b.xml"), "Log");
    EXPECT_EQ(edit.Next.Groups[1].Samples.size(), 1U) << "the last group goes by its job";
    edit = withRows(e.session, {}, std::nullopt, rowsOf("b.xml"), "Log");
    EXPECT_EQ(edit.Next.Groups.at(0).Tasks.at(0).Samples.size(), 1U);

    for (const AssessmentPlace& place : {e.rows, e.task, e.day, e.group}) {
        const Assessment next = without(e.assessment, place).Next;
        EXPECT_EQ(next.Groups.size(), place.Kind == Kind::Group ? 1U : 2U);
        if (place.Kind == Kind::Group) continue;
        EXPECT_EQ(next.Groups[0].Tasks.size(), place.Kind == Kind::Task ? 0U : 1U);
        EXPECT_EQ(next.Groups[0].Week.empty(), place.Kind == Kind::Day);
        EXPECT_TRUE(place.Kind != Kind::Rows || next.Groups[0].Tasks[0].Samples.size() == 2);
    }
}

TEST(AssessmentEdits, AProtectorIsThereOnceTheFileCanHoldIt) {
    Edited e;
    const auto fields = [&] { return groupFields(e.session, e.assessment, 0, {"Muff"}); };
    const auto enter = [&](Text::Id caption, const std::string& entry) {
        const auto all = fields();
        for (std::size_t i = 0; i < all.size(); ++i) {
            if (all[i].Caption != caption) continue;
            const auto edit = withGroupField(e.session, e.assessment, 0, i, entry);
            if (edit) e.assessment = edit->Next;
            assessmentOfText(assessmentText(e.assessment)); // can be read again
            return edit.has_value();
        }
        return false;
    };
    EXPECT_TRUE(enter(Text::ProtectorLabel, "Muff"));
    EXPECT_EQ(e.assessment.Groups[0].Protector->Spectrum->File, "/d/a.xml");
    EXPECT_FALSE(e.assessment.Groups[0].Protector->Spectrum->From) << "of the whole log";
    EXPECT_TRUE(enter(Text::CorrectionLabel, "4dB"));
    EXPECT_EQ(e.assessment.Groups[0].Protector->Correction, 2);
    EXPECT_TRUE(enter(Text::ModeOfProtectorLabel, "US (NIOSH)"));
    EXPECT_EQ(e.assessment.Groups[0].Protector->Mode, "niosh");
    EXPECT_TRUE(enter(Text::WornLabel, "95"));
    EXPECT_FALSE(enter(Text::WornLabel, "much"));
    EXPECT_TRUE(enter(Text::ProtectorLabel, "None"));
    EXPECT_FALSE(e.assessment.Groups[0].Protector);
    e.assessment.Groups[0].Tasks.clear();
    EXPECT_FALSE(enter(Text::ProtectorLabel, "Muff")) << "there is no log for a spectrum";
    EXPECT_TRUE(enter(Text::ReductionLabel, "20"));
    EXPECT_TRUE(enter(Text::ProtectorLabel, "Muff"));
    EXPECT_TRUE(enter(Text::ReductionLabel, ""));
    EXPECT_FALSE(e.assessment.Groups[0].Protector);
    EXPECT_TRUE(enter(Text::WorkersLabel, "4"));
    EXPECT_FALSE(enter(Text::WorkersLabel, "0"));
    EXPECT_TRUE(enter(Text::StrategyLabel, "By full days"));
    EXPECT_EQ(e.assessment.Groups[0].Strategy, Strategy::FullDay);
}

TEST(AssessmentDocument, ChangesAreUndoneAndSaved) {
    Edited e;
    const TemporaryFolder folder;
    AssessmentDocument document(e.assessment, {});
    EXPECT_FALSE(document.IsChanged());
    document.Change(Text::EditEntry, e.assessment);
    EXPECT_FALSE(document.CanExchange(Direction::Undo)) << "nothing has changed";
    document.Change(Text::EditAddGroup, withGroup(e.session, document.Now()).Next);
    document.Change(Text::EditRemove, without(document.Now(), e.group).Next);
    EXPECT_EQ(document.Title(Direction::Undo), Text::EditRemove);
    document.Exchange(Direction::Undo);
    EXPECT_EQ(document.Now().Groups.size(), 3U);
    EXPECT_EQ(document.Title(Direction::Redo), Text::EditRemove);
    document.Save(folder.file("a.kxa"));
    EXPECT_FALSE(document.IsChanged());
    document.Exchange(Direction::Undo);
    EXPECT_TRUE(document.IsChanged());
    EXPECT_FALSE(document.CanExchange(Direction::Undo));
    EXPECT_EQ(std::get<LogRows>(document.Now().Groups[0].Tasks[0].Samples[2]).File,
              std::get<LogRows>(loadAssessment(folder.file("a.kxa")).Groups[0].Tasks[0].Samples[2]).File)
        << "all states go by the names that were saved";
    document.Exchange(Direction::Redo);
    EXPECT_FALSE(document.IsChanged());
    EXPECT_THROW(document.Save(folder.file("none/a.kxa")), RuntimeError);
    EXPECT_EQ(document.Path(), folder.file("a.kxa"));
    Assessment hashed = document.Now();
    std::get<LogRows>(hashed.Groups[0].Tasks[0].Samples[2]).Sha256 = "ab";
    document.Amend(hashed);
    EXPECT_FALSE(document.IsChanged()) << "that is no change of the user's";
}

TEST(AssessmentShown, WhatAGroupComesTo) {
    Edited e;
    AssessmentGroup& group = e.assessment.Groups[0];
    group.Tasks[0].Samples = {80.0, 80.0, 80.0};
    group.Tasks[0].Hours = 4;
    group.Tasks.push_back(group.Tasks[0]);
    group.Tasks[1].Name = "Loud";
    group.Tasks[1].Samples = {90.0, 90.0, 90.0};
    const Measurements none;
    const std::vector<GroupResult> results = assess(e.session, e.assessment, {}, none);
    const std::vector<TaskBar> bars = taskBars(e.session, results[0]);
    EXPECT_EQ(bars[0].Words, "77.0 dB, 9 %"); // 80 dB less 10 lg 2; 1 of 11 parts
    EXPECT_EQ(bars[1].Words, "87.0 dB, 91 %");
    EXPECT_NEAR(*bars[1].Share, 10.0 / 11, 1e-12);

    // 10 lg (0.5 (10^8 + 10^9)) = 87.4 dB; its place on a scale from 75 to 95
    const ExposureScale scale = exposureScale(e.session, results[0]);
    EXPECT_NEAR(*scale.Level, (87.404 - 75) / 20, 1e-3);
    EXPECT_NEAR(*scale.To - *scale.Level, *results[0].Expanded / 20, 1e-9);
    EXPECT_NEAR(*scale.Level - *scale.From, *results[0].Expanded / 20, 1e-9);
    const auto limit = std::ranges::find_if(scale.Marks, [](const auto& mark) { return mark.Words == "85"; });
    EXPECT_TRUE(limit->IsLimit);
    EXPECT_NEAR(limit->At, 0.5, 1e-12);

    const std::vector<ShownAction> actions = shownActions(e.session, results[0]);
    ASSERT_EQ(actions.size(), 12U) << "six of the day, six of the week";
    EXPECT_EQ(actions[2].Name, "Upper action value, day");
    EXPECT_EQ(actions[2].Words, "exceeded");
    EXPECT_EQ(actions[1].Words, "not measured");
    EXPECT_EQ(actions[8].Words, "below") << "a week of one such day is 7 dB less";

    const auto rows = assessmentRows(e.session, e.assessment, {}, none, results);
    EXPECT_EQ(rows[0].Cells[2], "87.4");
    EXPECT_EQ(rows[0].Children[1].Cells, (std::array<std::string, 6>{"Loud", "90.0  90.0  90.0", "90.0", "4.0"}));
    EXPECT_EQ(rows[0].Children[2].Children[0].Cells[2], "87.4") << "the group's own day";

    const ExposureScale empty = exposureScale(e.session, results[1]);
    EXPECT_FALSE(empty.Level || empty.From);
    EXPECT_EQ(shownFigures(e.session, results[1])[0], (ShownFigure{"LEX,8h", "–"}));
}

} // namespace
} // namespace kestrane

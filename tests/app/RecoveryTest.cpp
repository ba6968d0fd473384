#include "app/Recovery.h"

#include "app/RunningProgram.h"
#include "assessment/AssessmentFile.h"
#include "platform/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <chrono>
#include <filesystem>

namespace kestrane {
namespace {

namespace fs = std::filesystem;

struct RecoveringProgram : RunningProgram {
    std::vector<const AssessmentDocument*> assessments;
    std::unique_ptr<Recovery> recovery;

    explicit RecoveringProgram(const TemporaryFolder& folder) : RunningProgram(folder.file("state/")) {
        recovery = std::make_unique<Recovery>(session, [this] { return assessments; });
    }

    ~RecoveringProgram() { session.OpenFiles.clear(); } // as after a kill: the copies stay

    void look() {
        recovery->Look();
        pump.runUntil([&] { return !recovery->IsWriting(); });
    }

    std::vector<std::string> rows() {
        std::vector<std::string> texts;
        for (const LeftCopy& copy : recovery->Left()) {
            const CopyRow row = recovery->RowOf(copy);
            texts.push_back(row.Name + ": " + row.Difference);
        }
        return texts;
    }

    // Does one thing with all that was left.
    void settle(CopyChoice choice) {
        const std::vector<LeftCopy> left = recovery->Left();
        recovery->Settle(left, std::vector(left.size(), choice),
                         [this](AssessmentDocument document) -> const AssessmentDocument& {
                             opened.push_back(std::make_unique<AssessmentDocument>(std::move(document)));
                             assessments.push_back(opened.back().get());
                             return *opened.back();
                         });
        pump.runUntil([&] { return noLogIsBusy(session); });
    }

    std::vector<std::unique_ptr<AssessmentDocument>> opened;
};

class RecoveryTest : public ::testing::Test {
protected:
    TemporaryFolder folder;

    std::string written(const std::string& name, const std::string& text = kTwoRows) const {
        writeText(folder.file(name), text);
        return folder.file(name);
    }

    std::vector<std::string> kept() const {
        std::vector<std::string> names;
        std::error_code none;
        for (const auto& entry : fs::recursive_directory_iterator(folder.file("state/recovery"), none))
            if (entry.path().extension() == ".xml" || entry.path().extension() == ".kxa")
                names.push_back(entry.path().string());
        return names;
    }

    // A program that renames the collection of a file and is killed.
    void killAfterAChange(const std::string& path) {
        RecoveringProgram program(folder);
        program.rename(program.open(path), "changed");
        program.look();
    }
};

TEST_F(RecoveryTest, WhatAKilledProgramHadChangedOpensWithItsRowsAndKnowsItsFile) {
    const std::string path = written("a.xml");
    killAfterAChange(path);
    EXPECT_EQ(readText(path), kTwoRows) << "its own file is left alone";

    RecoveringProgram next(folder);
    EXPECT_EQ(next.rows(), std::vector<std::string>{"a.xml: changed since it was saved, at last by: Rename"});
    next.settle(CopyChoice::Open);
    ASSERT_EQ(next.session.OpenFiles.size(), 1U);
    clsFile& file = *next.session.OpenFiles.front();
    EXPECT_EQ(file.FileName, path);
    EXPECT_EQ(file.InstrumentDatas.front()->NameX, "changed");
    const clsLog& log = *file.InstrumentDatas.front()->Locations.front();
    ASSERT_EQ(log.LogIntervals.Count(), 2);
    EXPECT_EQ(log.LogIntervals.Item(2).LeqA(0).Value(), 86);
    EXPECT_TRUE(IsChanged(file));
    EXPECT_EQ(kept().size(), 1U) << "until it is saved, a second kill must not cost it";

    EXPECT_TRUE(SaveFile(next.session, file, false, noName()));
    EXPECT_NE(readText(path).find("changed"), std::string::npos);
    next.recovery->Tidy();
    EXPECT_TRUE(kept().empty());
}

TEST_F(RecoveryTest, WhatHasNoPlaceInTheDataFileComesBack) {
    const std::string path = written("a.xml");
    const auto logOf = [](clsFile& file) -> clsLog& { return *file.InstrumentDatas.front()->Locations.front(); };
    {
        RecoveringProgram program(folder);
        clsFile& file = program.open(path);
        logOf(file).CutReason = "Radio";
        program.rename(file, "saved");
        EXPECT_TRUE(SaveFile(program.session, file, false, noName()));
        logOf(file).CriterionDose = 85;
        program.rename(file, "changed");
        program.look();
    }
    RecoveringProgram next(folder);
    next.settle(CopyChoice::Open);
    clsFile& file = *next.session.OpenFiles.front();
    EXPECT_EQ(logOf(file).CutReason, "Radio");
    EXPECT_EQ(logOf(file).CriterionDose, 85);
    const std::vector<HistoryLine> lines = file.History.lines();
    ASSERT_EQ(lines.size(), 3U); // named, saved, named again
    EXPECT_EQ(lines.back().After, "changed");
    EXPECT_TRUE(next.frame.Told.empty());
    EXPECT_TRUE(SaveFile(next.session, file, false, noName()));
    EXPECT_NE(readText(path + ".history.jsonl").find("\"After\":\"changed\""), std::string::npos);
    next.recovery->Tidy();
    EXPECT_TRUE(kept().empty());
}

TEST_F(RecoveryTest, OnlyWhatIsUnsavedIsKeptAndEachStateIsWrittenOnce) {
    RecoveringProgram program(folder);
    clsFile& file = program.open(written("a.xml"));
    program.look();
    EXPECT_TRUE(kept().empty()) << "nothing has changed";

    program.rename(file, "first");
    program.look();
    ASSERT_EQ(kept().size(), 1U);
    const std::string copy = kept().front();
    fs::remove(copy);
    program.look();
    EXPECT_FALSE(fs::exists(copy)) << "this state has been written";
    program.rename(file, "second");
    program.look();
    EXPECT_NE(readText(copy).find("second"), std::string::npos);

    file.Edits.exchange(Direction::Undo);
    file.Edits.exchange(Direction::Undo);
    program.recovery->Tidy();
    EXPECT_TRUE(kept().empty()) << "it is again as it was saved";

    program.rename(file, "third");
    program.look();
    program.messages.Answers = {Button::No};
    EXPECT_TRUE(CloseFile(program.session, &file, noName()));
    program.recovery->Tidy();
    EXPECT_TRUE(kept().empty()) << "its user has given it up";
}

TEST_F(RecoveryTest, ADocumentWhoseRowsAreNotAllThereIsNotKeptAsIfItWereWhole) {
    RecoveringProgram program(folder);
    clsFile& file = program.open(written("a.xml"));
    program.rename(file, "changed");
    file.InstrumentDatas.front()->Locations.front()->HasUnreadIntervals = true;
    program.look();
    EXPECT_TRUE(kept().empty());
}

TEST_F(RecoveryTest, ADocumentWithoutAFileAndExposureRowsThatAreNotToBeSavedAreKept) {
    {
        RecoveringProgram program(folder);
        clsFile& file = program.open(written("a.xml"));
        file.FileName = "Untitled";
        clsLog& log = *file.InstrumentDatas.front()->Locations.front();
        log.DoseLogIntervals.emplace_back().Note = "by hand";
        log.AreDoseRowsEdited = true;
        program.look();
        EXPECT_FALSE(log.SaveDoseCalc) << "the document itself is as before";
    }
    RecoveringProgram next(folder);
    EXPECT_EQ(next.rows(), std::vector<std::string>{"Untitled: never saved"});
    next.settle(CopyChoice::Open);
    const clsFile& file = *next.session.OpenFiles.front();
    EXPECT_TRUE(file.JustAcquired());
    const clsLog& log = *file.InstrumentDatas.front()->Locations.front();
    ASSERT_EQ(log.DoseLogIntervals.size(), 1U);
    EXPECT_EQ(log.DoseLogIntervals.front().Note, "by hand");
}

TEST_F(RecoveryTest, RunningProgramsNeverTakeEachOthersCopies) {
    RecoveringProgram first(folder);
    first.rename(first.open(written("a.xml")), "changed");
    first.look();
    {
        RecoveringProgram second(folder);
        EXPECT_TRUE(second.rows().empty());
        second.rename(second.open(written("b.xml")), "changed");
        second.look();
        second.recovery->End();
        EXPECT_EQ(kept().size(), 1U) << "an end removes only one's own";
    }
    killAfterAChange(written("c.xml"));
    RecoveringProgram third(folder), fourth(folder);
    EXPECT_EQ(third.rows().size(), 1U);
    EXPECT_TRUE(fourth.rows().empty()) << "it is being offered elsewhere";
}

TEST_F(RecoveryTest, ADiscardedCopyIsGoneAndOneForLaterStaysForSevenDays) {
    killAfterAChange(written("a.xml"));
    killAfterAChange(written("b.xml"));
    {
        RecoveringProgram next(folder);
        next.settle(CopyChoice::KeepForLater);
        EXPECT_EQ(next.rows().size(), 2U) << "offered again";
    }
    const auto age = [&](const std::string& copy, int days) {
        fs::last_write_time(fs::path(copy).replace_extension(".json"),
                            fs::file_time_type::clock::now() - std::chrono::hours(24 * days + 1));
    };
    age(kept()[0], 6);
    age(kept()[1], 7);
    RecoveringProgram next(folder);
    EXPECT_EQ(next.rows().size(), 1U);
    next.recovery->Settle({}, {}, {});
    next.settle(CopyChoice::Discard);
    EXPECT_TRUE(kept().empty());
    EXPECT_TRUE(fs::is_empty(folder.file("state/recovery"))) << "with their folders";

    killAfterAChange(written("c.xml"));
    age(kept()[0], 100);
    EXPECT_EQ(RecoveringProgram(folder).rows().size(), 1U) << "nobody has seen it yet";
}

TEST_F(RecoveryTest, DamageIsSaidAndKept) {
    killAfterAChange(written("a.xml"));
    killAfterAChange(written("b.xml"));
    writeText(fs::path(kept()[0]).replace_extension(".json").string(), "{\"name\": 7");
    writeText(kept()[1], "<instruments><instr");
    RecoveringProgram next(folder);
    EXPECT_EQ(next.rows().size(), 2U);
    next.settle(CopyChoice::Open);
    ASSERT_EQ(next.session.OpenFiles.size(), 1U);
    EXPECT_EQ(next.session.OpenFiles.front()->InstrumentDatas.front()->NameX, "changed");
    EXPECT_EQ(next.messages.Boxes.size(), 1U);
    EXPECT_EQ(next.frame.Errors.size(), 1U);
    EXPECT_EQ(kept().size(), 2U);
}

TEST_F(RecoveryTest, AFileThatAnotherProgramChangedMeanwhileIsSaidAndOneThatWasSavedIsNotOffered) {
    const std::string path = written("a.xml");
    killAfterAChange(path);
    const std::string copy = readText(kept().front());
    writeText(path, "<instruments/>");
    EXPECT_EQ(RecoveringProgram(folder).rows(),
              std::vector<std::string>{"a.xml: changed since it was saved, at last by: Rename; another program has "
                                       "changed the file since"});
    writeText(path, copy);
    EXPECT_TRUE(RecoveringProgram(folder).rows().empty());
}

TEST_F(RecoveryTest, AFailureIsToldOnceAndCostsNothing) {
    RecoveringProgram program(folder);
    clsFile& file = program.open(written("a.xml"));
    writeText(folder.file("state/recovery"), "in the way");
    program.rename(file, "first");
    program.look();
    program.look();
    EXPECT_EQ(program.frame.Errors.size(), 1U);
    fs::remove(folder.file("state/recovery"));
    program.look();
    EXPECT_EQ(kept().size(), 1U);
}

TEST_F(RecoveryTest, AssessmentsAreKept) {
    const std::string path = folder.file("a.kxa");
    Assessment assessment;
    assessment.Title = "before";
    saveAssessment(path, assessment);
    {
        RecoveringProgram program(folder);
        AssessmentDocument document = AssessmentDocument::ofFile(path);
        program.assessments = {&document};
        program.look();
        EXPECT_TRUE(kept().empty());
        assessment.Title = "after";
        document.Change(Text::StepNote, assessment);
        program.look();
    }
    RecoveringProgram next(folder);
    EXPECT_EQ(next.rows().size(), 1U);
    next.settle(CopyChoice::Open);
    ASSERT_EQ(next.opened.size(), 1U);
    AssessmentDocument& document = *next.opened.front();
    EXPECT_EQ(document.Path(), path);
    EXPECT_EQ(document.Now().Title, "after");
    EXPECT_TRUE(document.IsChanged());
    document.Save(path);
    next.recovery->Tidy();
    EXPECT_TRUE(kept().empty());
}

} // namespace
} // namespace kestrane

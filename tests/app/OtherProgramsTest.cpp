#include "app/OtherPrograms.h"

#include "ErrorOf.h"
#include "app/Assessments.h"
#include "app/RunningProgram.h"
#include "assessment/AssessmentFile.h"
#include "files/Loaders.h"
#include "platform/Files.h"
#include "platform/Sha256.h"
#include "platform/TemporaryFolder.h"

#include <filesystem>

namespace kestrane {
namespace {

namespace fs = std::filesystem;

constexpr std::size_t kMine = 0, kTheirs = 1, kSaveAs = 2;
constexpr const char* kOther =
    "<instruments><instrument-data><instrument-detail name=\"x\"/><logs><log name=\"b\"><ca><leq><f>70</f></leq></ca>"
    "</log></logs></instrument-data></instruments>";

class OtherProgramsTest : public ::testing::Test {
protected:
    TemporaryFolder folder;
    RunningProgram program{folder.file("state/")};
    std::string path = folder.file("a.xml");

    OtherProgramsTest() { writeText(path, kTwoRows); }

    // As another program would, in the very moment that the file system's clock gave the file before, too.
    void writeBehindItsBack(const std::string& text = kOther) {
        const auto time = fs::last_write_time(path);
        writeText(path, text);
        fs::last_write_time(path, time);
    }

    static AskSaveName named(const std::string& name) {
        return [name](const std::string&) { return std::optional(name); };
    }
};

TEST_F(OtherProgramsTest, SavingOverAChangedFileAsksFirst) {
    clsFile& file = program.open(path);
    program.rename(file, "mine");
    std::string sameLength = kTwoRows;
    sameLength.replace(sameLength.find("85"), 2, "75");
    writeBehindItsBack(sameLength);
    EXPECT_FALSE(SaveFile(program.session, file, false, noName())) << "not decided";
    EXPECT_EQ(program.frame.Questions.size(), 1U);
    EXPECT_EQ(readText(path), sameLength);

    program.frame.Answers = {kSaveAs};
    EXPECT_TRUE(SaveFile(program.session, file, false, named(folder.file("b.xml"))));
    EXPECT_EQ(program.session.RecentFiles, std::vector{folder.file("b.xml")});
    EXPECT_EQ(readText(path), sameLength);
    EXPECT_EQ(file.FileName, folder.file("b.xml"));

    program.rename(file, "mine again");
    EXPECT_TRUE(SaveFile(program.session, file, false, noName())) << "nobody but this program has written b.xml";
    EXPECT_EQ(program.frame.Questions.size(), 2U);

    writeText(file.FileName, kOther);
    program.rename(file, "mine at last");
    program.frame.Answers = {kMine};
    EXPECT_TRUE(SaveFile(program.session, file, false, noName()));
    EXPECT_NE(readText(folder.file("b.xml")).find("mine at last"), std::string::npos);
}

TEST_F(OtherProgramsTest, TheirsReplacesTheDocumentUnlessItCannotBeRead) {
    program.rename(program.open(path), "mine");
    writeText(path, "<instruments><");
    program.frame.Answers = {kTheirs, kTheirs};
    EXPECT_FALSE(SaveFile(program.session, *program.session.OpenFiles.front(), false, noName()));
    EXPECT_EQ(program.nameIn(*program.session.OpenFiles.front()), "mine");
    EXPECT_EQ(program.messages.Boxes.size(), 1U);

    writeText(path, kOther);
    EXPECT_FALSE(SaveFile(program.session, *program.session.OpenFiles.front(), false, noName()));
    ASSERT_EQ(program.session.OpenFiles.size(), 1U);
    clsFile& taken = *program.session.OpenFiles.front();
    EXPECT_EQ(program.nameIn(taken), "x");
    EXPECT_FALSE(IsChanged(taken));
}

TEST_F(OtherProgramsTest, ComingToTheFrontAsksOnceForEachChange) {
    clsFile& file = program.open(path);
    const auto look = [&] { LookForOtherPrograms(program.session, noName()); };
    fs::last_write_time(path, fs::file_time_type::clock::now() + std::chrono::hours(1));
    look();
    EXPECT_TRUE(program.frame.Questions.empty()) << "touched, but the same";

    writeText(path, kOther);
    look();
    look();
    EXPECT_EQ(program.frame.Questions.size(), 1U) << "left undecided";
    program.rename(file, "mine");
    EXPECT_FALSE(SaveFile(program.session, file, false, noName()));
    EXPECT_EQ(program.frame.Questions.size(), 2U) << "asked before saving";

    writeText(path, std::string(kOther) + " ");
    program.frame.Answers = {kMine};
    look();
    EXPECT_TRUE(SaveFile(program.session, file, false, noName()));
    EXPECT_EQ(program.frame.Questions.size(), 3U);
    EXPECT_NE(readText(path).find("mine"), std::string::npos);

    fs::remove(path); // as with a stick that was pulled out
    look();
    EXPECT_EQ(program.frame.Questions.size(), 3U);
}

TEST_F(OtherProgramsTest, ASecondProgramIsToldAndOpensForReadingOnly) {
    program.open(path);
    fs::create_symlink(path, folder.file("link.xml"));
    RunningProgram second(folder.file("state/"));
    second.messages.Answers = {Button::No, Button::Yes};
    EXPECT_FALSE(OpenFile(second.session, path, OpenSource::Named, true));
    clsFile& file = second.open(folder.file("link.xml"));
    EXPECT_EQ(second.messages.Boxes.size(), 2U);
    second.rename(file, "second");
    EXPECT_FALSE(SaveFile(second.session, file, false, noName())) << "it needs a name";
    second.messages.Boxes.clear();
    int asked = 0;
    const AskSaveName sameAtFirst = [&](const std::string&) {
        return std::optional(++asked == 1 ? path : folder.file("b.xml"));
    };
    EXPECT_TRUE(SaveFile(second.session, file, false, sameAtFirst));
    EXPECT_EQ(second.messages.Boxes.size(), 1U) << "that name is open elsewhere";
    EXPECT_EQ(readText(path), kTwoRows);
    EXPECT_FALSE(file.ReadOnly) << "b.xml is its own";

    program.session.OpenFiles.clear();
    EXPECT_FALSE(second.open(path).ReadOnly) << "nobody else has it open any more";
}

TEST_F(OtherProgramsTest, ARenamedFileIsHeldUnderItsNewNameOnly) {
    clsFile& file = program.open(path);
    const std::string renamed = folder.file("c.xml");
    const auto isHeld = [&](const std::string& name) { return IsHeldElsewhere(program.session, name); };
    editFileName(file, "c.xml");
    EXPECT_TRUE(isHeld(renamed) && !isHeld(path));
    EXPECT_TRUE(exchangeStep(program.session, &file, Direction::Undo));
    EXPECT_TRUE(isHeld(path) && !isHeld(renamed));

    RunningProgram second(folder.file("state/"));
    second.messages.Answers = {Button::Yes};
    EXPECT_EQ(errorOf([&] { editFileName(second.open(path), "c.xml"); }), EBUSY) << "it is open here";
    writeText(renamed, kTwoRows);
    clsFile& other = second.open(renamed);
    fs::remove(renamed); // but it is still open there
    EXPECT_EQ(errorOf([&] { editFileName(file, "c.xml"); }), EBUSY);
    EXPECT_TRUE(isHeld(path) && fs::exists(path)) << "nothing was renamed";
    EXPECT_EQ(other.FileName, renamed);
}

TEST_F(OtherProgramsTest, AnAssessmentIsNotSavedOverAnotherOneUnasked) {
    const std::string kept = folder.file("a.kxa");
    Assessment assessment;
    const auto titled = [&](const char* title) {
        assessment.Title = title;
        return assessment;
    };
    saveAssessment(kept, titled("first"));
    auto document = OpenAssessment(program.session, kept, OpenSource::Named);
    document->Change(Text::StepNote, titled("mine"));
    saveAssessment(kept, titled("other"));
    EXPECT_FALSE(SaveAssessment(program.session, *document, false, noName()));
    EXPECT_EQ(loadAssessment(kept).Title, "other");
    program.frame.Answers = {kMine};
    EXPECT_TRUE(SaveAssessment(program.session, *document, false, noName()));
    EXPECT_EQ(loadAssessment(kept).Title, "mine");

    saveAssessment(kept, titled("other again"));
    program.frame.Answers = {kTheirs};
    EXPECT_TRUE(LookForOtherPrograms(program.session, *document, noName()));
    EXPECT_EQ(document->Now().Title, "other again");
    EXPECT_FALSE(document->IsChanged());
}

TEST_F(OtherProgramsTest, AnAssessmentThatIsOpenElsewhereIsForReadingOnly) {
    const std::string kept = folder.file("a.kxa");
    saveAssessment(kept, {});
    auto first = OpenAssessment(program.session, kept, OpenSource::Named);
    RunningProgram second(folder.file("state/"));
    second.messages.Answers = {Button::No, Button::Yes};
    EXPECT_FALSE(OpenAssessment(second.session, kept, OpenSource::Named));
    auto document = OpenAssessment(second.session, kept, OpenSource::Named);
    ASSERT_TRUE(document && document->ReadOnly);
    int asked = 0;
    const AskSaveName sameAtFirst = [&](const std::string&) {
        return std::optional(++asked == 1 ? kept : folder.file("b.kxa"));
    };
    EXPECT_TRUE(SaveAssessment(second.session, *document, false, sameAtFirst));
    EXPECT_EQ(asked, 2) << "that name is open elsewhere";
    EXPECT_EQ(document->Path(), folder.file("b.kxa"));
    EXPECT_FALSE(document->ReadOnly);

    EXPECT_TRUE(SaveAssessment(program.session, *first, true, named(kept))) << "it is open here and nowhere else";
    EXPECT_FALSE(SaveAssessment(program.session, *first, true, [&, asked = 0](const std::string&) mutable {
        return ++asked == 1 ? std::optional(folder.file("b.kxa")) : std::nullopt;
    }));
    first.reset();
    EXPECT_FALSE(OpenAssessment(second.session, kept, OpenSource::Named)->ReadOnly);
}

TEST_F(OtherProgramsTest, TheFirstSaveOverAFileOfAnotherVersionKeepsIt) {
    const auto backup = [&] { return readText(path + ".bak"); };
    clsFile& file = program.open(path);
    for (const char* name : {"one", "two"}) {
        program.rename(file, name);
        EXPECT_TRUE(SaveFile(program.session, file, false, noName()));
        EXPECT_EQ(backup(), kTwoRows) << "once, never overwritten";
    }
    EXPECT_EQ(program.frame.Told.size(), 1U);
    fs::remove(path + ".bak");
    program.rename(file, "three");
    EXPECT_TRUE(SaveFile(program.session, file, false, noName()));
    EXPECT_FALSE(fs::exists(path + ".bak")) << "this version has written what it replaced";

    program.rename(file, "four");
    const std::string other = folder.file("other.xml");
    writeText(other, kOther);
    fs::create_directory(other + ".bak");
    EXPECT_FALSE(SaveFile(program.session, file, true, named(other))) << "no backup, no save";
    EXPECT_EQ(readText(other), kOther);
}

// A file above 8 MiB is hashed while its document is shown; before that nobody knows whether the history fits.
TEST_F(OtherProgramsTest, ALongFileLosesItsRemarksWhenItsHashSaysSo) {
    const auto logOf = [](const clsFile& file) -> clsLog& { return *file.InstrumentDatas.front()->Locations.front(); };
    ASSERT_TRUE(OpenFile(program.session, path, OpenSource::Named, true));
    EXPECT_EQ(program.session.OpenFiles.front()->Hashing, nullptr) << "a short one is hashed at once";
    clsFile& file = program.open(path);
    program.rename(file, "mine");
    logOf(file).Note = std::string(kReadAtOnce, 'n');
    logOf(file).CutReason = "Radio";
    ASSERT_TRUE(SaveFile(program.session, file, false, noName()));
    for (const bool isOther : {false, true}) {
        if (isOther) writeText(path, readText(path) + "\n");
        program.session.OpenFiles.clear();
        program.frame.Told.clear();
        ASSERT_TRUE(OpenFile(program.session, path, OpenSource::Named, true));
        clsFile& opened = *program.session.OpenFiles.front();
        EXPECT_EQ(logOf(opened).CutReason, "Radio");
        EXPECT_FALSE(editLog(logOf(opened), Text::StepNote, [] { return true; })) << "it may have to be taken back";
        program.pump.runUntil([&] { return noLogIsBusy(program.session); });
        EXPECT_EQ(logOf(opened).CutReason, isOther ? "" : "Radio");
        EXPECT_EQ(program.frame.Told.size(), isOther ? 1U : 0U);
        EXPECT_EQ(program.frame.Status.back(), program.session.LoadText(Text::LoadingCompleted));
        EXPECT_FALSE(IsChanged(opened));
    }
    std::string wide = "\xFF\xFE"; // the reader gives its memory back as it goes
    for (const char letter : readText(path))
        wide += {letter, '\0'};
    writeText(path, wide);
    program.session.OpenFiles.clear();
    EXPECT_EQ(program.open(path).OnDisk.Hash, sha256Of(wide));
    program.rename(*program.session.OpenFiles.front(), "again");
    writeBehindItsBack();
    EXPECT_FALSE(SaveFile(program.session, *program.session.OpenFiles.front(), false, noName()))
        << "it knows what it read";
}

} // namespace
} // namespace kestrane

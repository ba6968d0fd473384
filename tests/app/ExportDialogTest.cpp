#include "app/ExportDialog.h"

#include "app/Documents.h"
#include "app/PictureChoice.h"
#include "assessment/LoggedFile.h"
#include "explorer/NodeKeys.h"

#include <gtest/gtest.h>

#include <cerrno>
#include <filesystem>

namespace kestrane {
namespace {

// Two open files: "a.xml" with the log "Press" of three rows, "b.xml" with the log "Saw" without rows.
class ExportTest : public ::testing::Test, protected TestSession {
protected:
    TemporaryFolder folder;

    ExportTest() {
        add("a.xml", "Press", {80, 81, 82});
        add("b.xml", "Saw", {});
        AssignIdentities(session, false, 0);
    }

    void add(const std::string& name, const std::string& logName, std::initializer_list<float> levels) {
        auto& file = session.OpenFiles.emplace_back(std::make_unique<clsFile>(session, folder.file(name)));
        auto& data = file->InstrumentDatas.emplace_back(std::make_unique<clsInsData>(session));
        clsLog& log = *data->Locations.emplace_back(std::make_unique<clsLog>(session));
        log.Name = logName;
        log.Interval = 60;
        log.LeqCumA(0).CalcValue(81);
        log.LogIntervals.setArraySize(static_cast<std::int64_t>(levels.size()));
        std::size_t row = 0;
        for (const float level : levels)
            log.LogIntervals.Columns().setLevel(Quantity::LeqA, 0, row++, {level, level});
    }

    std::string key(std::size_t file) const { return logKeys(*session.OpenFiles[file]).front(); }

    const clsLog& press() const { return *resolve(session, key(0)).log; }

    std::string written(ExportDialog& dialog) {
        EXPECT_TRUE(dialog.Export({}));
        return readText(dialog.Name());
    }
};

TEST_F(ExportTest, OffersWhatThereIsAndRemembersTheChoices) {
    using enum ExportContent;
    EXPECT_EQ(ExportDialog(session, {key(1), "", nullptr, {}}).Contents(), (std::vector{AllRows, Summary}));
    ExportDialog dialog(session, {"", key(0), &press(), {2, 3}});
    EXPECT_EQ(dialog.Contents(), (std::vector{AllRows, LogRows, RowsInView, Summary}));
    EXPECT_EQ(dialog.Name(), folder.file("Press.csv"));
    dialog.ChooseContent(RowsInView);
    EXPECT_EQ(dialog.Name(), folder.file("Press in view.csv"));
    for (const char* column : {"file", "name", "start", "overloaded"})
        dialog.Tick(column, false);
    EXPECT_EQ(written(dialog), "log,seconds,excluded,LeqA_dB\n" + key(0) + ",60,0,81\n" + key(0) + ",60,0,82\n");

    ExportDialog next(session, {key(0), key(0), &press(), {1, 1}});
    EXPECT_EQ(next.Content(), RowsInView);
    next.ChooseFormat(ExportFormat::Ndjson);
    EXPECT_EQ(written(next), "{\"log\":\"" + key(0) + "\",\"seconds\":60,\"excluded\":0,\"LeqA_dB\":80}\n");
    ExportDialog last(session, {key(0), "", nullptr, {}});
    EXPECT_EQ(last.Format(), ExportFormat::Ndjson);
    EXPECT_EQ(last.Content(), AllRows) << "nothing is in view";
    last.ChooseContent(Summary);
    EXPECT_EQ(last.Table().lines(), 2);
    EXPECT_EQ(last.Name(), folder.file("all logs summary.ndjson"));
    last.ChooseName(folder.file("x.csv"));
    last.ChooseFormat(ExportFormat::Xlsx);
    EXPECT_EQ(last.Name(), folder.file("x.xlsx"));
    for (const std::string& column : last.Table().columns())
        last.Tick(column, false);
    EXPECT_FALSE(last.CanExport());
}

TEST_F(ExportTest, NothingIsWrittenOverOpenFilesWithoutConsentOrAfterCancel) {
    ExportDialog dialog(session, {key(0), "", nullptr, {}});
    const std::string file = folder.file("old.csv");
    writeText(file, "old");
    dialog.ChooseName("old"); // in the folder of the data, as the format says
    messages.Answers = {Button::No};
    EXPECT_FALSE(dialog.Export({}));
    messages.Answers = {Button::Yes};
    std::int64_t asked = -1;
    EXPECT_FALSE(dialog.Export([&](std::int64_t done) { return asked = done, false; }));
    EXPECT_EQ(asked, 0);
    EXPECT_EQ(readText(file), "old");
    EXPECT_EQ(std::distance(std::filesystem::directory_iterator(folder.file("")), {}), 1)
        << "no part of a file is left";

    writeText(folder.file("b.xml"), "<x/>");
    dialog.ChooseName(folder.file("b.xml"));
    messages.Boxes.clear();
    EXPECT_FALSE(dialog.Export({}));
    ASSERT_EQ(messages.Boxes.size(), 1U);
    EXPECT_EQ(messages.Boxes.front().Prompt, ReplaceText(session.LoadText(Text::FileIsOpen), "^", "b.xml"));
    dialog.ChooseName(folder.file("missing/x.csv"));
    EXPECT_FALSE(dialog.Export({}));
    session.OpenFiles.front()->InstrumentDatas.front()->Locations.front()->HasUnreadIntervals = true;
    dialog.ChooseName(folder.file("new.csv"));
    EXPECT_FALSE(dialog.Export({}));
    EXPECT_EQ(messages.Boxes.back().Prompt, "Some intervals of 'Press' could not be read.");
    EXPECT_FALSE(std::filesystem::exists(folder.file("new.csv")));
}

TEST_F(ExportTest, APictureHasASizeOnPaperThatIsRemembered) {
    PictureChoice choice{".svg", 12.7, 6.35, 600};
    PictureSize size;
    const auto save = [&](const std::string&, const PictureSize& of) { size = of; };
    EXPECT_TRUE(exportPicture(session, choice, folder.file("a.svg"), save));
    EXPECT_NEAR(size.Width, 480, 1e-9); // 5 inches of 96 dots
    EXPECT_NEAR(size.Height * size.PixelsOfDot, 1500, 1e-9);
    const PictureChoice last = readPictureChoice(settings);
    EXPECT_EQ(last.Ending, ".svg");
    EXPECT_NEAR(last.Width, 12.7, 1e-5);
    EXPECT_EQ(last.Resolution, 600);

    choice.Width = 500;
    EXPECT_TRUE(choice.IsPossible()) << "a drawing has no pixels";
    choice.Ending = ".png";
    EXPECT_FALSE(choice.IsPossible()); // 118,110 pixels
    EXPECT_FALSE(exportPicture(session, {}, "/x", [](const auto&...) { throw RuntimeError(ENOSPC, "full"); }));
    EXPECT_EQ(readPictureChoice(settings), last) << "it was not written";
    settings.write("Picture", "Width", "1e9");
    EXPECT_EQ(readPictureChoice(settings).Width, 16);
}

} // namespace
} // namespace kestrane

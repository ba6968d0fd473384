#include "platform/Files.h"
#include "desktop/Desk.h"
#include "dialogs/ModalDialog.h"
#include "files/Loaders.h"

#include <QFileDialog>
#include <QLineEdit>
#include <QMenu>
#include <QMenuBar>
#include <QMimeData>
#include <QPushButton>

#include <filesystem>

namespace kestrane {
namespace {

constexpr auto kShift = "shift-dosimeter.xml";
constexpr auto kNight = "night-environment.xml";
constexpr auto kSurvey = "machine-survey-octave.xml";

void drop(QWidget& target, const std::vector<std::string>& paths) {
    QMimeData data;
    QList<QUrl> urls;
    for (const std::string& path : paths)
        urls.push_back(QUrl::fromLocalFile(QString::fromStdString(path)));
    data.setUrls(urls);
    const QPoint at = target.rect().center();
    QDragEnterEvent enter(at, Qt::CopyAction, &data, Qt::LeftButton, {});
    QCoreApplication::sendEvent(&target, &enter);
    QDropEvent dropped(at, Qt::CopyAction, &data, Qt::LeftButton, {});
    QCoreApplication::sendEvent(&target, &dropped);
    EXPECT_TRUE(dropped.isAccepted());
    EXPECT_EQ(dropped.dropAction(), Qt::CopyAction);
}

// Types a name into the file dialog that comes up next.
void onFileDialog(const std::string& path) {
    onDialog([path](QDialog& dialog) {
        control<QLineEdit>(dialog, "fileNameEdit").setText(QString::fromStdString(path));
        QTest::keyClick(&control<QLineEdit>(dialog, "fileNameEdit"), Qt::Key_Return);
    });
}

QStringList recentFiles(Desk& desk) {
    QStringList texts;
    for (const QAction* action : desk.frame->menuBar()->actions().front()->menu()->actions())
        if (action->isVisible() && action->text().endsWith(".xml")) texts.push_back(action->text());
    return texts;
}

void change(Desk& desk, const char* node = "Broadband 1") {
    desk.rename(node, "Changed");
}

TEST(OpenFiles, ADialogAddsThemToTheTreeAndToTheRecentFiles) {
    Desk desk;
    EXPECT_TRUE(desk.nodes().empty());
    EXPECT_TRUE(recentFiles(desk).empty());
    onFileDialog(desk.copyOf(kShift));
    desk.press(QKeySequence("Ctrl+O"));
    desk.settle();
    EXPECT_EQ(desk.nodes(), QStringList({kShift, "Foundry, day shift [360417]", "Broadband", "Broadband 1"}));
    EXPECT_EQ(desk.caption(), "Exploring - (shift-dosimeter.xml)") << "its only log is shown";
    EXPECT_EQ(desk.panel("Status"), "Loading Completed");
    for (const char* sample : {kNight, kSurvey, "protector-ac.xml", "brevik-short-form.xml"})
        desk.open(sample);
    EXPECT_EQ(recentFiles(desk), QStringList({"&1 brevik-short-form.xml", "&2 protector-ac.xml",
                                              "&3 machine-survey-octave.xml", "&4 night-environment.xml"}));
    desk.command("4 night-environment.xml").trigger();
    EXPECT_EQ(recentFiles(desk).front(), "&1 night-environment.xml");
    EXPECT_EQ(desk.session.OpenFiles.size(), 5U);
}

TEST(OpenFiles, ARecentFileShowsItsWholeNameAndMakesAWindowWhereThereIsNone) {
    Desk desk;
    std::filesystem::rename(desk.copyOf(kShift), desk.path("Bore & Sons.xml"));
    desk.session.RecentFiles = {desk.path("Bore & Sons.xml")};
    desk.area().closeAllSubWindows();
    desk.settle();
    desk.frame->EnableMenusAndButtons();
    EXPECT_EQ(recentFiles(desk), QStringList("&1 Bore && Sons.xml"));
    desk.command("1 Bore  Sons.xml").trigger();
    desk.settle();
    EXPECT_EQ(desk.nodes().front(), "Bore & Sons.xml");
}

TEST(StartPage, OffersFilesUntilOneIsOpen) {
    Desk desk;
    desk.session.RecentFiles = {desk.path("gone.xml"), desk.copyOf(kSurvey)};
    desk.frame->RebuildExplorerTrees();
    desk.settle();
    for (const char* name : {"cmdRecent1", "cmdRecent2"}) {
        auto& button = desk.control<QPushButton>(name);
        ASSERT_TRUE(button.isVisible());
        QTest::mouseClick(&button, Qt::LeftButton);
        desk.settle();
    }
    EXPECT_EQ(desk.messages.Boxes.size(), 1U) << "the one that has gone";
    EXPECT_EQ(desk.tree().currentItem()->text(0), "Compressor, idle") << "the first of several";
    EXPECT_FALSE(desk.tabs().isVisible());
    EXPECT_FALSE(desk.control<QWidget>("StartPage").isVisible());
    desk.press(QKeySequence("Ctrl+W"));
    desk.settle();
    EXPECT_TRUE(desk.control<QPushButton>("cmdSample1").isVisible());
    onFileDialog(desk.copyOf(kShift));
    QTest::mouseClick(&desk.control<QPushButton>("cmdOpen"), Qt::LeftButton);
    desk.settle();
    EXPECT_EQ(desk.nodes().front(), kShift);
}

TEST(OpenFiles, DroppingThemOnTheFrameOrTheTreeOpensEach) {
    Desk desk;
    drop(*desk.frame, {desk.copyOf(kShift), desk.copyOf(kNight)});
    QCoreApplication::processEvents();
    desk.settle();
    EXPECT_EQ(desk.session.OpenFiles.size(), 2U);
    drop(*desk.tree().viewport(), {desk.copyOf(kSurvey), desk.path(kShift)});
    QCoreApplication::processEvents();
    desk.settle();
    EXPECT_EQ(desk.session.OpenFiles.size(), 3U);
    EXPECT_EQ(desk.node("Planer").parent()->text(0), "Full Octave");
    EXPECT_TRUE(recentFiles(desk).empty());
}

TEST(OpenFiles, OneThatCannotBeReadIsToldAndLeavesTheRest) {
    Desk desk;
    desk.openLog(kShift, "Broadband 1");
    std::filesystem::resize_file(desk.copyOf(kNight), 5000);
    drop(*desk.frame, {desk.path(kNight), desk.path("missing.xml")});
    QCoreApplication::processEvents();
    desk.settle();
    EXPECT_EQ(desk.messages.Boxes.size(), 2U);
    EXPECT_EQ(desk.session.OpenFiles.size(), 1U);
    EXPECT_EQ(desk.caption(), "Exploring - (shift-dosimeter.xml)");
    EXPECT_EQ(QApplication::overrideCursor(), nullptr);
}

TEST(SaveFiles, SaveKeepsTheNameAndSaveAsAsksForOne) {
    Desk desk;
    desk.open(kShift);
    desk.clickNode(kShift);
    const auto before = desk.bytesOf(kShift);
    desk.press(QKeySequence::Save);
    EXPECT_EQ(desk.bytesOf(kShift), before);
    change(desk);
    const auto marked = [&] { return desk.tree().topLevelItem(0)->text(0); };
    EXPECT_EQ(marked(), "shift-dosimeter.xml*");
    EXPECT_EQ(desk.caption(), "Exploring - (shift-dosimeter.xml*)");
    desk.press(QKeySequence::Save);
    EXPECT_NE(desk.bytesOf(kShift), before);
    EXPECT_EQ(marked(), kShift);
    EXPECT_EQ(desk.caption(), "Exploring - (shift-dosimeter.xml)");
    onFileDialog(desk.path("other"));
    desk.press(QKeySequence("Ctrl+Shift+S"));
    EXPECT_EQ(desk.nodes().front(), "other.xml");
    EXPECT_TRUE(fileExists(desk.path("other.xml")));
}

TEST(SaveFiles, AFailureIsToldAndTheNodeKeepsItsName) {
    Desk desk;
    desk.open(kShift);
    change(desk);
    onFileDialog(desk.path("no such folder/other.xml"));
    desk.answer({});
    desk.press(QKeySequence("Ctrl+Shift+S"));
    EXPECT_EQ(desk.nodes().front(), kShift);
    EXPECT_TRUE(IsChanged(*desk.session.OpenFiles.front()));
}

TEST(CloseFiles, TheAnswerDecidesWhetherAChangedFileIsSavedDroppedOrKept) {
    struct Case {
        Button answer;
        bool isOpenAfter, isSaved;
    };

    for (const Case& test :
         {Case{Button::Cancel, true, false}, Case{Button::No, false, false}, Case{Button::Yes, false, true}}) {
        Desk desk;
        desk.openLog(kShift, "Broadband 1");
        const auto before = desk.bytesOf(kShift);
        change(desk);
        desk.answer({test.answer});
        desk.press(QKeySequence("Ctrl+W"));
        EXPECT_EQ(desk.asked(), "Do you want to save the changes made to 'shift-dosimeter.xml'");
        EXPECT_EQ(desk.session.OpenFiles.size(), test.isOpenAfter ? 1U : 0U);
        EXPECT_EQ(desk.nodes().empty(), !test.isOpenAfter);
        EXPECT_EQ(desk.tabs().isVisible(), test.isOpenAfter);
        EXPECT_EQ(desk.bytesOf(kShift) != before, test.isSaved);
    }
}

TEST(CloseFiles, AnUnchangedFileClosesUnaskedAndTheOtherLogStaysOnView) {
    Desk desk;
    desk.open(kSurvey);
    desk.openLog(kShift, "Broadband 1");
    desk.clickNode(kSurvey);
    desk.answer({});
    desk.press(QKeySequence("Ctrl+W"));
    EXPECT_TRUE(desk.messages.Boxes.empty());
    EXPECT_EQ(desk.nodes().front(), kShift);
    EXPECT_EQ(desk.caption(), "Exploring - (shift-dosimeter.xml)");
    EXPECT_TRUE(desk.tabs().isVisible());
}

TEST(CloseFiles, ClosingWhileRowsAreLoadingGivesThemUp) {
    Desk desk;
    OpenFile(desk.session, desk.copyOf("third-octave-2000.xml"), OpenSource::Named, true);
    desk.clickNode("Third Octave 1");
    desk.press(QKeySequence("Ctrl+Shift+W"));
    desk.settle();
    EXPECT_TRUE(desk.nodes().empty());
    EXPECT_FALSE(desk.tabs().isVisible());
    EXPECT_EQ(desk.panel("Status"), "");
}

TEST(Exit, CancelKeepsTheWindowAndNoLeaves) {
    Desk desk;
    desk.openLog(kShift, "Broadband 1");
    change(desk);
    desk.answer({Button::Cancel});
    desk.press(QKeySequence("Ctrl+Q"));
    EXPECT_TRUE(desk.frame->isVisible());
    desk.session.OpenFiles.front()->InstrumentDatas.front()->Locations.front()->IntervalsRecalculating = true;
    desk.answer({Button::Yes});
    onDialog([](QDialog& waiting) { EXPECT_EQ(waiting.objectName(), "frmWaiting"); });
    EXPECT_FALSE(desk.frame->close());
    EXPECT_FALSE(desk.bytesOf(kShift).contains("Changed"));
    desk.answer({Button::No});
    EXPECT_TRUE(desk.frame->close());
    EXPECT_FALSE(desk.frame->isVisible());
}

} // namespace
} // namespace kestrane

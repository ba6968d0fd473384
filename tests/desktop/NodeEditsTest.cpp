// Editing the tree with keys, menus and dragging; undoing what was done.
#include "desktop/Desk.h"
#include "files/Loaders.h"

#include <QClipboard>
#include <QDrag>
#include <QDropEvent>
#include <QMimeData>
#include <QTableView>
#include <QTimer>
#include <QUrl>

namespace kestrane {
namespace {

constexpr auto kShift = "shift-dosimeter.xml";
constexpr auto kSurvey = "machine-survey-octave.xml";

const QStringList kShiftNodes = {kShift, "Foundry, day shift [360417]", "Broadband", "Broadband 1"};
const QStringList kSurveyNodes = {
    kSurvey,       "Joinery, plant room [C50311]", "Full Octave", "Compressor, idle", "Compressor, loaded",
    "Extract fan", "Joinery, workshop [C50311]",   "Full Octave", "Circular saw",     "Planer"};

struct TwoFilesDesk : Desk {
    TwoFilesDesk() {
        QApplication::clipboard()->clear();
        open(kSurvey);
        open(kShift);
        tree().setFocus();
    }

    qint64 Process = QCoreApplication::applicationPid(); // that drags

    bool isChanged(std::size_t file) { return IsChanged(*session.OpenFiles[file]); }

    void enter(const QMimeData& data, const char* target) {
        QDragEnterEvent event(centre(target), Qt::CopyAction | Qt::MoveAction, &data, Qt::LeftButton, {});
        QCoreApplication::sendEvent(tree().viewport(), &event);
    }

    // Where a drag of the node with this key would leave it.
    bool isAllowed(const char* key, const char* target) {
        QMimeData data;
        data.setData("application/x-kestrane-node", key);
        data.setData("application/x-kestrane-process", QByteArray::number(Process));
        enter(data, target);
        QDragMoveEvent move(centre(target), Qt::CopyAction | Qt::MoveAction, &data, Qt::LeftButton, {});
        QCoreApplication::sendEvent(tree().viewport(), &move);
        EXPECT_NE(node(target).background(0).style(), Qt::NoBrush); // the node under the pointer, allowed or not
        return move.isAccepted();
    }

    void drop(const char* key, const char* target, bool isMove) {
        QMimeData data;
        data.setData("application/x-kestrane-node", key);
        data.setData("application/x-kestrane-process", QByteArray::number(Process));
        if (isMove) data.setData("application/x-kestrane-move", "1");
        enter(data, target);
        QDropEvent dropped(centre(target), Qt::CopyAction, &data, Qt::LeftButton, {});
        QCoreApplication::sendEvent(tree().viewport(), &dropped);
        settle();
    }

    // Whether a node that is dragged with these keys held is to be moved.
    bool isMovedBy(Qt::KeyboardModifiers keys) {
        const QPoint from = centre("Broadband 1");
        QTest::mousePress(tree().viewport(), Qt::LeftButton, keys, from);
        QTimer::singleShot(0, &tree(), &QDrag::cancel); // where the platform has drags, they wait for an end
        dragMouse(*tree().viewport(), from - QPoint(0, 3 * QApplication::startDragDistance()), keys);
        QTest::mouseRelease(tree().viewport(), Qt::LeftButton, keys, from);
        return tree().findChildren<QDrag*>().back()->mimeData()->hasFormat("application/x-kestrane-move");
    }

    QPoint centre(const char* text) { return tree().visualItemRect(&node(text)).center(); }
};

TEST(NodeEdits, ALogIsCutAndPastedIntoAnotherFileAndTheMoveUndone) {
    TwoFilesDesk desk;
    desk.clickNode("Circular saw");
    desk.press(QKeySequence::Cut);
    EXPECT_EQ(desk.nodes(), kSurveyNodes + kShiftNodes) << "it goes when it is pasted";
    desk.clickNode("Broadband");
    EXPECT_FALSE(desk.isEnabled("Paste")) << "of another family";
    desk.clickNode(kShift);
    desk.press(QKeySequence::Paste);
    QStringList moved = kSurveyNodes + kShiftNodes;
    moved.removeAll("Circular saw");
    moved += {"Joinery, workshop [C50311]", "Full Octave", "Circular saw"};
    EXPECT_EQ(desk.nodes(), moved);
    EXPECT_FALSE(desk.tabs().isVisible()) << "it was on display";
    EXPECT_FALSE(desk.isEnabled("Paste")) << "a cut log is pasted once";
    EXPECT_TRUE(desk.isChanged(0) && desk.isChanged(1));
    EXPECT_EQ(desk.command("Undo Move").shortcut(), QKeySequence("Ctrl+Z"));
    desk.press(QKeySequence("Ctrl+Z"));
    EXPECT_EQ(desk.nodes(), kSurveyNodes + kShiftNodes);
    EXPECT_FALSE(desk.isChanged(0) || desk.isChanged(1));
    desk.press(QKeySequence("Ctrl+Shift+Z"));
    EXPECT_EQ(desk.nodes(), moved);
}

TEST(NodeEdits, ACopiedLogIsPastedAgainAndAgainAndFilesOfTheClipboardComeFirst) {
    TwoFilesDesk desk;
    desk.clickNode("Broadband 1");
    desk.press(QKeySequence::Copy);
    EXPECT_EQ(QApplication::clipboard()->text(), "Broadband 1");
    desk.press(QKeySequence::Paste); // on itself
    EXPECT_EQ(desk.nodes(), kSurveyNodes + kShiftNodes);
    desk.clickNode(kShift);
    desk.press(QKeySequence::Paste);
    desk.press(QKeySequence::Paste);
    EXPECT_EQ(desk.nodes(), kSurveyNodes + kShiftNodes + QStringList({"Broadband 1", "Broadband 1"}));

    auto* const files = new QMimeData;
    files->setUrls({QUrl::fromLocalFile(QString::fromStdString(desk.copyOf("night-environment.xml")))});
    QApplication::clipboard()->setMimeData(files);
    desk.clickTab("Full Log");
    desk.tree().setFocus();
    EXPECT_TRUE(desk.isEnabled("Paste"));
    desk.press(QKeySequence::Paste);
    desk.settle();
    EXPECT_EQ(desk.session.OpenFiles.size(), 3U);
    EXPECT_TRUE(desk.session.RecentFiles.size() == 2U) << "as if they had been dropped";
}

TEST(NodeEdits, TheDeleteKeyAsksAndTheNodeSelectedNextOpensOnAClick) {
    TwoFilesDesk desk;
    desk.clickNode("Extract fan");
    desk.answer({Button::Cancel});
    desk.press(Qt::Key_Delete);
    EXPECT_EQ(desk.asked(), "Remove this octave log from this dataset?");
    EXPECT_EQ(desk.nodes(), kSurveyNodes + kShiftNodes);
    desk.answer({Button::Ok});
    desk.press(Qt::Key_Delete);
    EXPECT_FALSE(desk.nodes().contains("Extract fan"));
    EXPECT_FALSE(desk.tabs().isVisible());
    EXPECT_EQ(desk.tree().currentItem()->text(0), "Compressor, idle");
    desk.clickNode("Compressor, idle");
    EXPECT_TRUE(desk.tabs().isVisible());

    desk.clickNode(kSurvey);
    EXPECT_FALSE(desk.isEnabled("Delete"));
    desk.answer({});
    desk.press(Qt::Key_Delete);
    EXPECT_EQ(desk.asked(), "");
    desk.command("Undo Delete Log").trigger();
    EXPECT_EQ(desk.nodes(), kSurveyNodes + kShiftNodes);
    EXPECT_FALSE(desk.isChanged(0));
}

TEST(NodeEdits, DraggedNodesAreCopiedAndWithCtrlMovedWhereTheyBelong) {
    TwoFilesDesk desk;
    EXPECT_TRUE(desk.isMovedBy(Qt::ControlModifier));
    EXPECT_FALSE(desk.isMovedBy(Qt::ShiftModifier));
    EXPECT_TRUE(desk.isAllowed("L1I3F2", "Joinery, workshop [C50311]"));
    EXPECT_TRUE(desk.isAllowed("L1I3F2", "Broadband 1")) << "itself, where nothing happens";
    EXPECT_FALSE(desk.isAllowed("L1I3F2", "Full Octave"));
    EXPECT_EQ(desk.node("Broadband 1").background(0).style(), Qt::NoBrush);
    for (const char* target : {"Broadband 1", "Full Octave"})
        desk.drop("L1I3F2", target, true);
    ++desk.Process; // a key of another program that runs
    desk.drop("L1I3F2", kSurvey, true);
    --desk.Process;
    EXPECT_EQ(desk.nodes(), kSurveyNodes + kShiftNodes);
    desk.drop("L1I3F2", kSurvey, false);
    QStringList with = kSurveyNodes + QStringList({"Foundry, day shift [360417]", "Broadband", "Broadband 1"});
    EXPECT_EQ(desk.nodes(), with + kShiftNodes);
    desk.clickNode(kSurvey);
    desk.press(QKeySequence("Ctrl+Z"));
    desk.drop("F2", kSurvey, true); // a whole file
    EXPECT_EQ(desk.nodes(), with + QStringList({kShift}));
    desk.press(QKeySequence("Ctrl+Z"));
    EXPECT_EQ(desk.nodes(), kSurveyNodes + kShiftNodes);
}

TEST(Undo, BringsBackWhatAViewShows) {
    Desk desk;
    desk.openLog(kShift, "Broadband 1", "Exp Calc");
    auto& grid = desk.control<QTableView>("grdDose");
    const auto level = [&grid] { return grid.model()->index(0, 5).data().toString(); };
    const QString before = level();
    grid.setFocus();
    grid.setCurrentIndex(grid.model()->index(0, 5));
    QTest::keyClicks(&grid, "9");
    QTest::keyClicks(QApplication::focusWidget(), "1");
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Return);
    desk.settle();
    EXPECT_EQ(level(), "91.0");
    desk.press(QKeySequence("Ctrl+Z"));
    EXPECT_EQ(level(), before);
    EXPECT_TRUE(grid.selectionModel()->isSelected(grid.currentIndex()));
    desk.press(QKeySequence("Ctrl+Shift+Z"));
    EXPECT_EQ(level(), "91.0");
    desk.rename("Broadband 1", "Grinder");
    desk.rename(kShift, "renamed.xml");
    desk.command("Undo Rename").trigger();
    EXPECT_EQ(desk.nodes().front(), kShift);
    desk.press(QKeySequence("Ctrl+Z"));
    EXPECT_EQ(desk.nodes(), kShiftNodes);
}

TEST(Undo, ADocumentUndoneToWhereItWasSavedIsClosedWithoutAQuestion) {
    Desk desk;
    desk.openLog(kShift, "Broadband 1");
    desk.rename("Broadband 1", "Grinder");
    desk.press(QKeySequence("Ctrl+S"));
    desk.answer({Button::Ok});
    desk.tree().setFocus();
    desk.press(Qt::Key_Delete);
    desk.press(QKeySequence("Ctrl+Z"));
    desk.answer({});
    desk.press(QKeySequence("Ctrl+W"));
    EXPECT_TRUE(desk.session.OpenFiles.empty());
    EXPECT_TRUE(desk.messages.Boxes.empty());
    EXPECT_TRUE(desk.bytesOf(kShift).contains("Grinder"));
}

} // namespace
} // namespace kestrane

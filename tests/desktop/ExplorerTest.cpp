#include "charts/chaTab.h"
#include "desktop/Desk.h"
#include "dialogs/ModalDialog.h"

#include <QDialog>
#include <QLabel>
#include <QMenu>
#include <QTableView>

#include <filesystem>

namespace kestrane {
namespace {

constexpr auto kShift = "shift-dosimeter.xml";
constexpr auto kSurvey = "machine-survey-octave.xml";

std::vector<QMdiSubWindow*> windows(Desk& desk) {
    const QList<QMdiSubWindow*> list = desk.area().subWindowList();
    return {list.begin(), list.end()};
}

QImage imageOf(QTreeWidgetItem& item) {
    return item.icon(0).pixmap(16).toImage();
}

std::string shownText(Desk& desk) {
    for (const QLabel* label : desk.area().currentSubWindow()->findChildren<QLabel*>())
        if (label->isVisible() && label->alignment() == Qt::AlignCenter) return label->text().toStdString();
    return {};
}

TEST(Tree, AClickOnALogOpensItAndAClickOnAGroupLeavesIt) {
    Desk desk;
    EXPECT_TRUE(desk.control<QWidget>("StartPage").isVisible());
    desk.open(kSurvey);
    EXPECT_NE(shownText(desk).find("Choose a log in the tree"), std::string::npos);
    desk.clickNode("Extract fan");
    EXPECT_TRUE(desk.tabs().isVisible());
    EXPECT_EQ(desk.caption(), "Exploring - (machine-survey-octave.xml)");
    EXPECT_NE(imageOf(desk.node("Extract fan")), imageOf(desk.node("Planer")));
    desk.clickTab("Cumultv (Data)");
    for (const char* other : {"Extract fan", "Full Octave", kSurvey}) {
        desk.clickNode(other);
        EXPECT_EQ(desk.tabInFront(), "Cumultv (Data)") << other;
        EXPECT_EQ(desk.caption(), "Exploring - (machine-survey-octave.xml)") << other;
    }
    desk.clickNode("Planer");
    EXPECT_EQ(imageOf(desk.node("Extract fan")), imageOf(desk.node("Circular saw")));
}

TEST(Tree, TheKeyboardWalksAndOpensLogs) {
    Desk desk;
    desk.openLog(kSurvey, "Circular saw", "Cumultv (Data)");
    const QString before = desk.control<QLabel>("lblLeqA").text();
    desk.tree().setFocus();
    desk.press(Qt::Key_Down);
    EXPECT_EQ(desk.tree().currentItem()->text(0), "Planer");
    EXPECT_NE(desk.control<QLabel>("lblLeqA").text(), before);
    QTest::mouseClick(desk.tree().viewport(), Qt::LeftButton, {}, desk.tree().viewport()->rect().bottomLeft());
    desk.press(QKeySequence("Ctrl+Space"));
    EXPECT_TRUE(desk.tree().currentItem()->isSelected()) << "what commands work on can be seen";
}

TEST(Tree, NodesAreRenamedInPlace) {
    Desk desk;
    desk.openLog(kShift, "Broadband 1");
    desk.rename("Broadband 1", "Grinder");
    EXPECT_TRUE(desk.isEnabled("Undo Rename"));
    EXPECT_EQ(desk.control<chaTab>("chaTab0").chart().Title, "Grinder");
    desk.command("Undo Rename").trigger();
    EXPECT_EQ(desk.control<chaTab>("chaTab0").chart().Title, "Broadband 1");
    desk.command("Redo Rename").trigger();
    desk.rename("Foundry, day shift [360417]", "Foundry");
    desk.rename(kShift, "renamed.xml");
    EXPECT_EQ(desk.nodes(), QStringList({"renamed.xml", "Foundry [360417]", "Broadband", "Grinder"}));
    EXPECT_EQ(desk.caption(), "Exploring - (renamed.xml*)");
    EXPECT_TRUE(std::filesystem::exists(desk.path("renamed.xml")));
    EXPECT_FALSE(std::filesystem::exists(desk.path(kShift)));

    desk.clickNode("Broadband");
    EXPECT_FALSE(desk.isEnabled("Rename"));
    desk.copyOf(kSurvey);
    desk.answer({});
    desk.rename("renamed.xml", kSurvey);
    EXPECT_EQ(desk.messages.Boxes.size(), 1U);
    EXPECT_EQ(desk.nodes().front(), "renamed.xml");
    desk.rename("Grinder", "");
    EXPECT_EQ(desk.nodes().back(), "Grinder");
}

TEST(Tree, ExpansionAndTheOpenLogSurviveTheOpeningOfAFile) {
    Desk desk;
    desk.openLog(kSurvey, "Planer", "Cumultv (Data)");
    desk.node("Joinery, plant room [C50311]").setExpanded(false);
    desk.open(kShift);
    EXPECT_FALSE(desk.node("Joinery, plant room [C50311]").isExpanded());
    EXPECT_TRUE(desk.node("Joinery, workshop [C50311]").isExpanded());
    EXPECT_TRUE(desk.node("Foundry, day shift [360417]").isExpanded());
    EXPECT_EQ(desk.tree().currentItem(), &desk.node("Planer"));
    EXPECT_NE(imageOf(desk.node("Planer")), imageOf(desk.node("Circular saw")));
    EXPECT_EQ(desk.tabInFront(), "Cumultv (Data)");
}

TEST(Tree, ARightClickSelectsTheNodeAndOpensTheMenu) {
    Desk desk;
    desk.openLog(kSurvey, "Planer");
    QTreeWidgetItem& item = desk.node("Circular saw");
    const QPoint at = desk.tree().visualItemRect(&item).center();
    QContextMenuEvent event(QContextMenuEvent::Mouse, at, desk.tree().viewport()->mapToGlobal(at));
    QCoreApplication::sendEvent(desk.tree().viewport(), &event);
    EXPECT_EQ(desk.tree().currentItem(), &item);
    auto* const menu = qobject_cast<QMenu*>(QApplication::activePopupWidget());
    ASSERT_NE(menu, nullptr);
    EXPECT_EQ(menu->actions().front()->text(), "Cu&t");
    menu->close();
}

TEST(ExplorerWindows, EachHasTheSameTreeAndItsOwnLog) {
    Desk desk;
    desk.openLog(kSurvey, "Planer", "Intervals (Table)");
    const QStringList nodes = desk.nodes();
    desk.press(QKeySequence("Ctrl+N"));
    ASSERT_EQ(windows(desk).size(), 2U);
    EXPECT_EQ(desk.nodes(), nodes);
    EXPECT_EQ(desk.caption(), "Kestrane Explorer");
    desk.clickNode("Extract fan");
    EXPECT_EQ(desk.tabInFront(), "Full Log");
    desk.rename("Planer", "Plane");
    EXPECT_TRUE(desk.nodes().contains("Plane"));
    desk.area().setActiveSubWindow(windows(desk).front());
    EXPECT_TRUE(desk.nodes().contains("Plane"));
    EXPECT_EQ(desk.tabInFront(), "Intervals (Table)");
    EXPECT_EQ(desk.tree().currentItem()->text(0), "Plane");

    desk.press(QKeySequence("Ctrl+R"));
    EXPECT_FALSE(desk.tabs().isVisible());
    EXPECT_EQ(desk.caption(), "Kestrane Explorer");
    EXPECT_EQ(imageOf(desk.node("Plane")), imageOf(desk.node("Extract fan")));
    desk.area().setActiveSubWindow(windows(desk).back());
    EXPECT_TRUE(desk.tabs().isVisible());
}

TEST(ExplorerWindows, TwoOnOneLogShowTheSameRowsAndNote) {
    Desk desk;
    desk.openLog(kShift, "Broadband 1", "Exp Calc");
    const auto& first = *desk.control<QTableView>("grdDose").model();
    desk.press(QKeySequence("Ctrl+N"));
    desk.clickNode("Broadband 1");
    desk.clickTab("Exp Calc");
    QTableView& grid = desk.control<QTableView>("grdDose");
    ASSERT_NE(grid.model(), &first);
    grid.model()->setData(grid.model()->index(0, 4), "press", Qt::EditRole);
    EXPECT_EQ(first.index(0, 4).data().toString(), "press");
    click(*desk.area().currentSubWindow(), "chkSave");
    for (const QMdiSubWindow* window : windows(desk))
        EXPECT_TRUE(window->findChild<QAbstractButton*>("chkSave")->isChecked());
}

TEST(ExplorerWindows, TileAndCascadeArrangeThem) {
    Desk desk;
    desk.press(QKeySequence("Ctrl+N"));
    const QSize room = desk.area().viewport()->size();
    const auto isApart = [&] { return !windows(desk)[0]->geometry().intersects(windows(desk)[1]->geometry()); };
    desk.command("Tile Horizontally").trigger();
    EXPECT_TRUE(isApart());
    for (const QMdiSubWindow* window : windows(desk))
        EXPECT_EQ(window->width(), room.width());
    desk.command("Tile Vertically").trigger();
    EXPECT_TRUE(isApart());
    for (const QMdiSubWindow* window : windows(desk))
        EXPECT_EQ(window->height(), room.height());
    desk.command("Cascade").trigger();
    EXPECT_FALSE(isApart());
    EXPECT_NE(windows(desk)[0]->pos(), windows(desk)[1]->pos());
    for (QMdiSubWindow* window : windows(desk))
        window->showMinimized();
    EXPECT_FALSE(desk.isEnabled("Reset Explorer Window"));
    desk.command("Arrange Icons").trigger();
    EXPECT_TRUE(isApart());
    desk.area().closeAllSubWindows();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    desk.command("Tile Vertically").trigger();
    desk.press(QKeySequence("Ctrl+N"));
    EXPECT_EQ(windows(desk).size(), 1U);
}

TEST(LoadingRows, ALogThatIsStillLoadingSaysSoAndOpensByItself) {
    Desk desk;
    desk.open(kShift);
    OpenFile(desk.session, desk.copyOf("third-octave-2000.xml"), OpenSource::Dialog, true);
    desk.clickNode("Third Octave 1");
    EXPECT_EQ(desk.asked(), "Log intervals are still loading and are not yet available");
    EXPECT_EQ(desk.panel("Status"), "Loading Intervals");
    EXPECT_FALSE(desk.isEnabled("Save"));
    EXPECT_FALSE(desk.tabs().isVisible());
    EXPECT_NE(shownText(desk).find("still loading"), std::string::npos);
    EXPECT_NE(imageOf(desk.node("Third Octave 1")), imageOf(desk.node("Broadband 1")));
    desk.settle();
    EXPECT_TRUE(desk.tabs().isVisible());
    EXPECT_EQ(desk.panel("Status"), "Loading Completed");
    EXPECT_TRUE(desk.isEnabled("Save"));
}

TEST(LoadingRows, TheViewStaysWhileADialogWorksOnIt) {
    Desk desk;
    desk.openLog(kShift, "Broadband 1");
    OpenFile(desk.session, desk.copyOf("third-octave-2000.xml"), OpenSource::Dialog, true);
    desk.clickNode("Third Octave 1");
    QDialog dialog(desk.frame.get());
    dialog.setModal(true);
    dialog.show();
    desk.settle();
    const auto isBandLogOnView = [&] { return desk.tabs().isTabEnabled(eTabNoiseRating); };
    EXPECT_FALSE(isBandLogOnView());
    dialog.close();
    EXPECT_TRUE(QTest::qWaitFor(isBandLogOnView, 2000));
}

} // namespace
} // namespace kestrane

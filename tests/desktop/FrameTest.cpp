#include "desktop/Desk.h"
#include "dialogs/ModalDialog.h"

#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QMenuBar>
#include <QRadioButton>
#include <QScrollArea>
#include <QScrollBar>
#include <QSplitter>
#include <QStatusBar>
#include <QTabWidget>
#include <QTableView>
#include <QToolBar>

namespace kestrane {
namespace {

constexpr auto kShift = "shift-dosimeter.xml";
constexpr auto kSurvey = "machine-survey-octave.xml";

QString enabled(Desk& desk) {
    constexpr const char* kCommands[] = {
        "Close",        "Close All", "Save",      "Exposure Time...",  "Rename",
        "Force Recalc", "Note",      "Export...", "Export Picture...", "Reset Explorer Window"};
    QStringList texts;
    for (const char* command : kCommands)
        if (desk.isEnabled(command)) texts.push_back(command);
    return texts.join(", ");
}

TEST(Menus, OfferWhatCanBeDoneJustNow) {
    Desk desk;
    EXPECT_EQ(enabled(desk), "Reset Explorer Window");
    desk.open(kShift);
    desk.clickNode("Broadband");
    EXPECT_EQ(enabled(desk), "Close, Close All, Save, Export..., Reset Explorer Window");
    desk.clickNode("Foundry, day shift [360417]");
    EXPECT_EQ(enabled(desk), "Close, Close All, Save, Rename, Export..., Reset Explorer Window");
    desk.clickNode("Broadband 1");
    EXPECT_EQ(enabled(desk),
              "Close, Close All, Save, Exposure Time..., Rename, Force Recalc, Note, Export..., Export Picture..., "
              "Reset Explorer Window");
    desk.clickTab("Cumultv (Data)");
    EXPECT_EQ(enabled(desk),
              "Close, Close All, Save, Exposure Time..., Rename, Force Recalc, Export..., Reset Explorer Window");
    desk.area().currentSubWindow()->close();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    QCoreApplication::processEvents();
    EXPECT_EQ(enabled(desk), "Close All");
}

TEST(Menus, TheToolBarAndTheStatusBarAreHiddenAndShown) {
    Desk desk;
    auto& bar = *desk.frame->findChild<QToolBar*>("tbToolBar");
    EXPECT_EQ(bar.actions().front()->text().remove('&'), "Download...");
    desk.command("Toolbar").trigger();
    EXPECT_FALSE(bar.isVisible());
    desk.command("Toolbar").trigger();
    EXPECT_TRUE(bar.isVisible());
    desk.command("Status Bar").trigger();
    EXPECT_FALSE(desk.frame->statusBar()->isVisible());
    QContextMenuEvent click(QContextMenuEvent::Mouse, {5, 5}, desk.frame->mapToGlobal(QPoint(5, 5)));
    QCoreApplication::sendEvent(desk.frame->menuBar(), &click);
    EXPECT_EQ(QApplication::activePopupWidget(), nullptr) << "the bars are hidden by their commands alone";
}

TEST(Menus, APopUpShowsASeparatorBeforeWhatCanBeDone) {
    Desk desk;
    desk.open(kShift);
    QTreeWidgetItem& group = desk.node("Broadband");
    QTimer::singleShot(0, desk.frame.get(), [] {
        auto* const menu = qobject_cast<QMenu*>(QApplication::activePopupWidget());
        ASSERT_NE(menu, nullptr);
        QStringList shown;
        for (const QAction* action : menu->actions())
            if (action->isVisible()) shown.push_back(action->text());
        EXPECT_EQ(shown.join('|'), "Cu&t|&Copy|&Paste|Force &Recalc||&Delete|Re&name|C&lose||Display &Options...");
        menu->close();
    });
    const QPoint at = desk.tree().visualItemRect(&group).center();
    desk.tree().setCurrentItem(&group);
    QContextMenuEvent click(QContextMenuEvent::Mouse, at, desk.tree().viewport()->mapToGlobal(at));
    QCoreApplication::sendEvent(desk.tree().viewport(), &click);
    desk.settle();
}

TEST(Settings, TheTreeAndEveryTabFollowTheDialog) {
    Desk desk;
    desk.openLog(kShift, "Broadband 1", "Intervals (Table)");
    const auto columns = [&] { return desk.control<QAbstractItemView>("grdTable").model()->columnCount(); };
    QAction* ofLog = nullptr;
    EXPECT_EQ(columns(), 6);
    onDialog([](QDialog& dialog) {
        click(dialog, "optTVFiles2");
        click(dialog, "cmdOK");
    });
    desk.press(QKeySequence("Ctrl+,"));
    EXPECT_EQ(desk.nodes(), QStringList({"Foundry, day shift [360417]", "Broadband", "Broadband 1"}));
    onDialog([](QDialog& dialog) {
        click(dialog, "chkPlot1");
        click(dialog, "cmdOK");
    });
    const QString text = desk.command("Display Options...").text();
    for (QAction* const action : desk.frame->actions()) // first that of the tree, then that of the log
        if (action->text() == text) ofLog = action;
    ofLog->trigger();
    EXPECT_EQ(columns(), 5);
    EXPECT_EQ(desk.tree().currentItem()->text(0), "Broadband 1");

    desk.clickTab("Cumultv (Data)");
    ASSERT_TRUE(desk.control<QLabel>("lblLeqA").isVisible());
    onDialog([](QDialog& dialog) {
        click(dialog, "optCumPanels2");
        click(dialog, "cmdOK");
    });
    desk.command("Settings...").trigger();
    EXPECT_EQ(desk.area().findChild<QLabel*>("lblLeqA"), nullptr) << "the advanced panel shows no levels";
}

TEST(Placement, IsSavedOnExitAndRestored) {
    MemorySettings store;
    int width = 0; // of the tree
    {
        Desk desk;
        desk.frame->setGeometry(30, 40, 600, 420);
        desk.open(kShift);
        auto& splitter = *desk.area().currentSubWindow()->findChild<QSplitter*>();
        const QPoint at = splitter.handle(1)->rect().center();
        QTest::mousePress(splitter.handle(1), Qt::LeftButton, {}, at);
        QTest::mouseMove(splitter.handle(1), at + QPoint(-60, 0));
        QTest::mouseRelease(splitter.handle(1), Qt::LeftButton, {}, at);
        width = desk.tree().width();
        for (int i = 0; i < 4; ++i)
            desk.frame->NewExplorerWindow();
        desk.command("Tile Vertically").trigger();
        EXPECT_NE(desk.tree().width(), width);
        EXPECT_TRUE(desk.frame->close());
        store = desk.settings;
    }
    EXPECT_EQ(store.read("Settings", "TreeWidth", {}), std::to_string(width)) << "as the user drew it, not as tiled";
    EXPECT_TRUE(store.read("Preferences", "LastFile1", {}).ends_with(kShift));
    const Desk again(store, QSize());
    EXPECT_EQ(again.frame->geometry(), QRect(30, 40, 600, 420));
    store.write("Settings", "MainLeft", "30000");
    const Desk far(store, QSize());
    EXPECT_TRUE(QGuiApplication::primaryScreen()->geometry().contains(far.frame->geometry()));
}

TEST(WindowMenu, EndsWithTheOpenWindows) {
    Desk desk;
    desk.open(kShift);
    desk.command("New Assessment").trigger();
    QMenu* menu = nullptr; // that of the windows
    for (QMenu* const any : desk.frame->menuBar()->findChildren<QMenu*>())
        if (any->actions().contains(&desk.command("Cascade"))) menu = any;
    ASSERT_NE(menu, nullptr);
    for (int turn = 0; turn < 2; ++turn) { // each time anew
        emit menu->aboutToShow();
        const QList<QAction*> actions = menu->actions();
        const auto count = desk.area().subWindowList().size();
        ASSERT_EQ(count, 2);
        EXPECT_TRUE(actions[actions.size() - 3]->isSeparator());
        EXPECT_EQ(actions[actions.size() - 1]->text(), "&2 " + desk.caption());
        EXPECT_EQ(actions[actions.size() - 1]->isChecked(), true);
        EXPECT_FALSE(actions[actions.size() - 2]->isChecked());
        if (turn == 1) actions[actions.size() - 2]->trigger();
    }
    EXPECT_EQ(desk.area().currentSubWindow(), desk.area().subWindowList().front());
}

// What a person can press or type into.
bool isControl(const QWidget& widget) {
    for (const char* kind : {"QAbstractButton", "QLineEdit", "QComboBox", "QAbstractItemView", "QTabBar"})
        if (widget.inherits(kind)) return widget.isVisible() && widget.isEnabled();
    return false;
}

bool isPartOfAnother(const QWidget& widget) {
    const QWidget* parent = widget.parentWidget();
    return widget.objectName().startsWith("qt_") || parent->inherits("QComboBox") || parent->inherits("QTabBar") ||
           parent->inherits("QToolBar") || parent->inherits("QMenuBar") || parent->inherits("QMdi") ||
           widget.inherits("QHeaderView") || parent->inherits("QTableView");
}

TEST(Looks, EveryControlHasANameAndIsReachedByTab) {
    Desk desk;
    desk.openLog(kSurvey, "Planer");
    for (const char* tab :
         {"Full Log", "Intervals (Table)", "Intervals (Graph)", "Cumultv (Graph)", "Noise Rating", "Cumultv (Data)"}) {
        desk.clickTab(tab);
        std::set<const QWidget*> reached;
        desk.tree().setFocus();
        for (int i = 0; i < 60; ++i) {
            QWidget* const focus = QApplication::focusWidget();
            ASSERT_NE(focus, nullptr);
            if (!reached.insert(focus).second) break;
            QTest::keyClick(focus, Qt::Key_Tab);
        }
        for (const QWidget* widget : desk.area().currentSubWindow()->widget()->findChildren<QWidget*>()) {
            if (!isControl(*widget) || isPartOfAnother(*widget)) continue;
            const auto* button = qobject_cast<const QRadioButton*>(widget);
            const std::string name = (widget->objectName() + " " + widget->metaObject()->className()).toStdString();
            EXPECT_FALSE(widget->accessibleName().isEmpty() && button == nullptr) << tab << ": " << name;
            EXPECT_TRUE(reached.contains(widget) || (button != nullptr && !button->isChecked())) << tab << ": " << name;
        }
    }
}

TEST(Looks, PanelTimesAndTabsHaveTheirWidth) {
    Desk desk;
    for (const auto& [sample, log] : {std::pair("night-environment.xml", "Broadband 1"), std::pair(kSurvey, "Planer"),
                                      std::pair("third-octave-2000.xml", "Third Octave 1")}) {
        desk.openLog(sample, log);
        const QTabBar& tabs = desk.tabs();
        desk.clickTab("Cumultv (Data)");
        EXPECT_FALSE(desk.control<QScrollArea>("fraDefaultData").horizontalScrollBar()->isVisible()) << sample;
        desk.clickTab("Intervals (Table)");
        const auto& table = desk.control<QTableView>("grdTable");
        EXPECT_GE(table.columnWidth(0), table.sizeHintForIndex(table.model()->index(0, 0)).width()) << sample;
        EXPECT_GE(tabs.width(), tabs.tabRect(tabs.count() - 1).right());
    }
}

} // namespace
} // namespace kestrane

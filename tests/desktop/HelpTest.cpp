// The window of the help, and the tour.
#include "desktop/Desk.h"
#include "desktop/frmHelp.h"
#include "dialogs/ModalDialog.h"
#include "dialogs/frmTour.h"

#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QTextBrowser>

namespace kestrane {
namespace {

frmHelp* helpOf(QWidget& owner) {
    return owner.findChild<frmHelp*>(QString(), Qt::FindDirectChildrenOnly);
}

QString pageOf(QWidget& help) {
    return control<QTextBrowser>(help, "txtPage").source().fileName();
}

TEST(HelpWindow, FindsAPageAndMarksTheWordsOnIt) {
    Desk desk;
    desk.command("Help").trigger();
    frmHelp* const help = helpOf(*desk.frame);
    ASSERT_NE(help, nullptr);
    auto& list = control<QListWidget>(*help, "lstPages");
    auto& browser = control<QTextBrowser>(*help, "txtPage");
    EXPECT_GT(list.count(), 30) << "all pages, until something is looked for";
    auto& search = control<QLineEdit>(*help, "txtSearch");
    type(search, "loudest window");
    EXPECT_TRUE(list.item(0)->text().startsWith("The loudest and the quietest window\n"));
    QTest::keyClick(&search, Qt::Key_Return);
    EXPECT_EQ(pageOf(*help), "worst-window.html");
    ASSERT_GE(browser.extraSelections().size(), 2);
    EXPECT_EQ(browser.extraSelections().front().cursor.selectedText().toLower(), "loudest");
    type(search, "no such thumbscrew");
    EXPECT_EQ(list.count(), 1);
    QTest::keyClick(&search, Qt::Key_Return);
    EXPECT_EQ(pageOf(*help), "worst-window.html") << "there is nothing to open";
    desk.command("Acoustic Terms and References").trigger();
    EXPECT_EQ(helpOf(*desk.frame), help) << "a second one is not opened";
    EXPECT_EQ(pageOf(*help), "AcousticTerms.html");
    click(*help, "cmdBack");
    EXPECT_EQ(pageOf(*help), "worst-window.html");
}

TEST(HelpWindow, CanBeUsedWhileADialogIsOpen) {
    Desk desk;
    onDialog([](QDialog& settings) {
        QTest::keyClick(&settings, Qt::Key_F1);
        frmHelp* const help = helpOf(settings);
        ASSERT_NE(help, nullptr);
        EXPECT_EQ(pageOf(*help), "settings.html");
        QTest::keyClicks(&control<QLineEdit>(*help, "txtSearch"), "dose");
        EXPECT_EQ(control<QLineEdit>(*help, "txtSearch").text(), "dose");
    });
    desk.command("Settings...").trigger();
}

TEST(Tour, GoesOnAndBackByKeysAndEndsBehindItsLastPicture) {
    Desk desk;
    onDialog([](QDialog& tour) {
        const auto step = [&] { return control<QLabel>(tour, "lblStep").text(); };
        const QString first = control<QLabel>(tour, "lblTour").text();
        EXPECT_EQ(step(), "1 of 4");
        EXPECT_FALSE(control<QAbstractButton>(tour, "cmdBack").isEnabled());
        const auto press = [&](Qt::Key key) { QTest::keyClick(tour.focusWidget(), key); };
        press(Qt::Key_Right);
        press(Qt::Key_Return);
        EXPECT_EQ(step(), "3 of 4");
        EXPECT_NE(control<QLabel>(tour, "lblTour").text(), first);
        press(Qt::Key_Left);
        EXPECT_EQ(step(), "2 of 4");
        for (int i = 0; i < 2; ++i)
            click(tour, "cmdNext");
        EXPECT_TRUE(tour.isVisible());
        EXPECT_FALSE(control<QLabel>(tour, "imgTour").pixmap().isNull());
        click(tour, "cmdNext");
        EXPECT_FALSE(tour.isVisible());
    });
    desk.command("Tour").trigger();
}

} // namespace
} // namespace kestrane

// The keyboard: help on what has the focus, the keys of the commands and the list of them.
#include "desktop/Desk.h"
#include "desktop/HelpTopic.h"
#include "dialogs/ModalDialog.h"

#include <QClipboard>
#include <QLineEdit>
#include <QTableView>

namespace kestrane {
namespace {

constexpr auto kShift = "shift-dosimeter.xml";

TEST(HelpKey, IsOfTheInnermostPartThatHasAPage) {
    Desk desk;
    EXPECT_EQ(helpTopicOf(nullptr), "help");
    EXPECT_EQ(helpTopicOf(desk.frame.get()), "help");
    EXPECT_EQ(helpTopicOf(desk.area().currentSubWindow()->findChild<QWidget*>("StartPage")), "start");
    desk.openLog(kShift, "Broadband 1");
    EXPECT_EQ(helpTopicOf(&desk.tree()), "tree");
    EXPECT_EQ(helpTopicOf(&desk.tabs()), "chart");
    desk.clickTab("Intervals (Table)");
    EXPECT_EQ(helpTopicOf(&desk.tabs()), "table");
    desk.clickTab("Cumultv (Data)");
    EXPECT_EQ(helpTopicOf(&desk.control<QWidget>("txtUserCal")), "panel");
}

// What is looked for stands in a row of the list with the keys that the commands really have.
TEST(KeyList, HasEveryCommandWithItsKeysAndIsSearched) {
    Desk desk;
    const auto rows = [](const QTableView& table) {
        QStringList lines;
        for (int row = 0; row < table.model()->rowCount(); ++row) {
            QStringList cells;
            for (int column = 0; column < 3; ++column)
                cells.push_back(table.model()->index(row, column).data().toString());
            lines.push_back(cells.join(" | "));
        }
        return lines;
    };
    desk.command("Export...").setShortcut(QKeySequence("Ctrl+Shift+F12"));
    onDialog([&](QDialog& dialog) {
        auto& table = control<QTableView>(dialog, "tblKeys");
        const QStringList all = rows(table);
        EXPECT_TRUE(all.contains("File > Print | Default Report | Ctrl+P"));
        EXPECT_TRUE(all.contains("Menu of the tree | Rename | F2"));
        EXPECT_TRUE(all.contains("View > Marked Range | Zoom To Range | Ctrl+Shift+M")) << all.join('\n').toStdString();
        control<QLineEdit>(dialog, "txtSearch").setText("EXPORT ctrl");
        EXPECT_EQ(rows(table), (QStringList{"File | Export | Ctrl+Shift+F12", "File | Export Picture | Ctrl+Shift+P"}));
        click(dialog, "cmdCopy");
        EXPECT_EQ(QApplication::clipboard()->text(),
                  "Where\tCommand\tKeys\r\nFile\tExport\tCtrl+Shift+F12\r\nFile\tExport Picture\tCtrl+Shift+P\r\n");
    });
    desk.command("Keyboard Shortcuts...").trigger();
    ASSERT_FALSE(QApplication::clipboard()->text().isEmpty());
}

// The desktop's own keys may not take one of ours.
TEST(Keys, NoneServesTwoCommands) {
    Desk desk;
    std::map<QKeySequence, QString> known;
    for (const QAction* action : desk.frame->actions()) {
        for (const QKeySequence& keys : action->shortcuts()) {
            const bool isOurs = keys.isEmpty() || known.emplace(keys, action->text()).first->second == action->text();
            EXPECT_TRUE(isOurs) << keys.toString().toStdString() << action->text().toStdString();
        }
    }
    EXPECT_TRUE(known.contains(QKeySequence(QKeySequence::HelpContents)));
}

} // namespace
} // namespace kestrane

#include "desktop/Desk.h"
#include "dialogs/ModalDialog.h"
#include "files/Loaders.h"

#include <QCheckBox>
#include <QClipboard>
#include <QComboBox>
#include <QIcon>
#include <QLineEdit>
#include <QTableView>

namespace kestrane {
namespace {

constexpr auto kShift = "shift-dosimeter.xml";

// The columns of the grid.
enum { kCriterion, kExchange, kDate, kTime, kNote, kLeq, kDuration, kLex, kDose, kIncluded };

struct ExposureDesk : Desk {
    ExposureDesk() {
        openLog(kShift, "Broadband 1", "Exp Calc");
        grid().setFocus();
    }

    QTableView& grid() { return control<QTableView>("grdDose"); }

    clsLog& log() { return *session.OpenFiles.back()->InstrumentDatas.front()->Locations.front(); }

    QString cell(int row, int column) { return grid().model()->index(row, column).data().toString(); }

    void go(int row, int column) { grid().setCurrentIndex(grid().model()->index(row, column)); }

    // Types into the current cell, as a person does who does not press F2 first, and ends with the key.
    void enter(const char* text, Qt::Key end = Qt::Key_Return) {
        QTest::keyClick(&grid(), text[0]);
        QTest::keyClicks(QApplication::focusWidget(), QLatin1String(text + 1));
        QTest::keyClick(QApplication::focusWidget(), end);
        settle();
    }

    QPoint at() { return {grid().currentIndex().row(), grid().currentIndex().column()}; }

    void comeBack() { // from a dialog
        frame->activateWindow();
        ASSERT_TRUE(QTest::qWaitForWindowActive(frame.get()));
        grid().setFocus();
        settle();
    }

    void insert(const char* count) {
        onDialog([count](QDialog& dialog) {
            type(kestrane::control<QLineEdit>(dialog, "txtAnswer"), count);
            kestrane::click(dialog, "cmdOK");
        });
        command("Insert Row(s)...").trigger();
        comeBack();
    }
};

TEST(Exposures, ACellThatIsBeingTypedCountsWhenTheWindowIsClosed) {
    ExposureDesk desk;
    desk.go(0, kNote);
    QTest::keyClick(&desk.grid(), 'p');
    QTest::keyClicks(QApplication::focusWidget(), "ress");
    desk.answer({Button::Cancel});
    EXPECT_FALSE(desk.frame->close());
    EXPECT_EQ(desk.cell(0, kNote), "press");
}

TEST(Exposures, BeginWithTheLogsRowAndAreEditedLikeASpreadsheet) {
    ExposureDesk desk;
    ASSERT_EQ(desk.grid().model()->rowCount(), 2);
    EXPECT_EQ(desk.cell(0, kDuration), "08:00:00");
    EXPECT_EQ(desk.cell(0, kLeq), desk.cell(0, kLex)); // over eight hours
    EXPECT_EQ(desk.cell(1, kLex), desk.cell(0, kLex));
    EXPECT_EQ(desk.grid().model()->headerData(1, Qt::Vertical).toString(), "Total");

    desk.insert("3");
    ASSERT_EQ(desk.grid().model()->rowCount(), 5);
    desk.go(0, kLeq);
    desk.enter("85", Qt::Key_Tab);
    desk.enter("4:00:00", Qt::Key_Tab);
    EXPECT_EQ(desk.at(), QPoint(0, kIncluded)) << "computed cells are passed over";
    QTest::keyClick(&desk.grid(), Qt::Key_Space);
    QTest::keyClick(&desk.grid(), Qt::Key_Return);
    EXPECT_EQ(desk.at(), QPoint(1, kLeq)) << "Enter goes back to where Tab set out";
    EXPECT_EQ(desk.cell(0, kLex), "82.0");
    EXPECT_EQ(desk.cell(0, kIncluded), "N");
    desk.enter("loud");
    EXPECT_EQ(desk.cell(1, kLeq), desk.cell(2, kLeq)) << "no level";
    EXPECT_EQ(desk.at(), QPoint(2, kLeq));
    EXPECT_EQ(desk.panel("Status"), "'loud' was not taken.  A level is a number of dB, up to 200: 91.3.");

    desk.go(1, kCriterion);
    desk.press(Qt::Key_F2);
    const auto list = [] { return qobject_cast<QComboBox*>(QApplication::focusWidget()); };
    ASSERT_NE(list(), nullptr);
    EXPECT_EQ(list()->count(), 4);
    desk.press(Qt::Key_Home);
    desk.press(Qt::Key_Escape);
    desk.settle();
    EXPECT_NE(desk.cell(1, kCriterion), "75");
    desk.grid().setFocus();
    desk.press(Qt::Key_F2);
    ASSERT_NE(list(), nullptr);
    desk.press(Qt::Key_Home);
    desk.press(Qt::Key_Tab);
    desk.settle();
    EXPECT_EQ(desk.cell(1, kCriterion), "75");
    EXPECT_EQ(desk.at(), QPoint(1, kExchange));

    desk.go(3, kIncluded);
    QTest::keyClick(&desk.grid(), Qt::Key_Tab);
    EXPECT_FALSE(desk.grid().hasFocus()) << "the last cell gives the focus on";
}

TEST(Exposures, ALevelThatIsNotAWeightedIsSeenAndHeardToBe) {
    Desk desk;
    desk.openLog("machine-survey-octave.xml", "Compressor, idle", "Exp Calc");
    const QModelIndex level = desk.control<QTableView>("grdDose").model()->index(0, kLeq);
    EXPECT_TRUE(level.data(Qt::AccessibleDescriptionRole).toString().contains("not A-weighted"));
    EXPECT_FALSE(level.data(Qt::DecorationRole).value<QIcon>().isNull()) << "not by its colour alone";
}

TEST(Exposures, RowsAreDeletedAndPasted) {
    ExposureDesk desk;
    desk.insert("3");
    desk.go(1, kLeq);
    QApplication::clipboard()->setText("Leq\tExp Time\r\n80\t1:00:00\r\n81\t2:00:00\r\nx\t3:00:00\r\n83\t4:00:00\r\n");
    desk.press(QKeySequence::Paste);
    EXPECT_EQ(desk.grid().model()->rowCount(), 6);
    EXPECT_EQ(desk.cell(1, kLeq) + desk.cell(4, kLeq), "80.083.0");
    EXPECT_EQ(desk.cell(3, kLeq) + desk.cell(3, kDuration), "03:00:00");
    EXPECT_TRUE(desk.grid().model()->index(3, kLeq).data(Qt::BackgroundRole).isValid());
    EXPECT_EQ(desk.panel("Status"), "Entries that could not be taken: 1");

    desk.go(1, kLeq);
    for (const auto& keys : {QKeySequence(Qt::SHIFT | Qt::Key_Right), QKeySequence(Qt::SHIFT | Qt::Key_Down)})
        desk.press(keys);
    desk.press(QKeySequence::Copy);
    EXPECT_EQ(QApplication::clipboard()->text(), "80.0\t01:00:00\r\n81.0\t02:00:00\r\n");

    desk.go(1, kLeq);
    onDialog([](QDialog& dialog) {
        auto& answer = control<QLineEdit>(dialog, "txtAnswer");
        EXPECT_EQ(answer.text(), "2");
        type(answer, "1:2,4");
        click(dialog, "cmdOK");
    });
    click(*desk.frame, "cmdDeleteRows");
    desk.comeBack();
    ASSERT_EQ(desk.grid().model()->rowCount(), 3);
    EXPECT_EQ(desk.cell(0, kLeq) + desk.cell(1, kLeq), "81.083.0");

    desk.go(2, kLeq); // the totals
    EXPECT_FALSE(desk.isEnabled("Delete Row(s)..."));
    desk.go(0, kLeq);
    onDialog([](QDialog& dialog) {
        type(control<QLineEdit>(dialog, "txtAnswer"), "1:2");
        click(dialog, "cmdOK");
    });
    click(*desk.frame, "cmdDeleteRows");
    desk.comeBack();
    ASSERT_EQ(desk.grid().model()->rowCount(), 1);
    EXPECT_FALSE(desk.isEnabled("Delete Row(s)...") || desk.control<QWidget>("cmdDeleteRows").isEnabled());
    EXPECT_TRUE(desk.isEnabled("Insert Row(s)..."));
    desk.clickTab("Full Log");
    EXPECT_FALSE(desk.isEnabled("Insert Row(s)..."));

    desk.openLog("machine-survey-octave.xml", "Extract fan", "Exp Calc");
    desk.grid().setFocus();
    desk.go(0, kLeq);
    desk.enter("loud");
    ASSERT_TRUE(desk.panel("Status").startsWith("'loud'"));
    desk.clickNode("Compressor, idle");
    EXPECT_EQ(desk.panel("Status"), "") << "of another log";
}

TEST(Exposures, AreSavedWithTheLogWhenTheUserWantsIt) {
    ExposureDesk desk;
    auto& chkSave = desk.control<QCheckBox>("chkSave");
    EXPECT_FALSE(chkSave.isChecked());
    EXPECT_FALSE(IsChanged(*desk.session.OpenFiles.back())) << "looking is no change";
    desk.go(0, kNote);
    desk.enter("press");
    EXPECT_FALSE(IsChanged(*desk.session.OpenFiles.back())) << "nothing that would be saved";
    chkSave.click();
    EXPECT_TRUE(IsChanged(*desk.session.OpenFiles.back()));
    desk.command("Save").trigger();
    desk.settle();
    EXPECT_TRUE(desk.bytesOf(kShift).contains("press"));
}

} // namespace
} // namespace kestrane

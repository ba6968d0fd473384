#include "TestSession.h"
#include "dialogs/AskDialogs.h"
#include "dialogs/ModalDialog.h"
#include "dialogs/Words.h"
#include "dialogs/frmAbout.h"
#include "dialogs/frmExpTime.h"
#include "dialogs/frmRecovery.h"
#include "dialogs/frmSimpleEdit.h"
#include "model/clsLog.h"
#include "platform/TemporaryFolder.h"

#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QTreeWidget>

namespace kestrane {
namespace {

TEST(SaveName, AFileIsReplacedOnlyWhenTheUserAgreesToTheWholeName) {
    TestSession test;
    const TemporaryFolder folder;
    const QString name = QString::fromStdString(folder.file("chart.v1"));
    writeText(folder.file("chart.v1.png"), "kept");
    writeText(folder.file("chart.v1"), "not meant, so not asked about");
    test.messages.Answers = {Button::No, Button::Yes};
    const auto enter = [&name](QDialog& dialog) {
        auto& field = control<QLineEdit>(dialog, "fileNameEdit");
        field.setText(name);
        QTest::keyClick(&field, Qt::Key_Return);
    };
    onDialog([&](QDialog& dialog) {
        onDialog(enter); // it asks again
        enter(dialog);
    });
    EXPECT_EQ(askSaveName(test.session, nullptr, {"Save", name, "PNG (*.png)", "png"}), folder.file("chart.v1.png"));
    ASSERT_EQ(test.messages.Boxes.size(), 2U);
    EXPECT_EQ(defaultButtonOf(test.messages.Boxes[0].Flags), Button::No);
}

TEST(ExpTime, AsksUntilTheTimeIsGood) {
    TestSession test;
    clsLog log(test.session);
    log.InsName = "Brevik SE";
    onDialog([&](QDialog& dialog) {
        auto& field = control<QLineEdit>(dialog, "txtExposureTime");
        EXPECT_EQ(field.text(), "08:00:00");
        type(field, "0");
        click(dialog, "cmdOK");
        type(field, "1:00:00");
        click(dialog, "cmdOK");
        ASSERT_EQ(test.messages.Boxes.size(), 2U);
        EXPECT_EQ(test.messages.Boxes[0].Prompt, "Exposure Time must be between 0 and 24 hours");
        EXPECT_EQ(test.messages.Boxes[1].Prompt, "Exposure Time must be greater than the log length");
        EXPECT_EQ(test.messages.Boxes[1].Title, "Error");
        EXPECT_TRUE(dialog.isVisible());
        type(field, "4:30");
        EXPECT_EQ(control<QLabel>(dialog, "lblUnderstood").text(), "= 4 hours 30 mins");
        QTest::keyClick(&field, Qt::Key_Return);
        EXPECT_FALSE(dialog.isVisible());
    });
    EXPECT_TRUE(frmExpTime::getExpTime(test.session, 8, 2, log, nullptr));
    EXPECT_EQ(log.objLogOptions.ExposureTime, 4.5F);

    onDialog([](QDialog& dialog) {
        type(control<QLineEdit>(dialog, "txtExposureTime"), "6");
        click(dialog, "cmdCancel");
    });
    EXPECT_FALSE(frmExpTime::getExpTime(test.session, 4, 2, log, nullptr));
    EXPECT_EQ(log.objLogOptions.ExposureTime, 4.5F);
}

TEST(SimpleEdit, TheNoteKeepsItsLines) {
    TestSession test;
    onDialog([](QDialog& dialog) {
        auto& edit = control<QPlainTextEdit>(dialog, "txtEdit");
        EXPECT_EQ(edit.toPlainText(), "North gate\n<b>dry</b>");
        QTest::keyClick(&edit, Qt::Key_Return); // a new line, not the button
        QTest::keyClicks(&edit, "west wind");
        click(dialog, "cmdOK");
    });
    EXPECT_EQ(frmSimpleEdit::EditNote(test.session, "North gate\r\n<b>dry</b>", nullptr),
              "North gate\n<b>dry</b>\nwest wind");
    onDialog([](QDialog& dialog) { QTest::keyClick(&dialog, Qt::Key_Escape); });
    EXPECT_EQ(frmSimpleEdit::EditNote(test.session, "North gate", nullptr), std::nullopt);
}

TEST(About, TellsVersionCompanyAndLicenceAsPlainText) {
    TestSession test;
    Session session("Brennock <i>& Sons</i>", {}, test.settings, test.messages, test.pump, test.clock);
    frmAbout about(session, nullptr);
    QString all;
    for (const QLabel* label : about.findChildren<QLabel*>()) {
        all += label->text() + '\n';
        EXPECT_TRUE(label->textFormat() != Qt::RichText || !label->text().contains("<i>"));
    }
    EXPECT_TRUE(all.contains("Kestrane Pro Version "));
    EXPECT_TRUE(all.contains("Brennock <i>& Sons</i>\nLarch Works"));
    EXPECT_TRUE(all.contains("<a href=\"mailto:support@brennock.example\">support@brennock.example</a>"));
    EXPECT_TRUE(all.contains("General Public License"));
}

TEST(FileFilter, IsWrittenForTheFileDialog) {
    EXPECT_EQ(fileFilter("X XML (*.xml)|*.xml|Old (*.csv;*.zdf)|*.csv;*.zdf|All Files (*.*)|*.*|"),
              "X XML (*.xml);;Old (*.csv *.zdf);;All Files (*)");
    EXPECT_EQ(fileFilter(""), "");
}

TEST(Recovery, EveryCopyGetsItsOwnChoiceAndTheRestIsKept) {
    TestSession test;
    test.messages.Answers = {Button::No, Button::Yes};
    const std::vector<CopyRow> rows = {
        {"a.xml", "2026-11-25 20:00:00", "changed", "/a.xml"}, {"b.xml", "", "", ""}, {"c.xml", "", "", ""}};
    onDialog([&](QDialog& dialog) {
        auto& list = control<QTreeWidget>(dialog, "lstCopies");
        EXPECT_EQ(list.selectedItems().size(), 3) << "Enter opens all";
        list.clearSelection();
        list.topLevelItem(1)->setSelected(true);
        click(dialog, "cmdDiscard");
        EXPECT_EQ(list.topLevelItemCount(), 3) << "the question was answered with No";
        list.clearSelection();
        list.topLevelItem(1)->setSelected(true);
        click(dialog, "cmdDiscard");
        list.clearSelection();
        list.topLevelItem(0)->setSelected(true);
        QTest::keyClick(&dialog, Qt::Key_Return);
        EXPECT_EQ(list.topLevelItemCount(), 1);
    });
    EXPECT_EQ(frmRecovery::Ask(test.session, rows, nullptr),
              (std::vector{CopyChoice::Open, CopyChoice::Discard, CopyChoice::KeepForLater}));
}

TEST(Recovery, AQuestionWithAnswersOfItsOwnTellsWhichWasGiven) {
    TestSession test;
    const std::vector<std::string> answers = {"Keep &Mine", "Take &Theirs"};
    const auto answer = [&](const std::function<void(QDialog&)>& act) {
        onDialog(act);
        return chooseAnswer(test.session, "Which?", answers, nullptr);
    };
    EXPECT_EQ(answer([](QDialog& dialog) { click(dialog, "cmdAnswer2"); }), 1U);
    EXPECT_EQ(answer([](QDialog& dialog) { QTest::keyClick(&dialog, Qt::Key_Return); }), 0U);
    EXPECT_EQ(answer([](QDialog& dialog) { QTest::keyClick(&dialog, Qt::Key_Escape); }), 2U);
}

} // namespace
} // namespace kestrane

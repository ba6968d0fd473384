#include "desktop/assessment/frmAssessment.h"

#include "charts/chaTab.h"
#include "desktop/Desk.h"
#include "dialogs/ModalDialog.h"
#include "views/Selection.h"

#include <QFileDialog>
#include <QLabel>
#include <QLineEdit>
#include <QMimeData>
#include <QPushButton>
#include <QTextDocument>

#include <filesystem>

namespace kestrane {
namespace {

constexpr auto kWelders = "welder-tasks.kxa";
constexpr auto kShift = "shift-dosimeter.xml";

struct AssessmentDesk : Desk {
    void openAssessment(const char* sample) {
        onDialog([path = copyOf(sample)](QDialog& dialog) {
            kestrane::control<QLineEdit>(dialog, "fileNameEdit").setText(QString::fromStdString(path));
            QTest::keyClick(&kestrane::control<QLineEdit>(dialog, "fileNameEdit"), Qt::Key_Return);
        });
        press(QKeySequence("Ctrl+O"));
        settle();
        frame->activateWindow(); // a platform without windows of its own leaves none active when a dialog closes
        if (!QTest::qWaitForWindowActive(frame.get())) throw std::runtime_error("the window is not active");
    }

    frmAssessment& window() {
        auto* const found = frame->findChild<frmAssessment*>();
        if (found == nullptr) throw std::runtime_error("no assessment");
        return *found;
    }

    QTreeWidget& groups() { return *window().findChild<QTreeWidget*>("tvwAssessment"); }

    QTreeWidgetItem& row(const char* name) {
        const auto found = groups().findItems(QLatin1String(name), Qt::MatchExactly | Qt::MatchRecursive);
        if (found.isEmpty()) throw std::runtime_error(name);
        return *found.front();
    }

    // As a person types into a cell of the tree.
    void enter(const char* name, AssessmentColumn column, const char* text) {
        groups().setFocus();
        groups().setCurrentItem(&row(name), static_cast<int>(column));
        press(Qt::Key_F2);
        type(*QApplication::focusWidget(), text);
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Return);
        settle();
    }

    void clickButton(const char* name) {
        click(window(), name);
        settle();
    }

    QString words(const char* label) {
        QTextDocument text;
        text.setHtml(window().findChild<QLabel*>(QLatin1String(label))->text());
        return text.toPlainText();
    }

    QString title() { return window().parentWidget()->windowTitle(); }
};

TEST(AssessmentWindow, ADayIsTypedAndItsFiguresFollow) {
    AssessmentDesk desk;
    desk.command("New Assessment").trigger();
    desk.settle();
    EXPECT_EQ(desk.title(), "Exposure Assessment - Untitled");
    desk.groups().setFocus();
    desk.press(Qt::Key_Tab);
    EXPECT_EQ(QApplication::focusWidget()->objectName(), "groupField1") << "what stands below";
    const QSize least = desk.window().minimumSizeHint();
    EXPECT_TRUE(least.width() < 640 && least.height() < 320) << least.width() << " x " << least.height();
    for (const char* task : {"Task 1", "Task 2", "Task 3"}) {
        desk.clickButton("cmdTask");
        desk.row(task);
    }
    using Column = AssessmentColumn;
    for (const auto& [task, level, hours] :
         {std::tuple("Task 1", "80", "5"), std::tuple("Task 2", "86", "2"), std::tuple("Task 3", "95", "0:45")}) {
        desk.enter(task, Column::Samples, level);
        desk.enter(task, Column::Hours, hours);
    }
    EXPECT_TRUE(desk.words("lblFigures").contains("86.6 dB")) << desk.words("lblFigures").toStdString();
    EXPECT_EQ(desk.row("Group 1").text(static_cast<int>(Column::Level)), "86.6");
    EXPECT_TRUE(desk.words("lblWarnings").contains("Task 1: Fewer than 3 samples."));
    EXPECT_EQ(desk.title(), "Exposure Assessment - Untitled*");
    desk.answer({});
    desk.enter("Task 1", Column::Hours, "long");
    EXPECT_EQ(desk.asked(), "'long' does not fit here.");
    EXPECT_EQ(desk.row("Task 1").text(static_cast<int>(Column::Hours)), "5.0");
    desk.answer({});
    desk.enter("Task 1", Column::Samples, "80.1 82,2 8l.6 79.6");
    EXPECT_EQ(desk.asked(), "'8l.6' does not fit here.");
    auto* const again = qobject_cast<QLineEdit*>(QApplication::focusWidget());
    ASSERT_TRUE(again != nullptr && again->selectedText() == "8l.6") << "nothing that was typed is lost";
    QTest::keyClicks(again, "81.6");
    QTest::keyClick(again, Qt::Key_Return);
    desk.settle();
    EXPECT_EQ(desk.row("Task 1").text(static_cast<int>(Column::Samples)), "80.1  82.2  81.6  79.6");
    desk.enter("Task 1", Column::Samples, "80");

    desk.enter("Task 3", Column::Samples, "85"); // what if? 10 lg ((5 10^8 + 2 10^8.6 + 0.75 10^8.5) / 8) = 82.8
    EXPECT_TRUE(desk.words("lblFigures").contains("82.8 dB"));
    desk.press(QKeySequence::Undo);
    desk.settle();
    EXPECT_TRUE(desk.words("lblFigures").contains("86.6 dB"));
    EXPECT_TRUE(desk.isEnabled("Redo Entry"));
    desk.press(QKeySequence::Redo);
    desk.settle();
    EXPECT_TRUE(desk.words("lblFigures").contains("82.8 dB"));
    desk.groups().setCurrentItem(&desk.row("Task 3"));
    desk.groups().setFocus();
    desk.press(Qt::Key_Delete);
    desk.settle();
    EXPECT_THROW(desk.row("Task 3"), std::runtime_error);
}

TEST(AssessmentWindow, IsOpenedSavedAndClosedLikeADataFile) {
    AssessmentDesk desk;
    desk.openAssessment(kWelders);
    EXPECT_TRUE(desk.words("lblFigures").contains("84.3 dB"));
    EXPECT_TRUE(desk.words("lblFigures").contains("3.2 dB"));
    EXPECT_EQ(desk.title(), "Exposure Assessment - welder-tasks.kxa");
    EXPECT_EQ(desk.session.RecentFiles, std::vector{desk.path(kWelders)});
    desk.openAssessment(kWelders);
    EXPECT_EQ(desk.frame->findChildren<frmAssessment*>().size(), 1) << "it is open already";

    // What is being typed when the command is given counts.
    auto& title = *desk.window().findChild<QLineEdit*>("documentField1");
    title.setFocus();
    type(title, "Welders, new");
    desk.press(QKeySequence::Save);
    desk.settle();
    EXPECT_TRUE(desk.bytesOf(kWelders).contains("\"title\": \"Welders, new\""));
    EXPECT_EQ(desk.title(), "Exposure Assessment - welder-tasks.kxa");

    desk.enter("Welding", AssessmentColumn::Hours, "4");
    const QByteArray before = desk.bytesOf(kWelders);
    for (const auto& [answer, isOpen, isSaved] :
         {std::tuple(Button::Cancel, true, false), {Button::Yes, false, true}}) {
        desk.answer({answer});
        desk.press(QKeySequence("Ctrl+W"));
        desk.settle();
        EXPECT_EQ(desk.asked(), "Do you want to save the changes made to 'welder-tasks.kxa'");
        EXPECT_EQ(desk.frame->findChild<frmAssessment*>() != nullptr, isOpen);
        EXPECT_EQ(desk.bytesOf(kWelders) != before, isSaved);
    }
    desk.command("New Assessment").trigger();
    auto& typed = *desk.window().findChild<QLineEdit*>("documentField1");
    typed.setFocus();
    type(typed, "Still being typed");
    desk.answer({Button::Cancel});
    EXPECT_FALSE(desk.frame->close());
    EXPECT_EQ(desk.asked(), "Do you want to save the changes made to 'Untitled'");
    std::filesystem::resize_file(desk.path(kWelders), 100);
    desk.answer({});
    desk.openAssessment(kWelders);
    EXPECT_NE(desk.asked().find("$: "), std::string::npos) << "damaged: " << desk.asked();
}

// Lets go of a node of the explorer's tree over a row.
void dropNode(QTreeWidget& tree, const char* key, QTreeWidgetItem& row) {
    QMimeData data;
    data.setData("application/x-kestrane-node", key);
    data.setData("application/x-kestrane-process", QByteArray::number(QCoreApplication::applicationPid()));
    const QPoint at = tree.visualItemRect(&row).center();
    QDragEnterEvent enter(at, Qt::CopyAction, &data, Qt::LeftButton, {});
    QCoreApplication::sendEvent(tree.viewport(), &enter);
    EXPECT_TRUE(enter.isAccepted());
    QDropEvent dropped(at, Qt::CopyAction, &data, Qt::LeftButton, {});
    QCoreApplication::sendEvent(tree.viewport(), &dropped);
    EXPECT_EQ(dropped.dropAction(), Qt::CopyAction);
}

TEST(AssessmentWindow, LogsAreDraggedFromTheTreeAndRowsTakenFromTheChart) {
    AssessmentDesk desk;
    desk.openLog(kShift, "Broadband 1");
    QMdiSubWindow* const explorer = desk.area().currentSubWindow();
    desk.command("Add To Assessment").trigger();
    desk.settle();
    EXPECT_EQ(desk.panel("Status"), "Added to 'Untitled'");
    QTreeWidgetItem& whole = *desk.row("Broadband 1").child(0);
    EXPECT_EQ(whole.text(0), "shift-dosimeter.xml, L1I1F1");
    EXPECT_EQ(whole.text(1), "all rows");
    const clsLog& log = *desk.session.OpenFiles.front()->InstrumentDatas.front()->Locations.front();
    EXPECT_NEAR(whole.text(2).toDouble(), log.LeqCumA(0).CalcValue(), 0.051);

    dropNode(desk.groups(), "L1I1F1", desk.row("Broadband 1"));
    desk.settle();
    ASSERT_EQ(desk.row("Broadband 1").childCount(), 2);
    desk.enter("Broadband 1", AssessmentColumn::Hours, "8");
    const auto& task = desk.window().Document().Now().Groups[0].Tasks[0];
    EXPECT_EQ(std::get<LogRows>(task.Samples[1]).Sha256.size(), 64U);
    EXPECT_TRUE(desk.window().Results()[0].LEX8h);

    // The middle of the chart, in three steps: at 0.512 of its rows.
    desk.area().setActiveSubWindow(explorer);
    desk.control<chaTab>("chaTab0").setFocus();
    for (int step = 0; step < 3; ++step)
        desk.press(Qt::Key_Plus);
    desk.command("Add To Assessment").trigger();
    desk.settle();
    const std::string part = desk.row("Broadband 1").child(2)->text(1).toStdString();
    const auto rows = parseRowRanges(part);
    EXPECT_NEAR(static_cast<double>(rows.at(0).To - rows.at(0).From + 1), 0.512 * 480, 2) << part;

    desk.rename("Broadband 1", "Changed");
    desk.answer({});
    desk.command("Add To Assessment").trigger();
    EXPECT_NE(desk.asked().find("save it first"), std::string::npos);
    EXPECT_EQ(desk.row("Broadband 1").childCount(), 3);

    // The file changes behind the window's back.
    QFile file(QString::fromStdString(desk.path(kShift)));
    ASSERT_TRUE(file.open(QIODevice::Append));
    file.write("\n");
    file.close();
    desk.clickButton("cmdReadAgain");
    EXPECT_TRUE(desk.words("lblWarnings").contains("is not the file that was measured with"));
    desk.groups().setCurrentItem(desk.row("Broadband 1").child(0));
    desk.clickButton("cmdTakeFile");
    EXPECT_FALSE(desk.words("lblWarnings").contains("is not the file that was measured with"));
}

} // namespace
} // namespace kestrane

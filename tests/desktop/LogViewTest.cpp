#include "charts/chaTab.h"
#include "desktop/Desk.h"
#include "desktop/tabLog.h"
#include "dialogs/ModalDialog.h"
#include "files/Loaders.h"
#include "reports/RecordingPage.h"

#include <QAbstractItemView>
#include <QClipboard>
#include <QComboBox>
#include <QContextMenuEvent>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QStyle>
#include <QTableView>
#include <QTableWidget>

namespace kestrane {
namespace {

constexpr auto kShift = "shift-dosimeter.xml";
constexpr auto kNight = "night-environment.xml";
constexpr auto kSurvey = "machine-survey-octave.xml";
constexpr auto kCompressor = "protector-ac.xml";

void choose(QComboBox& box, const QString& text) {
    const int index = box.findText(text);
    ASSERT_GE(index, 0) << text.toStdString();
    box.setFocus();
    QTest::keyClick(&box, Qt::Key_Home);
    for (int i = 0; i < index; ++i)
        QTest::keyClick(&box, Qt::Key_Down);
}

void choose(Desk& desk, const char* radioButton) {
    for (auto* button : desk.area().currentSubWindow()->findChildren<QRadioButton*>()) {
        if (!button->isVisible() || button->text().remove('&') != QLatin1String(radioButton)) continue;
        ASSERT_TRUE(button->isEnabled()) << radioButton;
        button->click();
        desk.settle();
        return;
    }
    FAIL() << radioButton;
}

QStringList headers(Desk& desk) {
    const QAbstractItemModel& model = *desk.control<QTableView>("grdTable").model();
    QStringList texts;
    for (int column = 0; column < model.columnCount(); ++column)
        texts.push_back(model.headerData(column, Qt::Horizontal).toString());
    return texts;
}

QVariant cell(Desk& desk, int row, int column, int role = Qt::DisplayRole) {
    return desk.control<QTableView>("grdTable").model()->index(row, column).data(role);
}

QString figure(Desk& desk, const char* name) {
    return desk.control<QLabel>(name).text();
}

std::string charted(Desk& desk, const char* name) {
    return chartValuesText(desk.control<chaTab>(name).chart(), {});
}

bool hasChart(Desk& desk, LogTab tab) {
    return desk.area().currentSubWindow()->findChild<chaTab*>("chaTab" + QString::number(tab)) != nullptr;
}

// Replaces the text of one of the fields that figures are calculated with.
void enter(Desk& desk, const char* name, const char* text) {
    type(desk.control<QWidget>(name), text);
}

void apply(Desk& desk, std::vector<Button> answers) {
    desk.answer(std::move(answers));
    click(*desk.frame, "cmdApplyChanges");
    desk.settle();
}

TEST(Tabs, AreDrawnWhenFirstSeenAndOnlyThoseOfTheLogCanBeReached) {
    Desk desk;
    desk.openLog(kShift, "Broadband 1");
    EXPECT_EQ(desk.tabInFront(), "Full Log");
    EXPECT_TRUE(hasChart(desk, eTabFullLog));
    EXPECT_FALSE(hasChart(desk, eTabCumulativeGraph));
    EXPECT_EQ(desk.control<QTableView>("grdTable").model()->rowCount(), 0);
    desk.clickTab("Noise Rating");
    EXPECT_EQ(desk.tabInFront(), "Full Log");
    desk.tabs().setCurrentIndex(eTabNoiseRating); // as an assistive program presses it
    EXPECT_EQ(desk.tabInFront(), "Full Log");
    EXPECT_EQ(desk.tabs().tabToolTip(eTabNoiseRating), "This log has no octave bands.");
    desk.clickTab("Cumultv (Graph)");
    EXPECT_TRUE(hasChart(desk, eTabCumulativeGraph));
    desk.clickTab("Intervals (Table)");
    EXPECT_EQ(desk.control<QTableView>("grdTable").model()->rowCount(), 480);
    desk.tabs().setFocus();
    desk.press(Qt::Key_Right);
    EXPECT_EQ(desk.tabInFront(), "Intervals (Graph)");
    for (int i = 0; i < 2; ++i)
        desk.press(Qt::Key_Right);
    EXPECT_EQ(desk.tabInFront(), "Cumultv (Data)");

    desk.openLog(kSurvey, "Planer", "Noise Rating");
    EXPECT_EQ(desk.tabInFront(), "Noise Rating");
    desk.clickNode("Broadband 1");
    EXPECT_TRUE(desk.tabs().isTabEnabled(desk.tabs().currentIndex())) << "a log is seen on a tab that it has";
}

TEST(CriteriaTab, ShowsCopiesAndPrintsEveryCriterion) {
    Desk desk;
    desk.openLog(kShift, "Broadband 1", "Criteria");
    ASSERT_EQ(desk.tabInFront(), "Criteria");
    auto& grid = desk.control<QTableWidget>("grdCriteria");
    ASSERT_EQ(grid.rowCount(), 6);
    EXPECT_EQ(grid.item(0, 0)->text(), "EU 2003/10/EC");
    // The rows are those of the log's LAeq, of 8 hours.
    const clsLog& log = *desk.session.OpenFiles.front()->InstrumentDatas.front()->Locations.front();
    EXPECT_NEAR(grid.item(0, 1)->text().toDouble(), log.LeqCumA(0).CalcValue(), 0.06);
    grid.setFocus();
    desk.press(QKeySequence::Copy);
    EXPECT_TRUE(QApplication::clipboard()->text().startsWith("Criterion\tLEX,8h, dB\t"));
    const RecordedMetrics paper;
    const auto document = desk.area().currentSubWindow()->findChild<tabLog*>()->CurrentView(paper);
    ASSERT_NE(document, nullptr);
    EXPECT_EQ(recorded(*document, paper).faults(), "");
}

TEST(Table, ShowsTheRowsMarksOverloadsAndCopiesByKeyboard) {
    Desk desk;
    desk.openLog(kShift, "Broadband 1", "Intervals (Table)");
    EXPECT_EQ(headers(desk), QStringList({"Time", "LAeq", "Apeak", "LEP,d(ET)", "Dose %(ET)", "Overload?"}));
    EXPECT_EQ(cell(desk, 0, 0), "17/09/24 07:00:00");
    EXPECT_EQ(cell(desk, 0, 1), "77.6");
    for (int column = 0; column < 6; ++column)
        EXPECT_EQ(cell(desk, 360, column, Qt::BackgroundRole).value<QColor>(), QColor(255, 100, 100));
    EXPECT_FALSE(cell(desk, 359, 1, Qt::BackgroundRole).isValid());
    EXPECT_EQ(cell(desk, 360, 1, Qt::AccessibleDescriptionRole), "overload");

    auto& table = desk.control<QTableView>("grdTable");
    table.setFocus();
    table.setCurrentIndex(table.model()->index(0, 0));
    for (const auto& keys : {QKeySequence(Qt::SHIFT | Qt::Key_Right), QKeySequence(Qt::SHIFT | Qt::Key_Down)})
        desk.press(keys);
    desk.press(QKeySequence::Copy);
    const QString second = cell(desk, 1, 0).toString() + "\t" + cell(desk, 1, 1).toString();
    EXPECT_EQ(QApplication::clipboard()->text(), "17/09/24 07:00:00\t77.6\r\n" + second + "\r\n");
    desk.press(QKeySequence::SelectAll);
    desk.press(QKeySequence::Copy);
    EXPECT_EQ(QApplication::clipboard()->text().count("\r\n"), 477) << "three rows are overloaded";
}

TEST(Table, FollowsTheChannelAndTheDisplayChoice) {
    Desk desk;
    desk.openLog(kCompressor, "Broadband 1", "Intervals (Table)");
    EXPECT_EQ(headers(desk)[1], "LAeq (CHA)");
    choose(desk, "Channel B");
    EXPECT_EQ(headers(desk), QStringList({"Time", "LCeq (CHB)", "Cmin (CHB)", "Cmax (CHB)", "Cpeak (CHB)"}));
    EXPECT_EQ(cell(desk, 0, 1), "102.6");

    desk.openLog(kSurvey, "Compressor, idle", "Intervals (Table)");
    auto& display = desk.control<QComboBox>("cboDisplayBy");
    EXPECT_EQ(display.count(), 12);
    choose(display, "1k Hz (CHA)");
    EXPECT_EQ(cell(desk, 0, 1), "69.6");
    choose(desk, "By Param");
    EXPECT_EQ(display.currentText(), "Default");
    choose(display, "LZeq");
    EXPECT_EQ(headers(desk).mid(0, 3), QStringList({"Time - LZeq:", " AP", "16 Hz"}));
    EXPECT_EQ(headers(desk).size(), 13);
    desk.clickTab("Cumultv (Data)");
    const auto& byParam = *desk.control<QWidget>("fraDisplayBy").findChildren<QRadioButton*>()[1];
    EXPECT_FALSE(byParam.isEnabled()) << "the panels have bands alone";
    EXPECT_EQ(display.currentText(), "Default");
    choose(display, "1k Hz (CHA)");
    const QString band = figure(desk, "lblLeqA");
    choose(display, "Default");
    EXPECT_NE(figure(desk, "lblLeqA"), band);
}

TEST(Table, GivesTheTimeItsWidthAndGrowsWithTheWindow) {
    Desk desk;
    desk.openLog("roadworks-selection.xml",
                 "Ca\xf1"
                 "ada Road / east",
                 "Intervals (Table)");
    auto& table = desk.control<QTableView>("grdTable");
    const int text = table.fontMetrics().horizontalAdvance(cell(desk, 0, 0).toString());
    EXPECT_GT(table.columnWidth(0), text + 2 * table.style()->pixelMetric(QStyle::PM_FocusFrameHMargin));
    const int before = table.columnWidth(0);
    desk.frame->resize(2400, 700);
    desk.settle();
    EXPECT_GT(table.columnWidth(0), before) << "the tab that brought it was clicked with the mouse";
}

TEST(Charts, FollowTheIntervalTheAxisTheNoteAndTheLegend) {
    Desk desk;
    desk.openLog(kShift, "Broadband 1");
    auto& full = desk.control<chaTab>("chaTab0");
    EXPECT_TRUE(full.isFootnoteShown() && full.isLegendShown());
    onDialog([](QDialog& dialog) {
        control<QPlainTextEdit>(dialog, "txtEdit").setPlainText("The fan was off");
        dialog.accept();
    });
    desk.command("Edit Note...").trigger();
    EXPECT_NE(full.chart().Footnote.find("The fan was off"), std::string::npos);
    desk.command("Note").trigger();
    desk.command("Legend").trigger();
    EXPECT_FALSE(full.isFootnoteShown());
    EXPECT_FALSE(full.isLegendShown());
    desk.clickTab("Intervals (Graph)");
    EXPECT_FALSE(desk.control<chaTab>("chaTab2").isLegendShown());
    EXPECT_FALSE(desk.isEnabled("Note"));
    auto& interval = desk.control<QComboBox>("lstInterval");
    EXPECT_EQ(interval.count(), 480);
    const std::string first = charted(desk, "chaTab2");
    choose(interval, interval.itemText(5));
    const std::string sixth = charted(desk, "chaTab2");
    EXPECT_NE(sixth, first);
    choose(desk, "%");
    EXPECT_NE(charted(desk, "chaTab2"), sixth);
    desk.clickTab("Full Log");
    EXPECT_FALSE(full.isLegendShown());
    EXPECT_FALSE(desk.command("Legend").isChecked());
    QWidget& plot = *full.findChild<QCustomPlot*>();
    QContextMenuEvent asked(QContextMenuEvent::Mouse, plot.rect().center(), plot.mapToGlobal(plot.rect().center()));
    QCoreApplication::sendEvent(&plot, &asked);
    ASSERT_NE(QApplication::activePopupWidget(), nullptr) << "the menu of the log view";
    QApplication::activePopupWidget()->close();
}

TEST(Panels, AreChosenAndHiddenByTheSetting) {
    Desk desk;
    desk.openLog(kNight, "Broadband 1", "Cumultv (Data)");
    EXPECT_TRUE(desk.control<QLabel>("lblLeqB").isVisible());
    choose(desk, "Full Channel A");
    EXPECT_EQ(desk.area().currentSubWindow()->findChild<QLabel*>("lblLeqB"), nullptr);
    EXPECT_TRUE(desk.control<QLabel>("lblLeqA").isVisible());
    choose(desk, "Advanced");
    choose(desk, "Channels A and B");
    EXPECT_TRUE(desk.control<QLabel>("lblLeqB").isVisible());
    EXPECT_EQ(figure(desk, "lblOverloaded"), "No");
    desk.clickTab("Full Log");
    EXPECT_TRUE(desk.control<QWidget>("fraDfltCum").isVisible()) << "chosen ahead, on every tab";
    desk.session.Options.CumulativePanel = ePanelHidden;
    desk.clickTab("Exp Calc");
    desk.clickTab("Cumultv (Data)");
    EXPECT_FALSE(desk.control<QWidget>("fraDfltCum").isVisible());
}

TEST(Calculation, AChangedCriterionIsAskedAboutAndRecalculated) {
    Desk desk;
    desk.openLog(kCompressor, "Broadband 1", "Cumultv (Data)");
    auto& applyButton = desk.control<QPushButton>("cmdApplyChanges");
    EXPECT_FALSE(applyButton.isEnabled());
    EXPECT_EQ(figure(desk, "lblLeqA"), "95.0 dB");
    enter(desk, "cboCriterion", "90");
    EXPECT_TRUE(applyButton.isEnabled());
    apply(desk, {Button::No});
    EXPECT_EQ(desk.asked(), "Proceed with calculation?");
    EXPECT_EQ(figure(desk, "lblDoseETA"), "1006");
    EXPECT_TRUE(applyButton.isEnabled());
    EXPECT_EQ(desk.control<QComboBox>("cboCriterion").currentText(), "90");
    apply(desk, {Button::Yes});
    EXPECT_EQ(figure(desk, "lblDoseETA"), "317.0"); // 1006 / 10^(5 / 9.966)
    EXPECT_FALSE(applyButton.isEnabled());
    EXPECT_TRUE(IsChanged(*desk.session.OpenFiles.front()));
}

TEST(Calculation, RevertPutsTheEntriesBack) {
    Desk desk;
    desk.openLog(kShift, "Broadband 1", "Cumultv (Data)");
    enter(desk, "cboCriterion", "90");
    enter(desk, "cboExchRate", "5");
    enter(desk, "txtUserCal", "1/2/2024");
    desk.press(Qt::Key_Tab);
    EXPECT_EQ(desk.control<QLineEdit>("txtUserCal").text(), "01/02/2024");
    choose(desk, "Advanced");
    EXPECT_EQ(desk.control<QComboBox>("cboCriterion").currentText(), "90") << "another panel of the same log";
    EXPECT_TRUE(desk.control<QPushButton>("cmdApplyChanges").isEnabled());
    click(*desk.frame, "cmdRevertChanges");
    EXPECT_EQ(desk.control<QComboBox>("cboCriterion").currentText(), "85");
    EXPECT_EQ(desk.control<QComboBox>("cboExchRate").currentText(), "3");
    EXPECT_EQ(desk.control<QLineEdit>("txtUserCal").text(), "17/09/2024");
    EXPECT_FALSE(desk.control<QPushButton>("cmdRevertChanges").isEnabled());
    EXPECT_TRUE(desk.messages.Boxes.empty());
}

TEST(Calculation, BadEntriesAreRefusedAndABadDateIsPutBackInSilence) {
    Desk desk;
    desk.openLog(kShift, "Broadband 1", "Cumultv (Data)");
    enter(desk, "txtUserCal", "31/31/2024");
    desk.press(Qt::Key_Tab);
    EXPECT_EQ(desk.control<QLineEdit>("txtUserCal").text(), "17/09/2024");
    EXPECT_FALSE(desk.control<QPushButton>("cmdApplyChanges").isEnabled());
    EXPECT_TRUE(desk.messages.Boxes.empty());
    enter(desk, "cboCriterion", "");
    apply(desk, {});
    EXPECT_EQ(desk.asked(), "Invalid Criterion");
    EXPECT_TRUE(desk.control<QComboBox>("cboCriterion").hasFocus());
    enter(desk, "cboCriterion", "85");
    enter(desk, "txtUserCal", "18/09/2024");
    apply(desk, {});
    EXPECT_TRUE(desk.messages.Boxes.empty()) << "a date alone needs no calculation";
    EXPECT_EQ(figure(desk, "lblUserCal"), "18/09/2024");
}

struct TakesEveryKey : QObject {
    bool eventFilter(QObject*, QEvent* event) override {
        if (event->type() == QEvent::ShortcutOverride) event->accept();
        return event->type() == QEvent::ShortcutOverride;
    }
};

TEST(Calculation, TheExposureTimeChangesTheFiguresOfItsLog) {
    Desk desk;
    desk.openLog("brevik-short-form.xml", "Broadband 1", "Cumultv (Data)");
    EXPECT_EQ(figure(desk, "lblDoseETA"), "62.2");
    onDialog([](QDialog& dialog) {
        type(control<QLineEdit>(dialog, "txtExposureTime"), "4");
        click(dialog, "cmdOK");
    });
    TakesEveryKey taking; // as a text field on some desktops
    desk.control<QLineEdit>("txtUserCal").setFocus();
    desk.control<QLineEdit>("txtUserCal").installEventFilter(&taking);
    desk.press(QKeySequence("Ctrl+E"));
    desk.settle();
    EXPECT_EQ(figure(desk, "lblExposureTime"), "04:00:00");
    EXPECT_EQ(figure(desk, "lblDoseETA"), "31.1");
    EXPECT_EQ(figure(desk, "lblDoseMTA"), "7.8");
}

} // namespace
} // namespace kestrane

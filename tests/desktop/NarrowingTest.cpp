// Finding a log, narrowing it to a part, and copying and exporting what is seen.
#include "charts/chaTab.h"
#include "desktop/Desk.h"
#include "dialogs/ModalDialog.h"
#include "files/Loaders.h"
#include "platform/desktop/DesktopMessages.h"

#include <QClipboard>
#include <QComboBox>
#include <QDoubleSpinBox>
#include <QLabel>
#include <QLineEdit>
#include <QListView>
#include <QListWidget>
#include <QMessageBox>
#include <QMimeData>
#include <QPushButton>
#include <QTableWidget>

namespace kestrane {
namespace {

constexpr auto kShift = "shift-dosimeter.xml"; // 480 rows of a minute from 07:00
constexpr auto kSurvey = "machine-survey-octave.xml";

std::int64_t rowsInView(Desk& desk) {
    desk.clickTab("Intervals (Table)");
    return desk.control<QTableView>("grdTable").model()->rowCount();
}

QString chosen(Desk& desk, const char* list) {
    return desk.control<QComboBox>(list).currentText();
}

void zoom(Desk& desk, int from, int to) {
    click(*desk.frame, "optZoom1");
    for (const auto& [list, row] : {std::pair("lstZoom0", from), std::pair("lstZoom1", to)}) {
        auto& box = desk.control<QComboBox>(list);
        box.setCurrentIndex(row - 1);
        emit box.activated(row - 1);
    }
    click(*desk.frame, "cmdApplyZoom");
    desk.settle();
}

// A platform without windows of its own leaves none active when a dialog closes.
void goBackTo(Desk& desk) {
    desk.frame->activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(desk.frame.get()));
}

// Looks closer at the middle of the time chart, in three steps: at 0.512 of its rows.
void lookCloser(Desk& desk) {
    desk.control<chaTab>("chaTab0").setFocus();
    for (int step = 0; step < 3; ++step)
        desk.press(Qt::Key_Plus);
}

TEST(ZoomPanel, NarrowsEveryTabAndGoesBackToAll) {
    Desk desk;
    desk.openLog(kShift, "Broadband 1");
    EXPECT_FALSE(desk.control<QWidget>("fraZoom").isVisible());
    desk.press(QKeySequence("Ctrl+T"));
    EXPECT_TRUE(desk.control<QWidget>("fraZoom").isVisible());
    EXPECT_TRUE(desk.command("Zoom...").isChecked());
    EXPECT_FALSE(desk.control<QComboBox>("lstZoom0").isEnabled());
    EXPECT_EQ(chosen(desk, "lstZoom0"), "07:00:00 (17/09)");
    EXPECT_EQ(chosen(desk, "lstZoom1"), "14:59:00 (17/09)");

    zoom(desk, 20, 10);
    EXPECT_EQ(desk.asked(), "The selected interval range is invalid");
    desk.answer({Button::No});
    zoom(desk, 61, 61);
    EXPECT_EQ(desk.asked(), "Recalculate cumulative data?");
    EXPECT_EQ(rowsInView(desk), 1);
    EXPECT_EQ(desk.control<QTableView>("grdTable").model()->index(0, 0).data().toString(), "17/09/24 08:00:00");
    EXPECT_TRUE(desk.control<QWidget>("fraWholeFigures").isVisible());
    desk.clickTab("Cumultv (Data)");
    const QString ofTheWholeLog = desk.control<QLabel>("lblLeqA").text();
    EXPECT_TRUE(desk.control<QWidget>("fraWholeFigures").isVisible());
    desk.command("Copy").trigger();
    EXPECT_TRUE(
        QApplication::clipboard()->text().startsWith("These cumulative figures are those of the whole log.\r\n"));
    click(*desk.frame, "cmdRecalculateRange");
    EXPECT_TRUE(QTest::qWaitFor([&] { return !desk.control<QWidget>("fraWholeFigures").isVisible(); }));
    EXPECT_NE(desk.control<QLabel>("lblLeqA").text(), ofTheWholeLog);
    desk.clickTab("Exp Calc");
    EXPECT_FALSE(desk.control<QWidget>("fraZoom").isVisible());
    EXPECT_FALSE(desk.isEnabled("Zoom..."));
    desk.clickTab("Full Log");
    desk.command("Zoom...").trigger();
    EXPECT_TRUE(desk.control<QWidget>("fraZoom").isVisible()) << "the way back from a single row";
    click(*desk.frame, "optZoom0");
    click(*desk.frame, "cmdApplyZoom");
    EXPECT_EQ(rowsInView(desk), 480);
}

TEST(ZoomPanel, TakesTheRowsThatTheTimeChartShows) {
    Desk desk;
    desk.openLog(kShift, "Broadband 1");
    lookCloser(desk);
    desk.press(QKeySequence("Ctrl+T"));
    EXPECT_EQ(chosen(desk, "lstZoom0").left(5), "08:57"); // of 480 minutes
    EXPECT_EQ(chosen(desk, "lstZoom1").left(5), "13:02");
    desk.answer({Button::No});
    desk.press(Qt::Key_Return);
    desk.settle();
    lookCloser(desk);
    EXPECT_EQ(chosen(desk, "lstZoom0").left(5), "09:57") << "of the 246 in view";
    desk.press(Qt::Key_0);
    EXPECT_EQ(chosen(desk, "lstZoom1").left(5), "13:02");
    EXPECT_EQ(rowsInView(desk), 246);
    EXPECT_TRUE(desk.control<QWidget>("fraWholeFigures").isVisible());
    desk.answer({Button::Yes});
    desk.command("Force Recalc").trigger();
    EXPECT_TRUE(QTest::qWaitFor([&] { return !desk.control<QWidget>("fraWholeFigures").isVisible(); }));
}

TEST(IntervalWizard, ExcludesARangeThatIsSavedWithTheFile) {
    Desk desk;
    desk.openLog(kShift, "Broadband 1", "Cumultv (Data)");
    const auto select = [](QDialog& dialog, const char* list, int row) {
        auto& view = control<QListView>(dialog, list);
        view.scrollTo(view.model()->index(row - 1, 0));
        QTest::mouseClick(view.viewport(), Qt::LeftButton, {},
                          view.visualRect(view.model()->index(row - 1, 0)).center());
    };
    desk.answer({Button::Ok});
    onDialog([&](QDialog& dialog) {
        EXPECT_FALSE(control<QPushButton>(dialog, "cmdFinish").isEnabled());
        click(dialog, "chkDontShowAgain");
        click(dialog, "cmdNav1");
        click(dialog, "cmdNav1");
        EXPECT_EQ(desk.asked(), "Include/exclude option has not been selected.");
        click(dialog, "optInclude1");
        select(dialog, "lstIntervals0", 61);
        select(dialog, "lstIntervals1", 90);
        control<QLineEdit>(dialog, "txtReason").setText("Radio");
        click(dialog, "cmdFinish");
    });
    desk.press(QKeySequence("Ctrl+I"));
    desk.settle();
    clsLog& log = *desk.session.OpenFiles.front()->InstrumentDatas.front()->Locations.front();
    EXPECT_EQ(log.LogIntervals.CutIntervals, std::vector<std::string>{"61~90"});
    EXPECT_EQ(log.LogIntervals.IncludedCount(), 450);
    EXPECT_TRUE(IsChanged(*desk.session.OpenFiles.front()));
    desk.clickTab("Intervals (Table)");
    const auto isStruckOut = [&](int row) {
        const auto& model = *desk.control<QTableView>("grdTable").model();
        return model.index(row - 1, 1).data(Qt::FontRole).value<QFont>().strikeOut();
    };
    EXPECT_TRUE(isStruckOut(61) && isStruckOut(90));
    const QModelIndex left = desk.control<QTableView>("grdTable").model()->index(60, 1);
    EXPECT_EQ(left.data(Qt::AccessibleDescriptionRole), "left out of the calculations");
    EXPECT_FALSE(isStruckOut(60) || isStruckOut(91));

    goBackTo(desk);
    desk.press(QKeySequence::Save);
    desk.command("Close").trigger();
    OpenFile(desk.session, desk.path(kShift), OpenSource::Dialog, true);
    desk.settle();
    desk.clickNode("Broadband 1");
    onDialog([&](QDialog& dialog) {
        const auto& history = control<QTableWidget>(dialog, "tblHistory");
        ASSERT_EQ(history.rowCount(), 2);
        EXPECT_EQ(history.item(0, 1)->text() + "|" + history.item(0, 5)->text(), "Interval Selection|Radio");
        EXPECT_EQ(history.item(1, 1)->text(), "Save");
        dialog.reject();
    });
    desk.command("History...").trigger();
    goBackTo(desk);
    onDialog([&](QDialog& dialog) {
        EXPECT_EQ(control<QListView>(dialog, "lstIntervals0").currentIndex().row(), 60) << "no welcome this time";
        EXPECT_EQ(control<QLineEdit>(dialog, "txtReason").text(), "Radio") << "it is not in the data file";
        EXPECT_TRUE(control<QAbstractButton>(dialog, "optInclude1").isChecked());
        click(dialog, "cmdClear");
        desk.answer({Button::Cancel, Button::Ok});
        click(dialog, "cmdFinish");
        EXPECT_TRUE(dialog.isVisible());
        click(dialog, "cmdFinish");
    });
    desk.press(QKeySequence("Ctrl+I"));
    desk.settle();
    EXPECT_TRUE(
        desk.session.OpenFiles.front()->InstrumentDatas.front()->Locations.front()->LogIntervals.CutIntervals.empty());
}

TEST(RangeOnTheChart, IsMeasuredExcludedZoomedAndCopied) {
    Desk desk;
    desk.openLog(kShift, "Broadband 1");
    auto& chart = desk.control<chaTab>("chaTab0");
    auto& strip = desk.control<QWidget>("fraRange");
    const auto figure = [&](const char* name) { return desk.control<QLabel>(name).accessibleName(); };
    EXPECT_FALSE(strip.isVisible());
    EXPECT_FALSE(desk.isEnabled("Exclude From Calculations"));
    chart.setFocus();
    desk.press(QKeySequence(Qt::SHIFT | Qt::Key_Home)); // from the middle of the view to the first row
    EXPECT_TRUE(strip.isVisible());
    EXPECT_EQ(figure("lblRangeStart"), "Start 17/09/24 07:00:00");
    EXPECT_EQ(figure("lblRangeEnd"), "End 17/09/24 11:01:00");
    EXPECT_TRUE(chart.spokenDescription().startsWith("Start 17/09/24 07:00:00, End "));
    desk.press(QKeySequence(Qt::Key_Plus));
    EXPECT_TRUE(chart.spokenDescription().startsWith("In view: 17/09/24 ")) << chart.spokenDescription().toStdString();
    desk.press(QKeySequence(Qt::Key_0));
    EXPECT_TRUE(chart.spokenDescription().startsWith(chart.accessibleName()));

    desk.press(QKeySequence("Ctrl+Shift+X"));
    desk.settle();
    clsLog& log = *desk.session.OpenFiles.front()->InstrumentDatas.front()->Locations.front();
    EXPECT_EQ(log.LogIntervals.IncludedCount(), 480 - 241);
    EXPECT_EQ(figure("lblRangeLeq"), "LAeq -");
    desk.command("Undo Interval Selection").trigger();
    desk.settle();
    EXPECT_EQ(log.LogIntervals.IncludedCount(), 480);
    EXPECT_NE(figure("lblRangeLeq"), "LAeq -") << "the range outlasts the change";
    desk.press(QKeySequence("Ctrl+Shift+I"));
    desk.settle();
    EXPECT_EQ(log.LogIntervals.IncludedCount(), 241);
    EXPECT_EQ(figure("lblRestLeq"), "LAeq without it -");

    desk.command("Copy Figures").trigger();
    EXPECT_TRUE(QApplication::clipboard()->text().contains("\r\nLength\t04:01:00\r\n"));
    desk.answer({Button::No});
    desk.press(QKeySequence("Ctrl+Shift+M"));
    desk.settle();
    EXPECT_EQ(desk.asked(), "Recalculate cumulative data?");
    EXPECT_FALSE(chart.markedRows()) << "the chart shows other rows";
    EXPECT_EQ(rowsInView(desk), 241);
    desk.clickTab("Full Log");
    desk.press(QKeySequence("Ctrl+Shift+L")); // 15 rows
    desk.press(QKeySequence("Ctrl+Shift+X"));
    desk.settle();
    EXPECT_EQ(figure("lblRangeLeq"), "LAeq -");
    EXPECT_EQ(log.LogIntervals.IncludedCount(), 241 - 15) << "not in the zoom alone";
    desk.command("Undo Interval Selection").trigger();
    EXPECT_EQ(log.LogIntervals.IncludedCount(), 241);
}

TEST(RangeOnTheChart, TheLoudestWindowIsMarked) {
    Desk desk;
    desk.openLog(kShift, "Broadband 1");
    auto& window = desk.control<QComboBox>("cboWindow");
    const auto length = [&] { return desk.control<QLabel>("lblRangeLength").accessibleName(); };
    desk.press(QKeySequence("Ctrl+Shift+L"));
    EXPECT_EQ(length(), "Length 00:15:00");
    const auto loudest = *desk.control<chaTab>("chaTab0").markedRows();
    desk.press(QKeySequence("Ctrl+Shift+K"));
    EXPECT_NE(*desk.control<chaTab>("chaTab0").markedRows(), loudest);
    window.setEditText("2.5");
    desk.press(QKeySequence("Ctrl+Shift+L"));
    EXPECT_EQ(length(), "Length 00:03:00") << "whole rows";
    for (const char* wrong : {"481", "-1", "soon", ""}) {
        window.setEditText(wrong);
        desk.answer({Button::Ok});
        desk.press(QKeySequence("Ctrl+Shift+L"));
        EXPECT_TRUE(desk.asked().starts_with("No stretch without a gap lasts")) << wrong;
    }
    EXPECT_EQ(length(), "Length 00:03:00");
    desk.press(QKeySequence("Ctrl+Shift+R"));
    EXPECT_FALSE(desk.control<QWidget>("fraRange").isVisible());
    EXPECT_FALSE(desk.isEnabled("Copy Figures"));
}

TEST(RangeOnTheChart, AnEventThatIsChosenIsMarked) {
    Desk desk;
    desk.openLog(kShift, "Broadband 1");
    onDialog([&](QDialog& dialog) {
        auto& table = control<QTableView>(dialog, "tblEvents");
        control<QDoubleSpinBox>(dialog, "txtLevel").setValue(200);
        EXPECT_EQ(table.model()->rowCount(), 0);
        control<QDoubleSpinBox>(dialog, "txtLevel").setValue(80);
        ASSERT_GT(table.model()->rowCount(), 1);
        QTest::keyClick(&table, Qt::Key_Down);
        QTest::keyClick(&table, Qt::Key_Down);
        const auto shown = desk.control<QLabel>("lblRangeStart").accessibleName();
        EXPECT_EQ(shown, "Start " + table.model()->index(1, 0).data().toString());
        click(dialog, "cmdCopy");
        EXPECT_TRUE(QApplication::clipboard()->text().startsWith("Start\tLength\tLAeq\t"));
        dialog.reject();
    });
    desk.press(QKeySequence("Ctrl+Shift+V"));
    EXPECT_TRUE(desk.control<chaTab>("chaTab0").markedRows());
}

TEST(RangeOnTheChart, ItsDistributionAndOtherLogsAreSeenBesideIt) {
    Desk desk;
    desk.open(kSurvey);
    desk.openLog(kShift, "Broadband 1");
    desk.control<chaTab>("chaTab0").markRows(0, 119);
    const auto rows = [](QDialog& dialog, const char* table) {
        return control<QTableView>(dialog, table).model()->rowCount();
    };
    onDialog([&](QDialog& dialog) {
        const auto& table = *control<QTableView>(dialog, "tblDistribution").model();
        EXPECT_EQ(table.index(0, 3).data(), "02:00:00") << "at or above the lowest class: the whole range";
        const int fine = rows(dialog, "tblDistribution");
        control<QDoubleSpinBox>(dialog, "txtWidth").setValue(5);
        EXPECT_LT(rows(dialog, "tblDistribution"), fine);
        control<QLineEdit>(dialog, "txtPercents").setText("50");
        click(dialog, "cmdCopy");
        EXPECT_TRUE(QApplication::clipboard()->text().startsWith("Broadband 1\r\nL50 "));
        onDialog([](QDialog& preview) {
            EXPECT_EQ(control<QComboBox>(preview, "cboReport").count(), 2) << "the chart, the table";
        });
        click(dialog, "cmdPrint");
    });
    desk.press(QKeySequence("Ctrl+Shift+D"));
    goBackTo(desk);
    onDialog([&](QDialog& dialog) {
        EXPECT_EQ(rows(dialog, "tblCompare"), 2) << "the log on view, and the mean";
        auto& list = control<QListWidget>(dialog, "lstLogs");
        ASSERT_GT(list.count(), 1);
        for (int i = 0; i < list.count(); ++i)
            list.item(i)->setCheckState(Qt::Checked);
        EXPECT_EQ(rows(dialog, "tblCompare"), std::min(list.count(), 8) + 1);
        click(dialog, "optStart");
        EXPECT_EQ(control<chaTab>(dialog, "chaCompare").chart().RowLabel(0), "00:00:00");
        click(dialog, "optBand");
        EXPECT_EQ(control<chaTab>(dialog, "chaCompare").chart().RowLabel(0), "AP");
    });
    desk.press(QKeySequence("Ctrl+Shift+G"));
}

TEST(Spectrogram, HasTheSpectrumAtTheCursorBesideIt) {
    Desk desk;
    desk.openLog(kSurvey, "Planer");
    onDialog([&](QDialog& dialog) {
        auto& map = control<chaTab>(dialog, "chaSpectrogram");
        QTest::keyClick(&map, Qt::Key_End);
        const std::string last = map.chart().RowName(map.chart().RowCount - 1);
        EXPECT_EQ(control<chaTab>(dialog, "chaSpectrum").chart().Title, "Spectrum at " + last);
        const auto& figures = *control<QTableView>(dialog, "tblSpectrum").model();
        EXPECT_EQ(figures.index(0, 0).data(), "16");
        const double linear = figures.index(0, 1).data().toDouble();
        control<QComboBox>(dialog, "cboWeight").setCurrentText("A");
        EXPECT_NEAR(figures.index(0, 1).data().toDouble(), linear - 56.7, 0.01);
    });
    desk.press(QKeySequence("Ctrl+Shift+O"));
}

TEST(Find, GoesFromHitToHitByButtonAndKey) {
    DesktopMessages boxes([](Button) { return std::string("OK"); });
    Desk desk({}, {1024, 700}, &boxes);
    desk.open(kShift);
    desk.open(kSurvey);
    desk.press(QKeySequence::Find);
    auto& find = *desk.frame->findChild<QDialog*>("frmFind");
    ASSERT_TRUE(QTest::qWaitForWindowActive(&find));
    EXPECT_FALSE(find.isModal());
    EXPECT_FALSE(control<QPushButton>(find, "cmdFind").isEnabled());
    QTest::keyClicks(&control<QLineEdit>(find, "txtFindWhat"), "compressor!");
    const auto findNothing = [] {
        onDialog([](QDialog& box) {
            EXPECT_TRUE(static_cast<QMessageBox&>(box).text().contains("cannot find"));
            box.accept();
        });
    };
    findNothing();
    QTest::keyClick(&control<QLineEdit>(find, "txtFindWhat"), Qt::Key_Return);
    EXPECT_TRUE(QTest::qWaitForWindowActive(&find)) << "to type something else";
    QTest::keyClick(&control<QLineEdit>(find, "txtFindWhat"), Qt::Key_Backspace);
    QTest::keyClick(&control<QLineEdit>(find, "txtFindWhat"), Qt::Key_Return);
    const auto selected = [&] { return desk.tree().currentItem()->text(0); };
    EXPECT_EQ(selected(), "Compressor, idle");
    EXPECT_EQ(desk.caption(), "Exploring - (machine-survey-octave.xml)") << "a hit is shown as if it had been clicked";
    click(find, "cmdClose");
    EXPECT_FALSE(find.isVisible());
    goBackTo(desk);
    for (const char* text : {"Compressor, loaded", "Compressor, idle"}) {
        desk.press(Qt::Key_F3);
        EXPECT_EQ(selected(), text);
    }
    control<QComboBox>(find, "cboSearch").setCurrentIndex(1);
    findNothing();
    desk.press(Qt::Key_F3);
    EXPECT_EQ(selected(), "Compressor, idle");
}

TEST(Copying, PutsTheTabInFrontOnTheClipboardInItsForms) {
    Desk desk;
    desk.openLog(kShift, "Broadband 1");
    desk.clickNode("Broadband 1");
    EXPECT_FALSE(desk.isEnabled("Copy Values")) << "the tree is active";
    const QMimeData* copied = nullptr;
    const auto copy = [&](const char* tab, const char* command) {
        desk.clickTab(tab);
        EXPECT_TRUE(desk.isEnabled(command)) << tab;
        desk.command(command).trigger();
        copied = QApplication::clipboard()->mimeData();
        return copied->text();
    };
    copy("Full Log", "Copy");
    EXPECT_TRUE(copied->hasImage() && copied->hasFormat("image/svg+xml"));
    EXPECT_FALSE(copied->hasText());
    EXPECT_TRUE(copy("Full Log", "Copy Values").startsWith("\tLAeq\tApeak\tLEP,d(ET)\tDose %(ET)\r\n07:00\t77.6\t"));
    EXPECT_TRUE(copied->hasHtml());
    EXPECT_EQ(copy("Intervals (Table)", "Copy").count("\r\n"), 478) << "three of 480 rows are overloaded";
    EXPECT_EQ(desk.panel("Status"), "Overloaded rows left out of the copy: 3");
    EXPECT_TRUE(copied->html().contains("<td>77.6</td>"));
    EXPECT_FALSE(desk.isEnabled("Copy Values"));
    EXPECT_TRUE(copy("Cumultv (Data)", "Copy").startsWith("LAeq\t"));
    auto& figure = desk.control<QLabel>("lblLeqA");
    figure.setFocus();
    figure.setSelection(0, 4);
    desk.command("Copy").trigger();
    EXPECT_EQ(QApplication::clipboard()->text(), figure.text().left(4));
    EXPECT_EQ(copy("Exp Calc", "Copy").count("\r\n"), 3);
}

TEST(Copying, TheSameValuesAreShownAsATableByOneKey) {
    Desk desk;
    desk.openLog(kShift, "Broadband 1");
    desk.clickTab("Full Log");
    desk.command("Copy Values").trigger();
    const QStringList copied = QApplication::clipboard()->text().split("\r\n", Qt::SkipEmptyParts);
    desk.clickNode("Broadband 1"); // the key is also the tree's
    bool isSeen = false;
    onDialog([&](QDialog& dialog) {
        const QAbstractItemModel& table = *control<QTableView>(dialog, "tblValues").model();
        const auto textOf = [&](int row) {
            QStringList cells;
            for (int column = 0; column < table.columnCount(); ++column)
                cells.append(table.index(row, column).data().toString());
            return cells.join('\t');
        };
        EXPECT_EQ(table.rowCount(), copied.size() - 1);
        for (const int row : {0, 1, 479})
            EXPECT_EQ(textOf(row), copied.value(row + 1));
        EXPECT_EQ(table.headerData(0, Qt::Horizontal).toString(), "Time");
        EXPECT_EQ(table.headerData(1, Qt::Horizontal).toString(), "LAeq");
        EXPECT_FALSE(table.flags(table.index(0, 1)).testFlag(Qt::ItemIsEditable));
        isSeen = true;
    });
    desk.press(QKeySequence("Ctrl+Shift+T"));
    EXPECT_TRUE(isSeen);
}

TEST(Exports, RowsInViewAndAPictureAreWrittenAsChosen) {
    Desk desk;
    desk.openLog(kShift, "Broadband 1");
    desk.press(QKeySequence("Ctrl+T"));
    desk.answer({Button::No});
    zoom(desk, 3, 5);
    const std::string file = desk.path("view.csv");
    onDialog([&](QDialog& dialog) {
        auto& what = control<QComboBox>(dialog, "cboContent");
        what.setCurrentIndex(what.findText("The rows in view"));
        click(dialog, "cmdNone");
        EXPECT_FALSE(control<QPushButton>(dialog, "cmdOK").isEnabled());
        auto& columns = control<QListWidget>(dialog, "lstColumns");
        columns.setCurrentItem(columns.findItems("LeqA_dB", Qt::MatchExactly).front());
        QTest::keyClick(&columns, Qt::Key_Space);
        const auto& preview = control<QTableWidget>(dialog, "grdPreview");
        EXPECT_EQ(preview.item(0, columns.currentRow())->text(), "79.3");
        EXPECT_TRUE(preview.isColumnHidden(0));
        type(control<QLineEdit>(dialog, "txtName"), file.c_str());
        click(dialog, "cmdOK");
    });
    desk.command("Export...").trigger();
    EXPECT_EQ(desk.bytesOf("view.csv"), "LeqA_dB\n79.3\n77\n75.9\n");
    EXPECT_EQ(desk.panel("Status"), QString::fromStdString("Lines written to '" + file + "': 3"));

    const QString picture = QString::fromStdString(desk.path("view.png"));
    onDialog([&](QDialog& dialog) {
        control<QDoubleSpinBox>(dialog, "spnWidth").setValue(12.7);
        control<QDoubleSpinBox>(dialog, "spnHeight").setValue(25.4);
        control<QSpinBox>(dialog, "spnResolution").setValue(60);
        EXPECT_EQ(control<QLabel>(dialog, "lblPixels").text(), "300 by 600 pixels");
        onDialog([&](QDialog& save) {
            save.findChild<QLineEdit*>()->setText(picture);
            QTest::keyClick(&save, Qt::Key_Return);
        });
        click(dialog, "cmdOK");
    });
    desk.command("Export Picture...").trigger();
    EXPECT_EQ(QImage(picture).size(), QSize(300, 600));
}

} // namespace
} // namespace kestrane

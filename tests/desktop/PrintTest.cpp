#include "charts/chaTab.h"
#include "desktop/Desk.h"
#include "desktop/frmExplorer.h"
#include "desktop/frmPreview.h"
#include "desktop/tabLog.h"
#include "dialogs/ModalDialog.h"
#include "reports/RecordingPage.h"

#include <QCheckBox>
#include <QLabel>
#include <QLineEdit>
#include <QPrinterInfo>
#include <QSpinBox>

namespace kestrane {
namespace {

RecordingPage currentView(Desk& desk, const PageMetrics& paper) {
    const auto document = desk.area().currentSubWindow()->findChild<tabLog*>()->CurrentView(paper);
    return recorded(*document, paper);
}

bool hasLine(const RecordingPage& page, const std::string& line) {
    const auto lines = page.lines(0);
    return std::find(lines.begin(), lines.end(), line) != lines.end();
}

TEST(Print, TheCurrentViewIsTheTabInFront) {
    const RecordedMetrics paper;
    Desk desk;
    desk.openLog("night-environment.xml", "Broadband 1");
    auto& chart = desk.control<chaTab>("chaTab0");
    const QSize before = chart.size();
    const RecordingPage chartPage = currentView(desk, paper);
    ASSERT_EQ(chartPage.charts.size(), 1U);
    EXPECT_NEAR(chartPage.charts.front().box.Width, 18, 1e-9); // the page between its margins
    EXPECT_GT(chartPage.charts.front().box.Height, 25);
    EXPECT_EQ(chart.size(), before);

    desk.clickTab("Intervals (Table)");
    EXPECT_TRUE(hasLine(currentView(desk, paper), "Broadband 1 - Intervals (Table)"));
    desk.clickTab("Cumultv (Data)");
    EXPECT_TRUE(hasLine(currentView(desk, paper), "Channel A|Channel B"));
    desk.clickTab("Exp Calc");
    EXPECT_GT(currentView(desk, paper).lines(0).size(), 4U);
}

TEST(Print, TellsWhenThereIsNoPrinter) {
    if (!QPrinterInfo::availablePrinterNames().isEmpty()) GTEST_SKIP() << "there is a printer";
    Desk desk;
    EXPECT_FALSE(desk.isEnabled("Print"));
    desk.openLog("shift-dosimeter.xml", "Broadband 1");
    for (const char* command : {"Print", "Default Report", "Cumulative Report", "Current View"}) {
        desk.answer({});
        desk.command(command).trigger();
        ASSERT_EQ(desk.messages.Boxes.size(), 1U) << command;
        EXPECT_EQ(desk.messages.Boxes.front().Title, "Error Connecting to Printer");
        EXPECT_EQ(desk.asked().substr(0, 5), "482: ");
    }
}

TEST(Print, ThePreviewShowsPagesAndSavesThem) {
    Desk desk;
    desk.openLog("night-environment.xml", "Broadband 1");
    const QString file = QString::fromStdString(desk.path("night.pdf"));
    onDialog([&](QDialog& dialog) {
        auto& page = control<QLabel>(dialog, "picPage");
        auto& number = control<QSpinBox>(dialog, "spnPage");
        auto& report = control<QComboBox>(dialog, "cboReport");
        auto& area = control<QWidget>(dialog, "area");
        EXPECT_EQ(number.maximum(), 4);
        const QImage first = page.pixmap().toImage();
        EXPECT_GT(first.height(), first.width());
        QTest::keyClick(&area, Qt::Key_End);
        EXPECT_EQ(number.value(), 4);
        EXPECT_NE(page.pixmap().toImage(), first);
        EXPECT_EQ(area.accessibleName(), "Page 4 of 4");
        EXPECT_TRUE(area.accessibleDescription().contains("Broadband 1"));
        QTest::keyClick(&area, Qt::Key_Plus);
        EXPECT_GT(page.width(), first.width());
        report.setCurrentIndex(1);
        EXPECT_EQ(number.maximum(), 2);
        desk.session.Options.PrintIntervals = false; // of the default report
        report.setCurrentIndex(2);
        EXPECT_EQ(number.maximum(), 4) << "with intervals";
        report.setCurrentIndex(1);
        click(dialog, "chkLandscape");
        EXPECT_GT(page.width(), page.height());
        EXPECT_EQ(number.maximum(), 2);
        EXPECT_EQ(report.itemText(4), "Current View");
        onDialog([&](QDialog& save) {
            save.findChild<QLineEdit*>()->setText(file);
            QTest::keyClick(&save, Qt::Key_Return);
        });
        click(dialog, "cmdSave");
        click(dialog, "chkPart3"); // the exposure calculator, on a page of its own
        EXPECT_GT(number.maximum(), 2);
        EXPECT_FALSE(control<QCheckBox>(dialog, "chkPart0").isEnabled()) << "there is no spectrum";
        dialog.reject();
    });
    desk.command("Print Preview...").trigger();
    EXPECT_EQ(desk.asked(), "");
    EXPECT_EQ(desk.session.state->read("Reports", "Parts", {}), "exposure");
    EXPECT_TRUE(desk.bytesOf("night.pdf").contains("/Count 2")); // pages
}

} // namespace
} // namespace kestrane

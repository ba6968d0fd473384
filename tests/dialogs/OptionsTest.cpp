#include "dialogs/frmOptions.h"

#include "TestSession.h"
#include "dialogs/ModalDialog.h"
#include "model/clsLog.h"

#include <QCheckBox>
#include <QComboBox>
#include <QFontDialog>
#include <QLineEdit>
#include <QRadioButton>
#include <QSlider>
#include <QTabWidget>

namespace kestrane {
namespace {

using Changes = std::optional<SettingsChanges>;

Changes fromTools(TestSession& test, std::function<void(QDialog&)> act) {
    onDialog(std::move(act));
    return frmOptions::ShowFromToolsMenu(test.session, nullptr);
}

void showPage(QDialog& dialog, int page) {
    control<QTabWidget>(dialog, "tabSettings").setCurrentIndex(page);
}

TEST(Options, WhatIsChangedAndConfirmedIsKept) {
    TestSession test;
    test.session.Options.SerialPort = 7;
    const Changes changes = fromTools(test, [](QDialog& dialog) {
        type(control<QLineEdit>(dialog, "txtCompany"), "Smith & Jones");
        EXPECT_EQ(control<QComboBox>(dialog, "cboSerial").currentText(), "COM 7");
        control<QComboBox>(dialog, "cboSerial").setCurrentText("AUTO");
        click(dialog, "chkCalc");
        control<QComboBox>(dialog, "cboLanguage").setCurrentText("Deutsch");
        control<QComboBox>(dialog, "cboReportLanguage").setCurrentText("Fran\u00E7ais");
        click(dialog, "optTVFiles2");
        click(dialog, "optCumPanels3");
        click(dialog, "optChannel2");
        click(dialog, "optCumInt2");
        click(dialog, "chkPlot1");
        EXPECT_FALSE(control<QCheckBox>(dialog, "chkPlot6").isEnabled()); // LEP,d(MT) of intervals
        click(dialog, "optCumInt1");
        EXPECT_TRUE(control<QCheckBox>(dialog, "chkPlot1").isChecked());
        EXPECT_TRUE(control<QCheckBox>(dialog, "chkPlot6").isEnabled());
        click(dialog, "optChartLines1");
        control<QSlider>(dialog, "sliderWidth").setValue(60);
        EXPECT_FALSE(control<QLineEdit>(dialog, "txtOwnLines").isEnabled());
        control<QComboBox>(dialog, "cboLimits").setCurrentIndex(3);
        control<QLineEdit>(dialog, "txtOwnLines").setText("82 91.5");
        click(dialog, "chkRunning");
        click(dialog, "chkMarks");
        control<QComboBox>(dialog, "cboAppearance").setCurrentIndex(2);
        showPage(dialog, 2);
        type(control<QLineEdit>(dialog, "txtExposureTime"), " 7:30:00");
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
        EXPECT_EQ(control<QLineEdit>(dialog, "txtExposureTime").text(), "07:30:00");
        QTest::keyClick(&control<QSlider>(dialog, "sliderWidth"), Qt::Key_Return);
    });
    EXPECT_EQ(changes, (SettingsChanges{true, true, false, true}));
    EXPECT_EQ(readAppearance(test.settings), Appearance::Dark);
    const clsOptions& options = test.session.Options;
    EXPECT_EQ(options.CompanyName, "Smith & Jones");
    EXPECT_EQ(options.SerialPort, 0);
    EXPECT_FALSE(options.RecalcOnOpen);
    EXPECT_TRUE(options.PrintIntervals);
    EXPECT_EQ(options.FilesOnTreeView, eHideFileNames);
    EXPECT_EQ(options.CumulativePanel, ePanelHidden);
    EXPECT_FALSE(options.objLogOptions.IsPlotted(kChannelB, kInterval, eLeq));
    EXPECT_TRUE(options.objLogOptions.IsPlotted(kChannelB, kCumulative, eLeq));
    EXPECT_EQ(options.objLogOptions.ChartStyle, eChartAs3D);
    EXPECT_EQ(options.objLogOptions.LineWidth, 60);
    EXPECT_EQ(options.objLogOptions.ExposureTime, 7.5F);
    EXPECT_EQ(test.settings.read("Preferences", "Company", ""), "Smith & Jones");
    EXPECT_EQ(test.settings.read("Preferences", "Language", ""), "de");
    EXPECT_EQ(options.ReportLanguage, "fr");
    EXPECT_EQ(readChartLines(test.session), (ChartLines{LimitLines::Own, "82 91.5", true, false, true}));
}

TEST(Options, CancelAndEscapeChangeNothing) {
    TestSession test;
    for (const bool byKey : {false, true}) {
        EXPECT_EQ(fromTools(test,
                            [byKey](QDialog& dialog) {
                                type(control<QLineEdit>(dialog, "txtCompany"), "Smith");
                                click(dialog, "chkPlot1");
                                if (byKey) {
                                    QTest::keyClick(&dialog, Qt::Key_Escape);
                                } else {
                                    click(dialog, "cmdCancel");
                                }
                                EXPECT_FALSE(dialog.isVisible());
                            }),
                  std::nullopt);
    }
    EXPECT_EQ(test.session.Options.CompanyName, "");
    EXPECT_TRUE(test.session.Options.objLogOptions.IsPlotted(kChannelA, kCumulative, eLeq));
    EXPECT_TRUE(test.settings.Values.empty());
}

TEST(Options, ABadExposureTimeKeepsTheDialogOpen) {
    TestSession test;
    EXPECT_TRUE(fromTools(test, [&](QDialog& dialog) {
                    auto& field = control<QLineEdit>(dialog, "txtExposureTime");
                    showPage(dialog, 2);
                    type(field, "24.1");
                    showPage(dialog, 0);
                    click(dialog, "cmdOK");
                    EXPECT_TRUE(dialog.isVisible());
                    ASSERT_EQ(test.messages.Boxes.size(), 1U);
                    EXPECT_EQ(control<QTabWidget>(dialog, "tabSettings").currentIndex(), 2);
                    EXPECT_TRUE(field.hasFocus());
                    type(field, "24");
                    click(dialog, "cmdOK");
                    EXPECT_FALSE(dialog.isVisible());
                }).has_value());
    EXPECT_EQ(test.session.Options.objLogOptions.ExposureTime, 24);
}

TEST(Options, AFontThatIsMissingHereKeepsItsName) {
    TestSession test;
    test.session.Options.objLogOptions.TitleFont = {"No Such Font", 12};
    fromTools(test, [](QDialog& dialog) {
        showPage(dialog, 2);
        onDialog([](QDialog& fonts) {
            auto* const box = qobject_cast<QFontDialog*>(&fonts);
            ASSERT_NE(box, nullptr);
            QFont larger = box->currentFont();
            larger.setPointSize(18);
            box->setCurrentFont(larger);
            box->accept();
        });
        click(dialog, "cmdFontTitle");
        click(dialog, "cmdOK");
    });
    EXPECT_EQ(test.session.Options.objLogOptions.TitleFont, (clsFont{"No Such Font", 18}));
}

TEST(Options, TheMethodsFollowTheModeAndTheKeptOneComesBack) {
    TestSession test;
    test.session.Options.HPDCalcMethod = "HML";
    fromTools(test, [](QDialog& dialog) {
        const auto& methods = control<QComboBox>(dialog, "cboCalcMethod");
        EXPECT_EQ(methods.currentText(), "HML");
        click(dialog, "optHPD1");
        EXPECT_EQ(methods.currentText(), "Auto");
        EXPECT_EQ(methods.count(), 2);
        click(dialog, "optHPD0");
        EXPECT_EQ(methods.currentText(), "HML");
        click(dialog, "optHPD2");
        click(dialog, "cmdOK");
    });
    EXPECT_EQ(test.session.Options.HPDCalc, eHPDModeUSNIOSH);
    EXPECT_EQ(test.session.Options.HPDCalcMethod, "Auto");
}

TEST(Options, FromTheTreeOnlyTheExplorersPageIsOffered) {
    TestSession test;
    onDialog([](QDialog& dialog) {
        const auto& tabs = control<QTabWidget>(dialog, "tabSettings");
        EXPECT_EQ(tabs.currentIndex(), 1);
        EXPECT_FALSE(tabs.isTabEnabled(0));
        EXPECT_FALSE(tabs.isTabEnabled(2));
        EXPECT_FALSE(control<QWidget>(dialog, "fraDfltCum").isVisible());
        EXPECT_LT(dialog.height(), 400);
        click(dialog, "optTVFiles1");
        click(dialog, "cmdOK");
    });
    EXPECT_EQ(frmOptions::ShowFromTreeViewRightClick(test.session, test.session.Options, {9000, 9000}, nullptr),
              (SettingsChanges{true, false, true}));
    EXPECT_EQ(test.session.Options.FilesOnTreeView, eDisplayFilesBesideLogNames);
}

TEST(Options, FromTheTabsOnlyTheLogsPageIsOfferedForOneKind) {
    TestSession test;
    clsLog log(test.session);
    log.LnNumberA(1, 90);
    onDialog([](QDialog& dialog) {
        EXPECT_EQ(control<QTabWidget>(dialog, "tabSettings").currentIndex(), 2);
        EXPECT_FALSE(control<QTabWidget>(dialog, "tabSettings").isTabEnabled(0));
        EXPECT_FALSE(control<QWidget>(dialog, "fraCumInt").isVisible());
        EXPECT_FALSE(control<QRadioButton>(dialog, "optChannel2").isEnabled());
        EXPECT_EQ(control<QCheckBox>(dialog, "chkPlot15").text(), "L90");
        click(dialog, "chkPlot15");
        click(dialog, "cmdOK");
    });
    EXPECT_EQ(frmOptions::ShowFromLogTabCtrlRightClick(test.session, log, kInterval, {10, 10}, nullptr),
              (SettingsChanges{false, false, true}));
    EXPECT_FALSE(log.objLogOptions.IsPlotted(kChannelA, kInterval, eLn(1)));
    EXPECT_TRUE(log.objLogOptions.IsPlotted(kChannelA, kCumulative, eLn(1)));
}

TEST(Options, EveryControlIsNamed) {
    TestSession test;
    fromTools(test, [](QDialog& dialog) {
        int controls = 0;
        for (const QWidget* widget : dialog.findChildren<QWidget*>()) {
            const bool isInput = widget->inherits("QAbstractButton") || widget->inherits("QLineEdit") ||
                                 widget->inherits("QComboBox") || widget->inherits("QSlider");
            if (!isInput || widget->objectName().startsWith("qt_") || widget->parent()->inherits("QTabBar")) continue;
            ++controls;
            EXPECT_FALSE(widget->accessibleName().isEmpty()) << widget->objectName().toStdString();
            EXPECT_NE(widget->focusPolicy(), Qt::NoFocus) << widget->objectName().toStdString();
        }
        EXPECT_GE(controls, 60);
    });
}

} // namespace
} // namespace kestrane

#include "charts/chaTab.h"
#include "desktop/Desk.h"
#include "desktop/frmExplorer.h"
#include "desktop/tabLog.h"
#include "dialogs/ModalDialog.h"
#include "protection/ProtectorDatabase.h"
#include "protection/RankTable.h"
#include "reports/RecordingPage.h"

#include <QClipboard>
#include <QComboBox>
#include <QDoubleSpinBox>
#include <QLabel>
#include <QLineEdit>
#include <QMimeData>
#include <QPushButton>
#include <QTableWidget>
#include <QTimer>

namespace kestrane {
namespace {

constexpr auto kSurvey = "machine-survey-octave.xml";
constexpr auto kCompressor = "protector-ac.xml"; // channels weighted A and C

struct ComparisonDesk : Desk {
    ProtectorCollection protectors;

    ComparisonDesk() {
        session.protectors = &protectors;
        clsHP& octave = protectors.Protectors.emplace_back();
        octave.Name = "Octave muff";
        for (int band = 1; band <= kProtectorBands; ++band)
            octave.Mean(band) = 20;
        clsHP& hml = protectors.Protectors.emplace_back();
        hml.Name = "HML plug";
        hml.High = 30;
        hml.Medium = 25;
        hml.Low = 20;
    }

    // Answers the screen to choose a protector with, whenever it comes up.
    void onChoosing(const char* search, const char* button) {
        auto* const look = new QTimer(frame.get());
        QObject::connect(look, &QTimer::timeout, frame.get(), [this, look, search, button] {
            auto* const dialog = qobject_cast<QDialog*>(QApplication::activeModalWidget());
            if (dialog == nullptr || !look->isActive()) return;
            look->stop();
            ++choices;
            type(kestrane::control<QLineEdit>(*dialog, "txtSearch"), search);
            kestrane::click(*dialog, button);
        });
        look->start(1);
    }

    void settleChoice(int count) {
        ASSERT_TRUE(QTest::qWaitFor([&] { return choices == count; }, 5000));
        settle();
    }

    int choices = 0;

    bool hasChart() {
        auto* const cha = area().currentSubWindow()->findChild<chaTab*>("chaTab5");
        return cha != nullptr && cha->isVisible();
    }

    const ChartData& chart() { return control<chaTab>("chaTab5").chart(); }
};

TEST(Comparison, AsksForAProtectorOnceAndShowsWhatItDoes) {
    ComparisonDesk desk;
    desk.openLog(kCompressor, "Broadband 1");
    desk.onChoosing("HML", "cmdCancel");
    desk.clickTab("Compare HPD");
    desk.settleChoice(1);
    ASSERT_EQ(desk.tabInFront(), "Compare HPD");
    EXPECT_FALSE(desk.hasChart());
    EXPECT_FALSE(desk.isEnabled("Copy"));
    desk.clickTab("Cumultv (Data)");
    desk.clickTab("Compare HPD");
    EXPECT_EQ(QApplication::activeModalWidget(), nullptr) << "declined: it does not ask again by itself";

    desk.onChoosing("HML", "cmdOK");
    desk.command("Compare with HPD").trigger();
    desk.settleChoice(2);
    ASSERT_TRUE(desk.hasChart());
    EXPECT_TRUE(QString::fromStdString(desk.chart().CategoryTitle).startsWith("Using HML Method"));
    EXPECT_TRUE(desk.control<QLabel>("fraHPD").isVisible());
    EXPECT_TRUE(desk.control<QLabel>("fraHPD").text().contains("LCeq"));
    ASSERT_TRUE(desk.isEnabled("Copy"));
    desk.command("Copy").trigger();
    const QMimeData& copied = *QApplication::clipboard()->mimeData();
    EXPECT_TRUE(copied.hasImage());
    EXPECT_TRUE(copied.text().contains("\r\nH 30.0\r\n"));

    const RecordedMetrics paper;
    const auto document = desk.area().currentSubWindow()->findChild<tabLog*>()->CurrentView(paper);
    ASSERT_NE(document, nullptr);
    const RecordingPage page = recorded(*document, paper);
    EXPECT_EQ(page.charts.size(), 1U);
    EXPECT_EQ(page.faults(), "");
    EXPECT_NE(page.lines(0).front().find("LCeq "), std::string::npos);
    EXPECT_EQ(desk.settings.read("Preferences", "Correction", ""), "2");
    auto& explorer = dynamic_cast<frmExplorer&>(*desk.area().currentSubWindow()->widget());
    EXPECT_EQ(explorer.State().View.CorrectionFactor, 2);
}

TEST(Comparison, TheRankListTakesTheBestAndEstimatesTwoTogether) {
    ComparisonDesk desk;
    clsHP& snr = desk.protectors.Protectors.emplace_back();
    snr.Name = "Thin muff";
    snr.Tipe = 1;
    snr.High = snr.Medium = snr.Low = 1;
    desk.openLog(kCompressor, "Broadband 1");
    desk.onChoosing("HML", "cmdCancel");
    desk.clickTab("Compare HPD");
    desk.settleChoice(1);
    onDialog([](QDialog& dialog) {
        ASSERT_EQ(dialog.objectName(), "frmRank");
        auto& ranks = control<QTableWidget>(dialog, "grdRanks");
        ASSERT_EQ(ranks.rowCount(), 3);
        EXPECT_EQ(ranks.item(0, 0)->text(), "HML plug");
        EXPECT_TRUE(ranks.item(1, RankTable::VerdictColumn)->text().startsWith("\u2717")) << "the thin one";
        EXPECT_EQ(control<chaTab>(dialog, "chart").chart().RowCount, 2U) << "the muff has no figures for this log";
        ranks.selectRow(0);
        auto& both = control<QLabel>(dialog, "lblBoth");
        EXPECT_FALSE(both.text().contains("dB,"));
        ranks.selectionModel()->select(ranks.model()->index(1, 0),
                                       QItemSelectionModel::Select | QItemSelectionModel::Rows);
        const double best = ranks.item(0, 5 + 1)->text().toDouble(); // by HML
        EXPECT_TRUE(both.text().contains(QString::number(best - 5, 'f', 1) + " dB")) << both.text().toStdString();
        EXPECT_FALSE(control<QPushButton>(dialog, "cmdOK").isEnabled());
        control<QDoubleSpinBox>(dialog, "spnWorn").setValue(50);
        EXPECT_EQ(ranks.selectionModel()->selectedRows().size(), 2) << "both stay chosen";
        control<QDoubleSpinBox>(dialog, "spnWorn").setValue(100);
        ranks.clearSelection();
        ranks.selectRow(0);
        click(dialog, "cmdOK");
    });
    click(*desk.area().currentSubWindow(), "cmdRank");
    desk.settle();
    ASSERT_TRUE(desk.hasChart());
    EXPECT_TRUE(QString::fromStdString(desk.chart().CategoryTitle).startsWith("Using HML Method"));
}

TEST(Comparison, AProtectorThatDoesNotFitTheLogIsChosenAnew) {
    ComparisonDesk desk;
    desk.openLog(kCompressor, "Broadband 1");
    desk.onChoosing("HML", "cmdOK");
    desk.clickTab("Compare HPD");
    desk.settleChoice(1);
    ASSERT_TRUE(desk.hasChart());

    desk.onChoosing("Octave", "cmdOK");
    desk.openLog(kSurvey, "Planer", "Compare HPD");
    desk.settleChoice(2);
    EXPECT_EQ(desk.chart().Series.size(), 2U);
    EXPECT_FALSE(desk.control<QLabel>("fraHPD").isVisible());
    EXPECT_TRUE(desk.control<QLabel>("lblGrade").isVisible());
    desk.clickTab("Cumultv (Data)");
    desk.clickTab("Compare HPD");
    EXPECT_EQ(desk.choices, 2);
}

TEST(Comparison, TwoWindowsDoNotAskAtOnce) {
    ComparisonDesk desk;
    desk.open(kSurvey);
    for (int window = 1; window <= 2; ++window) {
        if (window == 2) desk.command("New Explorer Window").trigger();
        desk.onChoosing("Octave", "cmdOK");
        desk.clickNode("Planer");
        desk.clickTab("Compare HPD");
        desk.settleChoice(window);
    }
    desk.session.Options.HPDCalc = eHPDModeUSOSHA; // for which the chosen one has no figures
    std::size_t screens = 0;
    QTimer::singleShot(100, desk.frame.get(), [&] {
        for (QWidget* window : QApplication::topLevelWidgets())
            if (window->objectName() == "frmSelectHPD" && window->isVisible()) ++screens;
        while (auto* const dialog = qobject_cast<QDialog*>(QApplication::activeModalWidget()))
            dialog->reject();
    });
    auto& state = desk.area().currentSubWindow()->findChild<frmExplorer*>()->State();
    desk.frame->LogValuesChanged(*state.OpenedLog(desk.session));
    EXPECT_TRUE(QTest::qWaitFor([&] { return screens > 0; }));
    EXPECT_EQ(screens, 1U);
}

TEST(Comparison, ConvertingTheWeightingDrawsTheLogAnew) {
    ComparisonDesk desk;
    desk.openLog(kSurvey, "Planer", "Cumultv (Data)");
    clsLog* log = nullptr;
    forEachLog(desk.session, [&](clsLog& each) {
        if (each.Name == "Planer") log = &each;
    });
    ASSERT_NE(log, nullptr);
    const std::string before = log->FreqWeightA();
    const QString to = before == "C" ? "Z" : "C";
    onDialog([&](QDialog& dialog) {
        control<QComboBox>(dialog, "cboAnswer").setCurrentText(to);
        click(dialog, "cmdOK");
    });
    desk.answer({Button::Yes});
    desk.command("Convert Frequency Weighting...").trigger();
    desk.settle();
    EXPECT_EQ(desk.control<QLabel>("lblFrqWgt").text(), to);
    desk.command("Undo Frequency Weighting").trigger();
    desk.settle();
    EXPECT_EQ(desk.control<QLabel>("lblFrqWgt").text().toStdString(), before);
    EXPECT_TRUE(IsMenuEnabled(desk.session, Command::LogConvertWeighting,
                              {true, "", log, static_cast<LogTab>(desk.tabs().currentIndex()), false}));
}

} // namespace
} // namespace kestrane

#include "TestSession.h"
#include "dialogs/ModalDialog.h"
#include "dialogs/frmHPD.h"
#include "platform/TemporaryFolder.h"

#include <QCheckBox>
#include <QComboBox>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTableView>

namespace kestrane {
namespace {

struct Database : TestSession {
    TemporaryFolder folder;
    ProtectorCollection protectors;
    int downloads = 0;
    frmHPD::Download download = [this](QWidget*) { return ++downloads > 0; };
    clsLog log{session};

    Database() {
        protectors.File = folder.file("db.txt");
        session.protectors = &protectors;
        log.FreqWeightA("C");
        log.LeqCumA(0).Value(100);
        for (const auto& [name, snr] : {std::pair("Zeta muff", 30.0F), std::pair("alpha plug", 9.5F),
                                        std::pair("Beta <b> muff", 0.0F), std::pair("Gamma plug", 22.0F)}) {
            clsHP& hp = protectors.Protectors.emplace_back();
            hp.Name = name;
            hp.SNR = snr;
        }
    }

    void maintain(std::function<void(QDialog&)> act) {
        onDialog(std::move(act));
        frmHPD::ShowMaintenanceScreen(session, download, nullptr);
    }

    std::optional<ProtectorChoice> choose(const char* chosen, std::function<void(QDialog&)> act) {
        onDialog(std::move(act));
        return frmHPD::ShowHPDComparisonScreen(session, log, chosen, download, nullptr);
    }
};

std::string names(QDialog& dialog) {
    const QAbstractItemModel& model = *control<QTableView>(dialog, "lvwHPD").model();
    QStringList texts;
    for (int row = 0; row < model.rowCount(); ++row)
        texts.push_back(model.index(row, 0).data().toString().section(' ', 0, 0));
    return texts.join(' ').toStdString();
}

void sortBy(QDialog& dialog, const char* caption) {
    auto& list = control<QTableView>(dialog, "lvwHPD");
    QHeaderView& header = *list.horizontalHeader();
    for (int column = 0; column < list.model()->columnCount(); ++column) {
        if (list.model()->headerData(column, Qt::Horizontal).toString() != QLatin1String(caption)) continue;
        const QPoint at(header.sectionViewportPosition(column) + header.sectionSize(column) / 2, header.height() / 2);
        QTest::mouseClick(header.viewport(), Qt::LeftButton, {}, at);
    }
}

TEST(ProtectorList, IsSortedByFiguresAndSearched) {
    Database database;
    database.choose("", [](QDialog& dialog) {
        EXPECT_EQ(names(dialog), "alpha Beta Gamma Zeta");
        sortBy(dialog, "APL");
        EXPECT_EQ(names(dialog), "Zeta Gamma alpha Beta") << "by number, those without one last";
        type(control<QLineEdit>(dialog, "txtSearch"), "PLUG");
        EXPECT_EQ(names(dialog), "Gamma alpha");
        EXPECT_EQ(control<QLineEdit>(dialog, "txtName").text(), "alpha plug") << "stays selected";
        type(control<QLineEdit>(dialog, "txtSearch"), "muff");
        EXPECT_EQ(control<QLineEdit>(dialog, "txtName").text(), "Zeta muff") << "the first that is seen";
        type(control<QLineEdit>(dialog, "txtSearch"), "none");
        QTest::keySequence(&control<QTableView>(dialog, "lvwHPD"), QKeySequence::Copy); // of no protector
        EXPECT_FALSE(control<QPushButton>(dialog, "cmdOK").isEnabled());
    });
}

TEST(ProtectorChoosing, GivesTheProtectorWithItsCorrection) {
    Database database;
    const auto choice = database.choose("Gamma plug", [&](QDialog& dialog) {
        EXPECT_EQ(control<QLineEdit>(dialog, "txtName").text(), "Gamma plug");
        EXPECT_TRUE(control<QLineEdit>(dialog, "txtName").isReadOnly());
        EXPECT_FALSE(control<QPushButton>(dialog, "cmdAdd").isVisible());
        control<QComboBox>(dialog, "cboCorrectionFactor").setCurrentText("1 std dev");
        click(dialog, "cmdOK");
        EXPECT_TRUE(dialog.isVisible());
        EXPECT_EQ(database.messages.Boxes.size(), 1U);
        control<QComboBox>(dialog, "cboCorrectionFactor").setCurrentText("None");
        click(dialog, "cmdOK");
        EXPECT_FALSE(dialog.isVisible());
    });
    ASSERT_TRUE(choice.has_value());
    EXPECT_EQ(choice->Protector.Name, "Gamma plug");
    EXPECT_EQ(choice->CorrectionFactor, 0);
    EXPECT_EQ(database.settings.read("Preferences", "Correction", ""), "0");
    EXPECT_FALSE(database.choose("Zeta muff", [](QDialog& dialog) { click(dialog, "cmdCancel"); }).has_value());
}

TEST(ProtectorEditing, AddsChangesAndDeletesAndWritesOnClosing) {
    Database database;
    database.maintain([&](QDialog& dialog) {
        auto& name = control<QLineEdit>(dialog, "txtName");
        click(dialog, "cmdAdd");
        EXPECT_FALSE(control<QTableView>(dialog, "lvwHPD").isEnabled());
        click(dialog, "cmdOK");
        EXPECT_EQ(database.messages.Boxes.back().Prompt, "A name has not been entered");
        type(name, "Epsilon");
        control<QComboBox>(dialog, "cboType").setCurrentText("Earmuff");
        auto& mean = control<QLineEdit>(dialog, "txtOctMean3");
        type(mean, "21.26");
        control<QLineEdit>(dialog, "txtSNR").setFocus();
        EXPECT_EQ(mean.text(), "21.3");
        type(mean, "2x");
        control<QLineEdit>(dialog, "txtSNR").setFocus();
        EXPECT_EQ(mean.text(), "21.3") << "what is no number goes";
        click(dialog, "cmdOK");
        EXPECT_EQ(names(dialog), "alpha Beta Epsilon Gamma Zeta");
        EXPECT_EQ(name.text(), "Epsilon") << "stays selected";

        click(dialog, "cmdChange");
        type(name, "Eta");
        database.messages.Answers = {Button::Cancel, Button::Ok};
        click(dialog, "cmdCancel");
        EXPECT_EQ(name.text(), "Eta");
        click(dialog, "cmdCancel");
        EXPECT_EQ(database.messages.Boxes.back().Prompt, "Lose Changes?");
        EXPECT_EQ(name.text(), "Epsilon");
        EXPECT_TRUE(dialog.isVisible());

        database.messages.Answers = {Button::Ok};
        click(dialog, "cmdDelete");
        EXPECT_EQ(names(dialog), "alpha Beta Gamma Zeta");
        EXPECT_EQ(name.text(), "Gamma plug");
        click(dialog, "cmdChange");
        type(name, "Delta");
        click(dialog, "cmdOK");
        EXPECT_FALSE(std::filesystem::exists(database.protectors.File));
    });
    std::vector<clsHP> written;
    loadProtectors(database.protectors.File, written);
    ASSERT_EQ(written.size(), 4U);
    EXPECT_EQ(written[3].Name, "Delta");
}

TEST(ProtectorEditing, WaitsUntilADamagedFileIsKept) {
    Database database;
    saveProtectors(database.protectors.File, database.protectors.Protectors);
    database.protectors.Damage = "109: Corrupt file error";
    database.maintain([&](QDialog& dialog) {
        EXPECT_TRUE(control<QLabel>(dialog, "lblDamage").text().endsWith("109: Corrupt file error"));
        for (const char* name : {"cmdAdd", "cmdChange", "cmdDelete"})
            EXPECT_FALSE(control<QPushButton>(dialog, name).isEnabled()) << name;
        click(dialog, "cmdKeepDamaged");
        EXPECT_FALSE(control<QLabel>(dialog, "lblDamage").isVisible());
        EXPECT_TRUE(control<QPushButton>(dialog, "cmdChange").isEnabled());
    });
    EXPECT_TRUE(std::filesystem::exists(database.protectors.File + ".damaged"));
}

TEST(ProtectorEditing, ShowsEuropeanOrUSFigures) {
    Database database;
    database.protectors.Protectors[1].NRR = 25;
    database.maintain([&](QDialog& dialog) {
        EXPECT_TRUE(control<QLineEdit>(dialog, "txtSNR").isVisible());
        EXPECT_FALSE(control<QLineEdit>(dialog, "txtNRR").isVisible());
        click(dialog, "chkUS");
        EXPECT_FALSE(control<QLineEdit>(dialog, "txtOctMean1").isVisible());
        EXPECT_TRUE(control<QLineEdit>(dialog, "txtOctMeanUS1").isVisible());
        EXPECT_EQ(control<QLineEdit>(dialog, "txtNRR").text(), "25.0");
        EXPECT_EQ(control<QTableView>(dialog, "lvwHPD").model()->columnCount(), 4);
        database.protectors.Protectors.resize(1);
        click(dialog, "cmdDownload");
        EXPECT_EQ(database.downloads, 1);
        EXPECT_EQ(names(dialog), "Zeta");
    });
}

TEST(ProtectorBars, ShowAFigureThatIsOutOfLine) {
    Database database;
    for (int band = 1; band <= kProtectorBands; ++band)
        database.protectors.Protectors[1].Mean(band) = 25;
    database.maintain([](QDialog& dialog) {
        auto& bars = control<QWidget>(dialog, "picBars");
        const QColor colour = bars.palette().color(QPalette::Highlight);
        const auto height = [&](int band) {
            const QImage image = bars.grab().toImage();
            const int x = image.width() * (2 * band - 1) / 16 + image.width() / 100;
            int count = 0;
            for (int y = 0; y < image.height(); ++y)
                count += image.pixelColor(x, y) == colour;
            return count;
        };
        EXPECT_NEAR(height(1), bars.height() / 2, 2); // of 50 dB
        click(dialog, "cmdChange");
        type(control<QLineEdit>(dialog, "txtOctMean4"), "250");
        EXPECT_GT(height(4), 8 * height(3));
        click(dialog, "cmdCancel");
    });
}

} // namespace
} // namespace kestrane

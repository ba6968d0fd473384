#include "dialogs/DialogFit.h"

#include "TestSession.h"
#include "dialogs/ModalDialog.h"
#include "dialogs/Palettes.h"
#include "dialogs/frmCutIntervals.h"
#include "dialogs/frmExport.h"
#include "dialogs/frmHPD.h"
#include "dialogs/frmOptions.h"
#include "explorer/NodeKeys.h"
#include "protection/ProtectorDatabase.h"
#include "resources/Languages.h"

#include <QAbstractScrollArea>
#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QMouseEvent>
#include <QPushButton>
#include <QScrollArea>
#include <QScrollBar>
#include <QSlider>
#include <QTabWidget>
#include <QWheelEvent>

namespace kestrane {
namespace {

// What a user reads or hits has the room that it needs, and the buttons that end the dialog are in view.
void expectWhole(QDialog& dialog, QSize room, const char* what) {
    const std::string where = std::string(what) + " in " + std::to_string(room.width());
    EXPECT_LE(dialog.width(), room.width()) << where;
    EXPECT_LE(dialog.height(), room.height()) << where;
    int ends = 0;
    for (const QWidget* widget : dialog.findChildren<QWidget*>()) {
        const bool isBar = qobject_cast<const QScrollBar*>(widget) != nullptr || widget->inherits("QSplitterHandle");
        const int narrow = std::min(widget->width(), widget->height());
        EXPECT_TRUE(!isBar || !widget->isVisible() || narrow >= kLeastHit)
            << where << ": " << widget->metaObject()->className();
        const bool isControl =
            qobject_cast<const QAbstractButton*>(widget) != nullptr ||
            qobject_cast<const QLineEdit*>(widget) != nullptr || qobject_cast<const QComboBox*>(widget) != nullptr ||
            qobject_cast<const QSlider*>(widget) != nullptr || qobject_cast<const QLabel*>(widget) != nullptr;
        if (!isControl || !widget->isVisible()) continue;
        const std::string name = where + ": " + widget->objectName().toStdString();
        const bool isElided = widget->sizePolicy().horizontalPolicy() == QSizePolicy::Ignored;
        EXPECT_TRUE(isElided || widget->width() >= widget->minimumSizeHint().width()) << name;
        EXPECT_GE(widget->height() + 1, widget->minimumSizeHint().height()) << name; // a style may lend one
        const QWidget* const around = widget->parentWidget();
        const bool isPart = qobject_cast<const QComboBox*>(around) != nullptr || around->inherits("QAbstractSpinBox") ||
                            qobject_cast<const QLineEdit*>(around) != nullptr;
        EXPECT_TRUE(isPart || qobject_cast<const QLabel*>(widget) != nullptr || widget->height() >= kLeastHit) << name;
        if (widget->objectName() != "cmdOK" && widget->objectName() != "cmdCancel") continue;
        EXPECT_TRUE(dialog.rect().contains(QRect(widget->mapTo(&dialog, QPoint()), widget->size()))) << name;
        ++ends;
    }
    EXPECT_GT(ends, 0) << where;
}

TEST(DialogFit, ABoxIsHitAboveAndBelowItsWords) {
    showAppearance(Appearance::Light);
    QCheckBox box("x");
    box.resize(box.sizeHint().width(), kLeastHit);
    for (const int y : {0, kLeastHit - 1}) {
        const bool before = box.isChecked();
        const QPointF at(5, y);
        QMouseEvent press(QEvent::MouseButtonPress, at, at, Qt::LeftButton, Qt::LeftButton, Qt::NoModifier);
        QMouseEvent release(QEvent::MouseButtonRelease, at, at, Qt::LeftButton, Qt::NoButton, Qt::NoModifier);
        QApplication::sendEvent(&box, &press);
        QApplication::sendEvent(&box, &release);
        EXPECT_NE(box.isChecked(), before) << y;
    }
}

TEST(DialogFit, NoDialogIsLargerThanItsScreenAndNothingIsCut) {
    showAppearance(Appearance::Light);
    TestSession test;
    ProtectorCollection protectors;
    protectors.Protectors.resize(3);
    test.session.protectors = &protectors;
    auto& file = test.session.OpenFiles.emplace_back(std::make_unique<clsFile>(test.session, "/data/a.xml"));
    auto& data = file->InstrumentDatas.emplace_back(std::make_unique<clsInsData>(test.session));
    clsLog& log = *data->Locations.emplace_back(std::make_unique<clsLog>(test.session));
    log.LogIntervals.setArraySize(3);
    AssignIdentities(test.session, false, 0);
    const ExportSubject subject{"L1I1F1", "L1I1F1", &log, {1, 3}};
    for (const QSize screen : {QSize(1366, 768), QSize(1024, 768), QSize(3840, 2160)}) {
        for (const double scale : {1.0, 1.5, 2.0}) {
            const QSize room = (QSizeF(screen) / scale).toSize();
            const DialogFit fit(room);
            onDialog([&](QDialog& dialog) {
                auto& pages = control<QTabWidget>(dialog, "tabSettings");
                for (int page = 0; page < pages.count(); ++page) {
                    pages.setCurrentIndex(page);
                    expectWhole(dialog, room, "settings");
                }
                EXPECT_GE(control<QSlider>(dialog, "sliderWidth").width(), 60);
            });
            frmOptions::ShowFromToolsMenu(test.session, nullptr);
            onDialog([&](QDialog& dialog) { expectWhole(dialog, room, "display options"); });
            frmOptions::ShowFromLogTabCtrlRightClick(test.session, log, kInterval, QPoint(5000, 5000), nullptr);
            onDialog([&](QDialog& dialog) { expectWhole(dialog, room, "protectors"); });
            frmHPD::ShowMaintenanceScreen(test.session, {}, nullptr);
            onDialog([&](QDialog& dialog) { expectWhole(dialog, room, "export"); });
            frmExport(test.session, subject, nullptr).exec();
            onDialog([&](QDialog& dialog) { expectWhole(dialog, room, "intervals"); });
            frmCutIntervals::getIntervals(test.session, log, nullptr);
        }
    }
}

// On a screen of 1366x768 at scale 1.5, within its frame.
TEST(DialogFit, SettingsAreScrolledUpAndDownOnlyAndTheWheelChangesNothing) {
    showAppearance(Appearance::Light);
    const DialogFit fit(QSize(895, 464));
    for (const Language& language : Languages()) {
        TestSession test({}, {language, language});
        onDialog([&](QDialog& dialog) {
            const auto* const area = dialog.findChild<QScrollArea*>({}, Qt::FindDirectChildrenOnly);
            ASSERT_NE(area, nullptr);
            EXPECT_EQ(area->horizontalScrollBar()->maximum(), 0) << language.Name;
            EXPECT_TRUE(area->widget()->isAncestorOf(QApplication::focusWidget())) << "not on the buttons";
            EXPECT_TRUE(control<QPushButton>(dialog, "cmdOK").isDefault()) << "what Return does in a field";
            const QWidget* behind = control<QWidget>(dialog, "cmdCancel").nextInFocusChain();
            while ((behind->focusPolicy() & Qt::TabFocus) == 0)
                behind = behind->nextInFocusChain();
            EXPECT_EQ(behind, area) << "from the last button Tab leads to the top";
            auto& choice = control<QComboBox>(dialog, "cboAppearance");
            EXPECT_EQ(choice.focusPolicy(), Qt::StrongFocus) << "or the wheel gives the focus first";
            const QPointF at = choice.rect().center();
            QWheelEvent down(at, choice.mapToGlobal(at), {}, {0, -120}, {}, {}, Qt::NoScrollPhase, false);
            QApplication::sendEvent(&choice, &down);
            EXPECT_EQ(choice.currentIndex(), 0);
            EXPECT_FALSE(down.isAccepted()) << "it is for what is around";
        });
        frmOptions::ShowFromToolsMenu(test.session, nullptr);
    }
    QComboBox inWindow;
    inWindow.show();
    EXPECT_EQ(inWindow.focusPolicy(), Qt::StrongFocus);
}

} // namespace
} // namespace kestrane

#include "platform/desktop/DesktopMessages.h"

#include <QApplication>
#include <QKeyEvent>
#include <QLabel>
#include <QMessageBox>
#include <QPushButton>
#include <QTimer>

#include <gtest/gtest.h>

namespace kestrane {
namespace {

std::string caption(Button button) {
    return "Caption " + std::to_string(static_cast<int>(button));
}

// Shows a box and, once it is open, does something with it; a box that stays open is then ended by a press of its last
// button, and counted.
struct BoxRun {
    Button taken;
    bool stayedOpen = false;
};

BoxRun showBox(MessageFlags flags, const std::function<void(QMessageBox&)>& act, const std::string& prompt = "Text") {
    BoxRun run{};
    QTimer::singleShot(0, [&] {
        auto* const box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
        ASSERT_NE(box, nullptr);
        act(*box);
        run.stayedOpen = box->isVisible();
        if (run.stayedOpen) box->buttons().constLast()->click();
    });
    run.taken = DesktopMessages(caption).show(prompt, flags, "Title");
    return run;
}

void press(QMessageBox& box, Qt::Key key) {
    QWidget* const receiver = box.focusWidget() != nullptr ? box.focusWidget() : &box;
    for (const auto type : {QEvent::KeyPress, QEvent::KeyRelease}) {
        QKeyEvent event(type, key, Qt::NoModifier);
        QApplication::sendEvent(receiver, &event);
    }
}

TEST(DesktopMessages, ButtonsStandInOrderWithTheirCaptions) {
    std::vector<std::pair<int, QString>> shown;
    showBox(kButtonsYesNoCancel | kIconQuestion, [&](QMessageBox& box) {
        for (QAbstractButton* button : box.buttons())
            shown.emplace_back(button->mapTo(&box, QPoint()).x(), button->text());
        EXPECT_EQ(box.icon(), QMessageBox::Question);
        EXPECT_EQ(box.windowTitle(), "Title");
    });
    std::sort(shown.begin(), shown.end());
    ASSERT_EQ(shown.size(), 3U);
    EXPECT_EQ(shown[0].second, "Caption 6");
    EXPECT_EQ(shown[1].second, "Caption 7");
    EXPECT_EQ(shown[2].second, "Caption 2");
}

TEST(DesktopMessages, ClicksAndKeysGiveTheButton) {
    const auto click = [](const char* text) {
        return [text](QMessageBox& box) {
            for (QAbstractButton* button : box.buttons())
                if (button->text() == text) button->click();
        };
    };
    EXPECT_EQ(showBox(kButtonsYesNo, click("Caption 7")).taken, Button::No);
    EXPECT_EQ(showBox(kButtonsRetryCancel | kIconStop, click("Caption 4")).taken, Button::Retry);

    const auto key = [](Qt::Key k) { return [k](QMessageBox& box) { press(box, k); }; };
    EXPECT_EQ(showBox(kButtonsYesNoCancel | kDefaultSecond, key(Qt::Key_Return)).taken, Button::No);
    EXPECT_EQ(showBox(kButtonsYesNoCancel, key(Qt::Key_Escape)).taken, Button::Cancel);
    EXPECT_EQ(showBox(kButtonsOkCancel | kSystemModal, key(Qt::Key_Escape)).taken, Button::Cancel);
    EXPECT_FALSE(showBox(kButtonsOk, key(Qt::Key_Escape)).stayedOpen);
    EXPECT_EQ(showBox(kButtonsYesNo, key(Qt::Key_Escape)).taken, Button::No);
}

TEST(DesktopMessages, TextsAreNotMarkup) {
    showBox(
        kButtonsOk,
        [](QMessageBox& box) {
            const auto* const label = box.findChild<QLabel*>("qt_msgbox_label");
            ASSERT_NE(label, nullptr);
            EXPECT_EQ(label->textFormat(), Qt::PlainText);
            EXPECT_EQ(label->text(), "<b>Log</b>\nnext");
        },
        "<b>Log</b>\r\nnext");
}

} // namespace
} // namespace kestrane

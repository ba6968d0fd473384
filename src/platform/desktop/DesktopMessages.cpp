#include "platform/desktop/DesktopMessages.h"

#include <QApplication>
#include <QMessageBox>
#include <QPushButton>

#include <array>

namespace kestrane {

namespace {

constexpr int kIconMask = 0x70;

struct IconOfFlag {
    int flag;
    QMessageBox::Icon icon;
};

constexpr std::array<IconOfFlag, 4> kIcons = {{{kIconStop, QMessageBox::Critical},
                                               {kIconQuestion, QMessageBox::Question},
                                               {kIconExclamation, QMessageBox::Warning},
                                               {kIconInformation, QMessageBox::Information}}};

} // namespace

Button DesktopMessages::show(const std::string& prompt, MessageFlags flags, const std::string& title) {
    QMessageBox box(QApplication::activeWindow());
    box.setWindowTitle(QString::fromStdString(title));
    box.setTextFormat(Qt::PlainText);
    box.setText(QString::fromStdString(prompt).replace("\r\n", "\n"));
    for (const IconOfFlag& entry : kIcons)
        if (entry.flag == (flags & kIconMask)) box.setIcon(entry.icon);

    const std::vector<Button> buttons = buttonsOf(flags);
    std::vector<QPushButton*> shown;
    for (const Button button :
         buttons) { // all buttons have the same role, so that the desktop's style keeps their order
        shown.push_back(box.addButton(QString::fromStdString(caption_(button)), QMessageBox::ActionRole));
        if (button == defaultButtonOf(flags)) box.setDefaultButton(shown.back());
    }
    box.setEscapeButton(shown.back()); // the one that does least
    box.exec();
    for (std::size_t i = 0; i < buttons.size(); ++i)
        if (shown[i] == box.clickedButton()) return buttons[i];
    return buttons.back(); // the box was closed with the program
}

} // namespace kestrane

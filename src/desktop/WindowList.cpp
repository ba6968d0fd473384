#include "desktop/WindowList.h"

#include <QActionGroup>
#include <QMdiArea>
#include <QMdiSubWindow>
#include <QMenu>
#include <QPointer>

namespace kestrane {

namespace {

constexpr int kWithDigit = 9; // so many can be chosen by a digit

QString titleOf(const QMdiSubWindow& window, int number) {
    const QString title = QString(window.windowTitle()).replace('&', "&&");
    return number <= kWithDigit ? '&' + QString::number(number) + ' ' + title : title;
}

void bringToFront(QMdiArea& area, QMdiSubWindow& window) {
    if (window.isMinimized()) window.showNormal();
    area.setActiveSubWindow(&window);
}

} // namespace

void listWindows(QMenu& menu, QMdiArea& area, const std::function<void(const std::function<void()>&)>& begin) {
    menu.addSeparator();
    auto* const titles = new QActionGroup(&menu);
    QObject::connect(&menu, &QMenu::aboutToShow, titles, [&menu, &area, titles, begin] {
        qDeleteAll(titles->actions());
        int number = 0;
        for (QMdiSubWindow* const window : area.subWindowList()) {
            auto* const action = new QAction(titleOf(*window, ++number), titles);
            action->setCheckable(true);
            action->setChecked(window == area.currentSubWindow());
            menu.addAction(action);
            QObject::connect(action, &QAction::triggered, titles, [&area, begin, chosen = QPointer(window)] {
                begin([&] {
                    if (chosen != nullptr) bringToFront(area, *chosen);
                });
            });
        }
    });
}

} // namespace kestrane

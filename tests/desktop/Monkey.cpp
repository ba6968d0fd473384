#include "desktop/Monkey.h"

#include "desktop/frmExplorer.h"
#include "dialogs/Words.h"

#include <QAbstractButton>
#include <QAbstractItemView>
#include <QAbstractSpinBox>
#include <QComboBox>
#include <QDir>
#include <QDrag>
#include <QDropEvent>
#include <QFileDialog>
#include <QLineEdit>
#include <QMenu>
#include <QMimeData>
#include <QTreeWidgetItemIterator>

#include <algorithm>
#include <fstream>

namespace kestrane {

namespace {

constexpr std::size_t kNoted = 30; // steps
constexpr std::size_t kFiles = 6;  // open at once
constexpr int kStepsInDialog = 5;  // at most
constexpr int kLogs = 200;         // in a document, which doubles when it is merged into itself
constexpr int kWindows = 12;       // of all kinds
constexpr int kLookEvery = 2;      // milliseconds
constexpr auto kStepsProperty = "stepsOfTheMonkey";

const char* const kSamples[] = {"shift-dosimeter.xml",   "machine-survey-octave.xml", "night-environment.xml",
                                "brevik-short-form.xml", "roadworks-selection.xml",   "third-octave-2000.xml"};

const QKeySequence kKeys[] = {Qt::Key_Up,
                              Qt::Key_Down,
                              Qt::Key_Left,
                              Qt::Key_Right,
                              Qt::Key_Home,
                              Qt::Key_End,
                              Qt::Key_PageDown,
                              Qt::Key_PageUp,
                              Qt::Key_Return,
                              Qt::Key_Escape,
                              Qt::Key_Tab,
                              Qt::Key_Backtab,
                              Qt::Key_Space,
                              Qt::Key_Delete,
                              Qt::Key_Backspace,
                              Qt::Key_F2,
                              QKeySequence("Ctrl+Z"),
                              QKeySequence("Ctrl+Shift+Z"),
                              QKeySequence("Ctrl+C"),
                              QKeySequence("Ctrl+X"),
                              QKeySequence("Ctrl+V"),
                              QKeySequence("Ctrl+A"),
                              QKeySequence("Ctrl+Tab"),
                              QKeySequence("Ctrl+S"),
                              QKeySequence("Shift+Down"),
                              QKeySequence("Shift+Right"),
                              Qt::Key_0,
                              Qt::Key_1,
                              Qt::Key_8,
                              Qt::Key_9,
                              Qt::Key_Period,
                              Qt::Key_A};

std::string nameOf(const QWidget& widget) {
    return widget.metaObject()->className() + (" " + widget.objectName().toStdString());
}

} // namespace

Monkey::Monkey(DesktopMessages& boxes, unsigned seed) : Desk({}, {1024, 700}, &boxes), random_(seed) {
    QDir::setCurrent(QString::fromStdString(path(""))); // names without a folder are to stay there
    session.comm = &comm_;
    session.protectors = &protectors_;
    session.http = &http_;
    session.Options.DefaultDataDirectory = path("");
    comm_.TheirPorts.clear();
    protectors_.File = path("none.txt");
    frame->EnableMenusAndButtons(); // there are protectors now
    QObject::connect(&looking_, &QTimer::timeout, frame.get(), [this] { look(); });
    looking_.setSingleShot(true);
    looking_.start(kLookEvery);
}

Monkey::~Monkey() {
    looking_.stop();
    QDir::setCurrent(QDir::tempPath());
}

void Monkey::note(const std::string& what) {
    log_.push_back(what);
    if (log_.size() > kNoted) log_.pop_front();
    static const char* const file = std::getenv("KESTRANE_MONKEY_LOG"); // for a run that does not come back
    if (file != nullptr) std::ofstream(file, std::ios::app) << what << std::endl;
}

void Monkey::step() {
    recover();

    struct Kind {
        int weight;
        void (*act)(Monkey&);
    };

    static constexpr Kind kKinds[] = {
        {4, [](Monkey& m) { m.openFile(); }},         {22, [](Monkey& m) { m.giveCommand(); }},
        {16, [](Monkey& m) { m.clickInTree(); }},     {10, [](Monkey& m) { m.chooseTab(); }},
        {8, [](Monkey& m) { m.editFigures(); }},      {12, [](Monkey& m) { m.pressKey(*m.frame); }},
        {14, [](Monkey& m) { m.clickOn(*m.frame); }}, {4, [](Monkey& m) { m.drag(*m.frame); }},
        {6, [](Monkey& m) { m.dropNode(); }},         {2, [](Monkey& m) { m.arrangeWindow(); }}};
    int drawn = below(98); // the sum of the weights
    for (const Kind& kind : kKinds) {
        drawn -= kind.weight;
        if (drawn >= 0) continue;
        kind.act(*this);
        break;
    }
    if (QWidget* const popup = QApplication::activePopupWidget(); popup != nullptr) answerMenu(*popup);
    settle();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
}

// What a person does when there is nothing left to use, or too much.
void Monkey::recover() {
    if (!frame->isVisible() || frame->isMinimized()) frame->showNormal();
    if (area().subWindowList().isEmpty()) frame->NewExplorerWindow();
    if (area().subWindowList().size() > kWindows) area().closeAllSubWindows();
    for (QWidget* const window : frame->findChildren<QWidget*>(Qt::FindDirectChildrenOnly))
        if (window->isWindow() && window->isVisible() && below(4) == 0) window->close();
    const bool isTooLarge = std::ranges::any_of(session.OpenFiles, [](const auto& file) {
        int logs = 0;
        forEachLog(*file, [&](const clsLog&) { ++logs; });
        return logs > kLogs;
    });
    if (isTooLarge) command(loadPlainText(session, Text::CommandCloseAll).toUtf8()).trigger();
    if (session.OpenFiles.empty() && below(2) == 0) openFile();
    settle();
}

void Monkey::openFile() {
    if (session.OpenFiles.size() >= kFiles) return;
    const std::string name = kSamples[below(std::size(kSamples))];
    const std::string as = std::to_string(files_++ % 9) + name; // what was opened before is opened again now and then
    note("open " + as);
    QFile::copy(QString::fromStdString(SAMPLES_DIR "/" + name), QString::fromStdString(path(as)));
    frame->OpenForAnother({path(as)});
}

void Monkey::giveCommand() {
    QList<QAction*> enabled;
    for (QAction* action : frame->actions())
        if (action->isEnabled() && !action->isSeparator()) enabled.push_back(action);
    if (enabled.isEmpty()) return;
    QAction* const action = enabled[below(static_cast<int>(enabled.size()))];
    note("command " + action->text().toStdString());
    action->trigger();
}

void Monkey::pressKey(QWidget& receiver) {
    QWidget* const focus = QApplication::focusWidget();
    QWidget* const widget = focus != nullptr && receiver.isAncestorOf(focus) ? focus : &receiver;
    const QKeySequence& key = kKeys[below(std::size(kKeys))];
    note("key " + key.toString().toStdString() + " on " + nameOf(*widget));
    QTest::keySequence(widget, key);
}

QWidget* Monkey::anyWidgetIn(QWidget& parent) {
    QList<QWidget*> widgets;
    for (QWidget* const widget : parent.findChildren<QWidget*>()) {
        const bool isUsable = widget->isVisible() && widget->isEnabled() && widget->width() > 2 && widget->height() > 2;
        if (isUsable && widget->window() == parent.window()) widgets.push_back(widget);
    }
    return widgets.isEmpty() ? &parent : widgets[below(static_cast<int>(widgets.size()))];
}

void Monkey::clickOn(QWidget& parent) {
    QPointer<QWidget> widget = anyWidgetIn(parent);
    const QPoint at(below(widget->width()), below(widget->height()));
    const auto button = below(8) == 0 ? Qt::RightButton : Qt::LeftButton;
    const bool isDouble = below(8) == 0;
    note((isDouble ? "double click " : "click ") + std::to_string(button) + " on " + nameOf(*widget) + " at " +
         std::to_string(at.x()) + "," + std::to_string(at.y()));
    QTest::mouseClick(widget, button, {}, at);
    if (isDouble && widget != nullptr) QTest::mouseDClick(widget, button, {}, at);
    if (widget != nullptr && below(3) == 0 && widget->inherits("QLineEdit")) pressKey(*widget);
}

void Monkey::drag(QWidget& parent) {
    QPointer<QWidget> widget = anyWidgetIn(parent);
    const auto anywhere = [&] { return QPoint(below(widget->width()), below(widget->height())); };
    const QPoint from = anywhere();
    const QPoint to = anywhere();
    const Qt::KeyboardModifiers keys = below(3) == 0 ? Qt::ControlModifier : Qt::NoModifier;
    note("drag on " + nameOf(*widget));
    QTest::mousePress(widget, Qt::LeftButton, keys, from);
    if (widget != nullptr) dragMouse(*widget, (from + to) / 2, keys);
    if (widget != nullptr) dragMouse(*widget, to, keys);
    if (widget != nullptr) QTest::mouseRelease(widget, Qt::LeftButton, keys, to);
}

// Most often a log.
void Monkey::clickInTree() {
    auto* const tree = inFront<QTreeWidget>("tvwTreeView");
    if (tree == nullptr) return;
    QList<QTreeWidgetItem*> items;
    const bool isAny = below(4) == 0;
    for (QTreeWidgetItemIterator at(tree); *at != nullptr; ++at)
        if (isAny || (*at)->childCount() == 0) items.push_back(*at);
    if (items.isEmpty()) return;
    QTreeWidgetItem* const item = items[below(static_cast<int>(items.size()))];
    note("tree " + item->text(0).toStdString());
    tree->scrollToItem(item);
    QTest::mouseClick(tree->viewport(), below(10) == 0 ? Qt::RightButton : Qt::LeftButton, {},
                      tree->visualItemRect(item).center());
}

void Monkey::chooseTab() {
    auto* const bar = inFront<QTabBar>("tabLog");
    if (bar == nullptr) return;
    const int tab = below(bar->count());
    note("tab " + bar->tabText(tab).toStdString());
    if (bar->isTabEnabled(tab)) bar->setCurrentIndex(tab);
}

// The fields of the cumulative panel that recalculate the log.
void Monkey::editFigures() {
    auto* const criterion = inFront<QComboBox>("cboCriterion");
    if (criterion == nullptr) return chooseTab();
    auto* const field = below(2) == 0 ? criterion : inFront<QComboBox>("cboExchRate");
    field->setCurrentText(QString::number(field == criterion ? 75 + 5 * below(4) : 3 + below(3)));
    note("figures by " + field->objectName().toStdString() + " " + field->currentText().toStdString());
    if (auto* const apply = inFront<QAbstractButton>("cmdApplyChanges"); apply != nullptr) apply->click();
}

void Monkey::dropNode() {
    auto* const explorer = frame->findChild<frmExplorer*>();
    if (explorer == nullptr) return;
    QStringList keys;
    for (QTreeWidgetItemIterator at(explorer->findChild<QTreeWidget*>("tvwTreeView")); *at != nullptr; ++at)
        keys.push_back((*at)->data(0, Qt::UserRole).toString());
    if (keys.isEmpty()) return;
    const QString from = keys[below(static_cast<int>(keys.size()))];
    const QString to = keys[below(static_cast<int>(keys.size()))];
    const bool isMove = below(2) == 0;
    note((isMove ? "move " : "drop ") + from.toStdString() + " on " + to.toStdString());
    emit explorer->NodeDropped(from.toStdString(), to.toStdString(), isMove);
}

void Monkey::arrangeWindow() {
    const QList<QMdiSubWindow*> windows = area().subWindowList();
    if (windows.isEmpty()) return;
    QMdiSubWindow* const window = windows[below(static_cast<int>(windows.size()))];
    const int how = below(6);
    note("window " + std::to_string(how));
    if (how == 0) window->showMinimized();
    if (how == 1) window->showMaximized();
    if (how == 2) window->showNormal();
    if (how == 3) window->close();
    if (how == 4) frame->resize(400 + below(1200), 300 + below(800));
    if (how == 5) area().setActiveSubWindow(window);
}

void Monkey::answerMenu(QWidget& popup) {
    auto* const menu = qobject_cast<QMenu*>(&popup);
    QList<QAction*> enabled;
    if (menu != nullptr)
        for (QAction* const action : menu->actions())
            if (action->isEnabled() && action->isVisible() && !action->isSeparator()) enabled.push_back(action);
    if (menu == nullptr || enabled.isEmpty() || below(3) == 0) {
        note("close " + nameOf(popup));
        popup.close();
        return;
    }
    QAction* const action = enabled[below(static_cast<int>(enabled.size()))];
    note("menu item " + action->text().toStdString());
    QTest::mouseClick(menu, Qt::LeftButton, {}, menu->actionGeometry(action).center());
    if (QWidget* const left = QApplication::activePopupWidget(); left != nullptr) left->close();
}

void Monkey::look() {
    looking_.start(kLookEvery); // also while a dialog that opens here is waiting
    QDrag::cancel();
    QWidget* const modal = QApplication::activeModalWidget();
    if (QWidget* const popup = QApplication::activePopupWidget(); popup != nullptr) return answerMenu(*popup);
    if (modal == nullptr) return;
    auto* const dialog = qobject_cast<QDialog*>(modal);
    if (dialog == nullptr) {
        modal->close();
        return;
    }
    answerDialog(*dialog);
}

void Monkey::answerDialog(QDialog& dialog) {
    const int steps = dialog.property(kStepsProperty).toInt();
    dialog.setProperty(kStepsProperty, steps + 1);
    if (steps == 0) note("dialog " + dialog.windowTitle().toStdString());
    if (auto* const files = qobject_cast<QFileDialog*>(&dialog); files != nullptr) {
        const QString name = QString::number(below(9)) + kSamples[below(std::size(kSamples))];
        if (files->acceptMode() == QFileDialog::AcceptSave || below(2) == 0)
            if (auto* const edit = files->findChild<QLineEdit*>("fileNameEdit"); edit != nullptr) edit->setText(name);
        note("file " + name.toStdString());
        below(3) == 0 || steps > 0 ? dialog.reject() : static_cast<QDialog&>(*files).accept();
        return;
    }
    if (steps > 3 * kStepsInDialog) {
        note("end " + dialog.windowTitle().toStdString());
        dialog.done(QDialog::Rejected);
    } else if (steps > kStepsInDialog || below(5) == 0) {
        const auto buttons = dialog.findChildren<QAbstractButton*>();
        if (steps % 2 == 0 || buttons.isEmpty()) {
            note("cancel");
            dialog.reject();
        } else {
            QAbstractButton* const button = buttons[below(static_cast<int>(buttons.size()))];
            note("press " + button->text().toStdString());
            button->click();
        }
    } else if (below(2) == 0) {
        clickOn(dialog);
    } else {
        pressKey(dialog);
    }
}

} // namespace kestrane

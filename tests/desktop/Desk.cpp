#include "desktop/Desk.h"

#include "server/LogLoading.h"

#include <QDir>
#include <QLabel>
#include <QMenu>
#include <QMenuBar>
#include <QMouseEvent>
#include <QTreeWidgetItemIterator>

namespace kestrane {

namespace {

constexpr int kPatience = 10000; // milliseconds
constexpr int kRounds = 4;       // of events that bring on others

QString words(const QAction& action) {
    return action.text().remove('&');
}

} // namespace

void dragMouse(QWidget& over, QPoint to, Qt::KeyboardModifiers keys) {
    QMouseEvent move(QEvent::MouseMove, to, over.mapToGlobal(to), Qt::NoButton, Qt::LeftButton, keys);
    QCoreApplication::sendEvent(&over, &move);
}

Desk::Desk(MemorySettings store, QSize size, MessageInterface* boxes, const Wording& wording) :
    settings(std::move(store)),
    server(pump),
    session("Ordwyn Acoustics", {}, settings, boxes != nullptr ? *boxes : messages, pump, clock, wording) {
    session.server = &server;
    frame = std::make_unique<mdiMain>(session);
    if (size.isValid()) frame->resize(size);
    frame->show();
    frame->NewExplorerWindow();
    if (!QTest::qWaitForWindowActive(frame.get())) throw std::runtime_error("the window does not come up");
}

std::string Desk::copyOf(const std::string& sample) {
    const std::string to = path(sample);
    QFile::copy(QString::fromStdString(SAMPLES_DIR "/" + sample), QString::fromStdString(to));
    return to;
}

QByteArray Desk::bytesOf(const std::string& name) const {
    QFile file(QString::fromStdString(path(name)));
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

clsFile& Desk::open(const std::string& sample) {
    OpenFile(session, copyOf(sample), OpenSource::Dialog, true);
    settle();
    return *session.OpenFiles.back();
}

void Desk::openLog(const std::string& sample, const char* log, const char* tab) {
    open(sample);
    clickNode(log);
    clickTab(tab);
}

void Desk::settle() {
    if (!QTest::qWaitFor([this] { return noLogIsBusy(session); }, kPatience))
        throw std::runtime_error("rows do not come");
    for (int round = 0; round < kRounds; ++round)
        QCoreApplication::processEvents();
}

QTreeWidgetItem& Desk::node(const char* text) {
    auto found = tree().findItems(QLatin1String(text), Qt::MatchExactly | Qt::MatchRecursive);
    if (found.isEmpty()) found = tree().findItems(QLatin1String(text) + '*', Qt::MatchExactly);
    if (found.isEmpty()) throw std::runtime_error(text);
    return *found.front();
}

void Desk::clickNode(const char* text, Qt::MouseButton button) {
    QTreeWidgetItem& item = node(text);
    tree().scrollToItem(&item);
    const QPoint at = tree().visualItemRect(&item).center();
    QTest::mouseClick(tree().viewport(), button, {}, at);
}

void Desk::rename(const char* node, const char* text) {
    clickNode(node);
    tree().setFocus();
    press(Qt::Key_F2);
    QTest::keySequence(QApplication::focusWidget(), QKeySequence::SelectAll);
    QTest::keyClicks(QApplication::focusWidget(), QLatin1String(text));
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Return);
    settle();
}

QStringList Desk::nodes() {
    QStringList texts;
    for (QTreeWidgetItemIterator at(&tree()); *at != nullptr; ++at)
        texts.push_back((*at)->text(0).remove('*'));
    return texts;
}

void Desk::clickTab(const char* caption) {
    for (int tab = 0; tab < tabs().count(); ++tab) {
        if (tabs().tabText(tab) == QLatin1String(caption))
            QTest::mouseClick(&tabs(), Qt::LeftButton, {}, tabs().tabRect(tab).center());
    }
    settle();
}

QAction& Desk::command(const char* text) {
    QList<QAction*> actions = frame->actions();
    for (const QAction* menu : frame->menuBar()->actions())
        if (menu->menu() != nullptr) actions += menu->menu()->actions();
    for (QAction* action : actions)
        if (words(*action) == QLatin1String(text)) return *action;
    throw std::runtime_error(text);
}

QString Desk::panel(const char* name) {
    return frame->findChild<QLabel*>(QLatin1String(name))->text();
}

void Desk::press(const QKeySequence& keys) {
    QWidget* const focus = QApplication::focusWidget();
    QTest::keySequence(focus != nullptr ? focus : frame.get(), keys);
    QCoreApplication::processEvents();
}

void Desk::answer(std::vector<Button> answers) {
    messages.Boxes.clear();
    messages.Answers = std::move(answers);
}

std::string Desk::asked(std::size_t question) {
    return question < messages.Boxes.size() ? messages.Boxes[question].Prompt : std::string();
}

} // namespace kestrane

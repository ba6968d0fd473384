// The program's window over the services of a test, and the hands of a person on it. Files are opened from copies, so
// that they can be changed, saved and renamed.
#pragma once

#include "app/Documents.h"
#include "desktop/mdiMain.h"
#include "platform/qt/QtEventPump.h"
#include "server/KestraneThread.h"

#include <QAction>
#include <QMdiArea>
#include <QMdiSubWindow>
#include <QTabBar>
#include <QTemporaryDir>
#include <QTest>
#include <QTreeWidget>

#include <gtest/gtest.h>

// How a failed comparison shows it.
inline void PrintTo(const QString& text, std::ostream* out) {
    *out << '"' << text.toStdString() << '"';
}

namespace kestrane {

// Moves the mouse with the left button held. That of QTest moves the cursor, which a platform without one does not do.
void dragMouse(QWidget& over, QPoint to, Qt::KeyboardModifiers keys = {});

class Desk {
public:
    // boxes: shows the messages in the place of the script.
    explicit Desk(MemorySettings store = {}, QSize size = {1024, 700}, MessageInterface* boxes = nullptr,
                  const Wording& wording = {});

    std::string copyOf(const std::string& sample); // its path

    std::string path(const std::string& name) const {
        return folder_.filePath(QString::fromStdString(name)).toStdString();
    }

    QByteArray bytesOf(const std::string& name) const;

    clsFile& open(const std::string& sample); // with its rows loaded
    void openLog(const std::string& sample, const char* log, const char* tab = "Full Log");
    void settle(); // until no rows are loading and every event has run

    QMdiArea& area() { return *frame->findChild<QMdiArea*>(); }

    // In the explorer window in front.
    template <class Widget>
    Widget& control(const char* name) {
        auto* const found = area().currentSubWindow()->findChild<Widget*>(QLatin1String(name));
        if (found == nullptr) throw std::runtime_error(name);
        return *found;
    }

    QTreeWidget& tree() { return control<QTreeWidget>("tvwTreeView"); }

    QTabBar& tabs() { return control<QTabBar>("tabLog"); }

    QTreeWidgetItem& node(const char* text); // with or without the mark of an unsaved file
    void clickNode(const char* text, Qt::MouseButton button = Qt::LeftButton);
    void rename(const char* node, const char* text); // in place, by F2
    QStringList nodes();                             // all texts of the tree without marks, in order

    void clickTab(const char* caption);

    QString tabInFront() { return tabs().tabText(tabs().currentIndex()); }

    QString caption() { return area().currentSubWindow()->windowTitle(); }

    QAction& command(const char* text); // without its mnemonic

    bool isEnabled(const char* text) { return command(text).isEnabled(); }

    QString panel(const char* name);             // of the status bar
    void press(const QKeySequence& keys);        // on whatever has the focus
    void answer(std::vector<Button> answers);    // to the questions to come; forgets the ones that were asked
    std::string asked(std::size_t question = 0); // what the question said; empty when it was not asked

    MemorySettings settings;
    ScriptedMessages messages;
    QtEventPump pump;
    SystemClock clock;
    BackgroundServer server;
    Session session;
    std::unique_ptr<mdiMain> frame;

private:
    QTemporaryDir folder_;
};

} // namespace kestrane

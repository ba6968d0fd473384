// The page of a tab of the log view: draws what the core decided, and gives what it shows to the clipboard and to
// paper. The log view holds a page a tab and asks the one in front; which log and which choices, the window's state
// says.
#pragma once

#include "explorer/ExplorerState.h"
#include "model/Session.h"
#include "platform/Clipboard.h"
#include "reports/ViewPages.h"

#include <QWidget>

#include <memory>

class QLabel;

namespace kestrane {

class LogPage : public QWidget {
    Q_OBJECT

public:
    LogPage(Session& session, ExplorerState& state, int tab) : session_(session), state_(state), tab_(tab) {}

    // What it has beside the choices of all tabs, in the bar above it. Null: nothing. Shown while the page is in front.
    virtual QWidget* Bar() { return nullptr; }

    // Another log may be in view, or none (null), or another choice may have been made; whether or not it is in front.
    virtual void Follow(const clsLog* inView) { static_cast<void>(inView); }

    virtual void Draw(clsLog& inView) = 0;

    virtual bool HasContent() const = 0; // something that can be copied, of the log in view

    // What a copy command puts on the clipboard, of the whole or of what is selected.
    virtual ClipboardForms Copy(const clsLog& inView, bool valuesOnly) const = 0;

    // What it shows, laid out for a paper. Null when it shows nothing.
    virtual std::unique_ptr<PagedDocument> Pages(const PrintedView& printed) const = 0;

signals:
    void Changed(); // what the commands work on

protected:
    void fillWith(QWidget& content);

    // With the line that tells of figures that are not those of the rows in view, where the tab shows such.
    ClipboardForms withWholeFigures(ClipboardForms forms, const clsLog& inView) const;

    Session& session_;
    ExplorerState& state_;
    const int tab_;
};

QLabel* placeholderLabel(); // says in the middle of an empty page why it is empty

} // namespace kestrane

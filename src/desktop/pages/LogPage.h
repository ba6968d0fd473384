// The page of a tab of the log view: it draws what the core decided, and provides what it shows for the clipboard and
// for paper. The log view has a page for each tab and uses the one in front; the state of the window says which log and
// which choices are shown.
#pragma once

#include "explorer/ExplorerState.h"
#include "model/Session.h"
#include "platform/Clipboard.h"
#include "reports/ViewPages.h"

#include <QWidget>

#include <functional>
#include <memory>

class QLabel;
class QMouseEvent;

namespace kestrane {

class LogPage : public QWidget {
    Q_OBJECT

public:
    LogPage(Session& session, ExplorerState& state, LogTab tab) : session_(session), state_(state), tab_(tab) {}

    // The controls that it adds to the choices in the bar above it, shown while the page is in front. Null for none.
    virtual QWidget* Bar() { return nullptr; }

    // Called when another log, or none (null), may be in view, or another choice may have been made, whether or not the
    // page is in front.
    virtual void Follow(const clsLog* inView) { static_cast<void>(inView); }

    virtual void Draw(clsLog& inView) = 0;

    virtual bool HasContent() const = 0; // something of the log in view can be copied

    // What a copy command puts on the clipboard: everything, or what is selected.
    virtual ClipboardForms Copy(const clsLog& inView, bool valuesOnly) const = 0;

    // What it shows, laid out for a paper. Null when it shows nothing.
    virtual std::unique_ptr<PagedDocument> Pages(const PrintedView& printed) const = 0;

signals:
    void Changed(); // the commands may apply to something else

protected:
    void fillWith(QWidget& content);

    // Lets what Copy gives be dragged out of a part of the page, as a file, too.
    void allowDragging(QWidget& part, std::function<bool(const QMouseEvent& press)> isGrip);

    // Adds the line about figures that are not those of the rows in view, if the tab shows such figures.
    ClipboardForms withWholeFigures(ClipboardForms forms, const clsLog& inView) const;

    Session& session_;
    ExplorerState& state_;
    const LogTab tab_;
};

QLabel* placeholderLabel(); // a label in the middle of an empty page that says why it is empty

} // namespace kestrane

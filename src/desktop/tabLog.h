// The log view of an explorer window: the tabs of a log, a page each, under the bar of choices. Holds the pages, has
// the one in front drawn when it is first seen, and passes on what the user chose to ExplorerState and its LogView.
#pragma once

#include "explorer/ExplorerState.h"
#include "model/Session.h"
#include "platform/Clipboard.h"
#include "reports/PagedDocument.h"

#include <QWidget>

#include <array>
#include <memory>
#include <vector>

class QLabel;
class QStackedWidget;
class QTabBar;

namespace kestrane {

class ChoicesBar;
class ComparisonPage;
class ExposurePage;
class GraphPage;
class LogPage;
class StartPage;
class fraZoom;

class tabLog : public QWidget {
    Q_OBJECT

public:
    tabLog(Session& session, ExplorerState& state, QWidget* parent = nullptr);

    StartPage& Start() { return *start_; } // shown while no file is open

    ExposurePage& Exposures() { return *exposures_; }

    ComparisonPage& Comparison() { return *comparison_; }

    // Another log, or none, has come on view.
    void ShowLog();

    // The log's values have changed: every tab is drawn anew, the present one at once.
    void Redraw();

    void FollowSettings(bool isRedrawn); // which have changed; isRedrawn: what is drawn on the tabs, too
    void ShowControls();                 // the tabs that the log has now, and the panels of the one in front

    // Of the tab in front: whether something on it can be copied, what a copy command puts on the clipboard (what it
    // leaves out is told in the status bar), and what it shows, laid out for a paper; null when it shows nothing.
    bool HasContent() const;
    ClipboardForms CopyData(bool valuesOnly) const;
    std::unique_ptr<PagedDocument> CurrentView(const PageMetrics& paper) const;
    void SavePicture();

    bool IsZoomShown() const;
    void ToggleZoom(); // shows or hides the panel, which stays while a part of the log is in view
    void CutIntervals();
    void ToggleNote();
    void ToggleLegend();
    void EditNote();
    void FullRecalculation();
    void ConvertWeighting();

signals:
    void TabChanged();                                         // or what it shows
    void DatabaseDownloadAsked(QWidget* parent, bool* isDone); // answered before it returns
    void ProtectorAsked();                                     // if the frame is free for it
    void PopUpMenuAsked(QPoint at);                            // on the screen

protected:
    void contextMenuEvent(QContextMenuEvent* event) override;

private:
    void makeTabs();
    void makePages();
    void makeBars();
    QWidget* wholeFiguresBar();
    LogPage& front() const;
    void showNoLog();
    void tabClick();
    void applyZoom();
    void offerRowsInView();

    Session& session_;
    ExplorerState& state_;
    bool isSetting_ = false; // code sets the tabs: their handler does nothing
    QTabBar* tabs_;
    ChoicesBar* choices_;
    fraZoom* fraZoom_;
    QWidget* fraWholeFigures_;
    QStackedWidget* stack_;
    QLabel* placeholder_;
    StartPage* start_;
    std::array<LogPage*, kLogTabs> pages_{}; // by LogTab
    std::vector<GraphPage*> graphs_;         // those among them that are charts
    GraphPage* timeGraph_;
    ComparisonPage* comparison_;
    ExposurePage* exposures_;
};

} // namespace kestrane

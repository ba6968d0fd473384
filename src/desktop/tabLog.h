// The log view of an explorer window: the tabs of a log, with a page for each, under the bar of choices. It owns the
// pages, draws the one in front when it is first seen, and passes the user's choices on to ExplorerState and its
// LogView.
#pragma once

#include "explorer/ExplorerState.h"
#include "model/Session.h"
#include "platform/Clipboard.h"
#include "reports/PagedDocument.h"

#include <QWidget>

#include <array>
#include <functional>
#include <memory>
#include <string>
#include <string_view>
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
class TimePage;
class fraZoom;

class tabLog : public QWidget {
    Q_OBJECT

public:
    tabLog(Session& session, ExplorerState& state, QWidget* parent = nullptr);

    StartPage& Start() { return *start_; } // shown while no file is open

    ExposurePage& Exposures() { return *exposures_; }

    ComparisonPage& Comparison() { return *comparison_; }

    TimePage& TimeChart() { return *timeGraph_; }

    // Another log, or none, is to be shown.
    void ShowLog();

    // The values of the log have changed: every tab must be drawn again, the one in front at once.
    void Redraw();

    void FollowSettings(bool isRedrawn); // the settings have changed; isRedrawn: the tabs must be drawn again
    void ShowControls();                 // the tabs that the log has now, and the panels of the one in front

    // These are about the tab in front: whether something on it can be copied; what a copy command puts on the
    // clipboard (what it leaves out is reported in the status bar); and what it shows, laid out for a paper, null when
    // it shows nothing.
    bool HasContent() const;
    ClipboardForms CopyData(bool valuesOnly) const;
    std::unique_ptr<PagedDocument> CurrentView(const PageMetrics& paper) const;
    void ExportPicture();
    void ShowChartTable(); // in a dialog

    // The rows of the log in view that the time chart has been dragged to, where it is in front, else all of them.
    // There must be a log in view.
    RowRange RowsOfLogInView() const;

    // Rows of the opened log: those that are marked on the time chart, where it is in front, else those that it has
    // been dragged to, else those of the log in view. There must be one.
    RowRange RowsToTake() const;

    bool HasLog() const;
    std::string_view HelpTopic() const; // of the page about the tab in front; there must be a log

    bool HasRange() const; // the time chart is in front, and rows are marked on it

    bool IsZoomShown() const;
    void ToggleZoom(); // shows or hides the panel, which stays while a part of the log is shown
    void CutIntervals();
    void ToggleRange();  // shows or hides the strip under the time chart
    void ExcludeRange(); // these are about the rows that are marked there
    void IncludeOnlyRange();
    void ZoomToRange();
    void NoteAtRange();
    void ToggleNote();
    void ToggleLegend();
    void EditNote();
    void FullRecalculation();
    void ConvertWeighting();
    void Calibrate();

signals:
    void TabChanged();                                         // another tab, or other content on it
    void DatabaseDownloadAsked(QWidget* parent, bool* isDone); // isDone is set before the signal returns
    void ProtectorAsked();                                     // the frame may ignore it when it is busy
    void RankAsked();                                          // the same
    void PopUpMenuAsked(QPoint at);                            // in screen coordinates

protected:
    void contextMenuEvent(QContextMenuEvent* event) override;

private:
    void makeTabs();
    void makePages();
    void makeBars();
    QWidget* wholeFiguresBar();
    QLabel* warningsBar();
    LogPage& front() const;
    void showNoLog();
    void tabClick();
    void applyZoom();
    void editMarked(bool (*change)(clsLog&, const RowRange&));
    void editNote(const std::string& proposal);
    RowRange rowsInView() const;
    void offerRowsInView();

    Session& session_;
    ExplorerState& state_;
    bool isSetting_ = false; // code is setting the tabs, so their handler does nothing
    QTabBar* tabs_;
    ChoicesBar* choices_;
    fraZoom* fraZoom_;
    QWidget* fraWholeFigures_;
    QLabel* lblWarnings_; // logWarnings of the log on view
    QStackedWidget* stack_;
    QLabel* placeholder_;
    StartPage* start_;
    std::array<LogPage*, kAllLogTabs.size()> pages_{}; // indexed by LogTab
    std::vector<GraphPage*> graphs_;                   // the pages that are charts
    TimePage* timeGraph_;
    ComparisonPage* comparison_;
    ExposurePage* exposures_;
};

} // namespace kestrane

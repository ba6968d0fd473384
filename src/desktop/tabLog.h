// The log view of an explorer window: the eight tabs of a log with the panels beside them. Shows what ExplorerState and
// its LogView decided, draws a tab when it is first seen, and passes on what the user chose.
#pragma once

#include "dialogs/IntervalListModel.h"
#include "explorer/ExplorerState.h"
#include "explorer/HPDComparison.h"
#include "model/Session.h"
#include "platform/Clipboard.h"
#include "reports/PagedDocument.h"
#include "resources/TextNames.h"

#include <QWidget>

#include <array>
#include <memory>

class QButtonGroup;
class QCheckBox;
class QComboBox;
class QLabel;
class QPushButton;
class QStackedWidget;
class QTabBar;

namespace kestrane {

class CumulativePanelView;
class StartPage;
class chaTab;
class fraZoom;
class grdDose;
class grdTable;

class tabLog : public QWidget {
    Q_OBJECT

public:
    tabLog(Session& session, ExplorerState& state, QWidget* parent = nullptr);

    StartPage& Start() { return *start_; } // shown while no file is open

    // Another log, or none, has come on view.
    void ShowLog();

    // The log's values have changed: every tab is drawn anew, the present one at once.
    void Redraw();

    void FollowSettings(bool isRedrawn); // which have changed; isRedrawn: what is drawn on the tabs, too

    bool HasContent() const; // something on the tab in front that can be copied

    // What a copy command puts on the clipboard; what it leaves out is told in the status bar.
    ClipboardForms CopyData(bool valuesOnly) const;
    bool IsZoomShown() const;
    void ToggleZoom(); // shows or hides the panel, which stays while a part of the log is in view
    void CutIntervals();
    void SavePicture();

    // What the tab in front shows, laid out for a paper. Null when it shows nothing.
    std::unique_ptr<PagedDocument> CurrentView(const PageMetrics& paper) const;

    void ToggleNote();
    void ToggleLegend();
    void EditNote();
    void FullRecalculation();
    bool IsOnExposureRow() const; // of the exposure calculator, in front
    void ChooseProtector();       // to compare the log with
    void ConvertWeighting();
    void ShowControls(); // the tabs that the log has now, and the panels of the one in front
    void InsertRows();
    void DeleteRows();

signals:
    void TabChanged();                                         // or what it shows
    void DatabaseDownloadAsked(QWidget* parent, bool* isDone); // answered before it returns
    void ProtectorAsked();                                     // if the frame is free for it
    void PopUpMenuAsked(QPoint at);                            // on the screen

protected:
    void contextMenuEvent(QContextMenuEvent* event) override;

private:
    QWidget* optionsBar();
    QWidget* exposureBar();
    QWidget* wholeFiguresBar();
    QWidget* buttonsOf(const char* frame, Text::Id caption, QButtonGroup*& group,
                       std::initializer_list<Text::Id> texts);
    QWidget* protectorBar();
    void choosePage();
    void showChoices(const clsLog& log);
    void fillDisplayBy(const clsLog& log);
    void tabClick();
    void drawTab(clsLog& log);

    void drawTimeChart(clsLog& log);
    void drawTable(clsLog& log);
    void drawBandChart(clsLog& log);
    void drawNoiseRating(clsLog& log);
    void drawPanels(clsLog& log);
    void drawComparison(clsLog& log);
    void drawExposures(clsLog& log);
    std::string protectorPanelText() const;
    void showProtectorPanel(const std::vector<std::pair<std::string, std::string>>& panel);

    chaTab& chart();                  // of the tab in front; made on first use
    const chaTab* shownChart() const; // null: the tab in front shows none
    void applyChanges();
    void applyZoom();
    ClipboardForms copiedIntervals(const clsLog& log) const;
    void offerRowsInView();

    Session& session_;
    ExplorerState& state_;
    bool isSetting_ = false; // code sets the controls: their handlers do nothing
    QTabBar* tabs_;
    QWidget* options_;
    QStackedWidget* pages_;
    QLabel* placeholder_;
    StartPage* start_;
    std::array<chaTab*, kLogTabs> charts_{};
    std::array<QWidget*, kLogTabs> chartPages_{};
    grdTable* table_;
    grdDose* exposures_;
    CumulativePanelView* panels_;
    IntervalListModel intervals_;

    QWidget* fraWholeFigures_;
    QWidget* fraDisplayBy_;
    QButtonGroup* optDisplayBy_;
    QComboBox* cboDisplayBy_;
    QWidget* fraAxis_;
    QButtonGroup* optAxis_;
    QWidget* fraTable_;
    QButtonGroup* optChannelX_;
    QWidget* fraDfltCum_;
    QButtonGroup* optCumPanels_;
    QWidget* fraInterval_;
    QComboBox* lstInterval_;
    QWidget* fraProtector_;
    QLabel* fraHPD_;
    HPDComparison comparison_; // as last drawn
    QWidget* fraDose_;
    fraZoom* fraZoom_;
    QCheckBox* chkSave_;
    QPushButton* cmdDeleteRows_;
};

} // namespace kestrane

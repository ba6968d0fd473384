// The frame of the program: menus, tool bar, status bar and the area of explorer windows. Takes commands, applies them
// to the explorer in front and keeps the menus in step with the core's rule. Holds no measurement data.
#pragma once

#include "app/Documents.h"
#include "app/Menus.h"
#include "app/SettingsDialog.h"
#include "desktop/NodeEdits.h"
#include "explorer/Find.h"
#include "model/Session.h"
#include "platform/MonotonicClock.h"

#include <QMainWindow>
#include <QTimer>

#include <functional>
#include <map>
#include <vector>

class QLabel;
class QMdiArea;
class QMenu;

namespace kestrane {

class frmExplorer;
class frmFind;
class frmPrint;

class mdiMain : public QMainWindow, public Frame {
    Q_OBJECT

public:
    explicit mdiMain(Session& session);
    ~mdiMain() override;

    void NewExplorerWindow();

    void SetPanel(Panel panel, const std::string& text) override;
    void ClearPanel(Panel panel, const std::string& text) override;

    void Tell(const std::string& text) override { SetPanel(Panel::Status, text); }

    void EnableMenusAndButtons() override;
    void RebuildExplorerTrees() override;
    void ChooseLog(const std::string& key, bool isToShow) override;
    void LogValuesChanged(const clsLog& log) override;
    void SetBusy(bool isBusy) override;
    bool WaitUntil(EventPump& pump, const std::string& what, const std::function<bool()>& isDone) override;

signals:
    void Closed(); // with everything answered and saved: the program is to end

protected:
    void closeEvent(QCloseEvent* event) override;
    void dragEnterEvent(QDragEnterEvent* event) override;
    void dropEvent(QDropEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override; // swallows what is held back

private:
    void makeActions();
    void makeMenus();
    void makeStatusBar();
    void fillMenu(QMenu& menu, Menu which);
    void showTexts(Menu which); // of its items, as they stand in it
    void showRecentFiles();
    void showSteps(); // which can be undone and done again
    void exchange(Direction direction);
    void showWaiting(); // logs on display whose rows have come
    void readClipboard();
    void wire(frmExplorer& explorer);

    bool isHeldBack(const QObject* object) const;
    bool isAnswering() const;
    void begin(const std::function<void()>& work);
    void give(Command command);
    void run(Command command);

    frmExplorer* activeExplorer() const; // null: none, or it is minimised
    std::vector<frmExplorer*> explorers() const;
    MenuState menuState() const;
    void showPopUp(Menu which, QPoint at);

    void download(clsFile* file);
    void mergeIntoSelected();
    void synchronizeClocks();
    void openFiles();
    void openNamed(const QStringList& paths, OpenSource source);
    void saveSelected(bool bSaveAs);
    void closeSelected();
    void closeAll();
    void deleteDisplayed();
    frmPrint printer();     // of the explorer in front
    AskSaveName saveName(); // asks the user
    std::optional<std::string> askSaveName(const std::string& proposal);
    void askExposureTime();
    void showDatabase();
    bool downloadDatabase(QWidget* parent);
    void showSettings(Command command);
    void applySettings(const SettingsChanges& changes, frmExplorer* opener);
    void copyData(bool valuesOnly);
    void showFind();
    void findNext();
    void saveState();

    Session& session_;
    SteadyClock steadyClock_;
    NodeEdits edits_;
    bool hasClipboardFiles_ = false;
    QMdiArea* area_;
    std::map<Command, QAction*> actions_;
    std::map<Menu, QMenu*> menus_;
    std::vector<QAction*> recent_;
    std::vector<std::pair<QAction*, const MenuItem*>> separators_; // of the popups, and the first item behind each
    std::map<Panel, QLabel*> panels_;
    QToolBar* tbToolBar_;
    std::optional<int> treeWidth_; // pixels, once the user has chosen one
    bool isBusy_ = false;
    bool isAtWork_ = false;   // a command is, with whatever loops it runs
    QTimer waiting_;          // looks again for logs to show
    frmFind* find_ = nullptr; // made on first use
    NodeSearch search_;
    QPoint popUpAt_;
};

} // namespace kestrane

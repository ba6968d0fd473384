// The frame of the program: menus, tool bar, status bar and the area of explorer windows. It takes commands, applies
// them to the explorer in front and updates the menus by the core's rules. It has no measurement data.
#pragma once

#include "app/Assessments.h"
#include "app/Documents.h"
#include "app/Menus.h"
#include "app/Recovery.h"
#include "app/SettingsDialog.h"
#include "desktop/NodeEdits.h"
#include "explorer/Find.h"
#include "model/Session.h"
#include "platform/MonotonicClock.h"

#include <QMainWindow>
#include <QPointer>
#include <QTimer>

#include <functional>
#include <map>
#include <vector>

class QMdiArea;
class QMenu;

namespace kestrane {

class frmAssessment;
class frmExplorer;
class frmFind;
class frmPrint;
class MessageLabel;

class mdiMain : public QMainWindow, public Frame {
    Q_OBJECT

public:
    explicit mdiMain(Session& session);
    ~mdiMain() override;

    void NewExplorerWindow();
    void OpenAssessments(const std::vector<std::string>& names, OpenSource source); // those among files

    // Offers the copies of unsaved documents that programs before this one left.
    void OfferRecovery();

    // Says where the report is when a program before this one ended with a fault.
    void TellOfCrash();

    // Comes to the front and opens files for another start of the program, as soon as no dialog is in the way.
    void OpenForAnother(const std::vector<std::string>& paths);

    void SetPanel(Panel panel, const std::string& text) override;
    void ClearPanel(Panel panel, const std::string& text) override;

    void Tell(const std::string& text) override { SetPanel(Panel::Status, text); }

    void EnableMenusAndButtons() override;
    void RebuildExplorerTrees() override;
    void ChooseLog(const std::string& key, bool isToShow) override;
    void LogValuesChanged(const clsLog& log) override;
    void SetBusy(bool isBusy) override;
    bool WaitUntil(EventPump& pump, const std::string& what, const std::function<bool()>& isDone) override;
    std::size_t Choose(const std::string& question, const std::vector<std::string>& captions) override;

signals:
    void Closed(); // everything has been answered and saved: the program is to end

protected:
    void closeEvent(QCloseEvent* event) override;
    void changeEvent(QEvent* event) override;
    void moveEvent(QMoveEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void dragEnterEvent(QDragEnterEvent* event) override;
    void dropEvent(QDropEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override; // drops events that are held back

private:
    void makeActions();
    void makeMenus();
    void makeStatusBar();
    void showErrorColour(); // on the colours of the window
    void fillMenu(QMenu& menu, Menu which);
    void leaveLettersToMenus(QObject* watched) const;
    void showTexts(Menu which); // the texts of its items with their mnemonics
    void showRecentFiles();
    void showSteps(); // the names of the steps that can be undone and done again
    void exchange(Direction direction);
    void showWaiting(); // shows logs whose rows have come
    void readClipboard();
    void showChild(QWidget& child); // in a window of the area
    void wire(frmExplorer& explorer);

    bool isHeldBack(const QObject* object) const;
    static bool isKeptFromText(const QEvent& event);
    bool isAnswering() const;
    void begin(const std::function<void()>& work);
    void give(Command command);
    void run(Command command);

    frmExplorer* activeExplorer() const; // null when there is none or it is minimised
    std::vector<frmExplorer*> explorers() const;
    frmAssessment* activeAssessment() const; // null: another window is in front, or it is minimised
    std::vector<frmAssessment*> assessments() const;
    std::vector<const AssessmentDocument*> openAssessments() const;
    frmAssessment* showAssessment(AssessmentDocument document);
    void addToAssessment();
    MenuState menuState() const;
    void showPopUp(Menu which, QPoint at);

    void download(clsFile* file);
    void recoverDownload(); // from a transcript
    void mergeIntoSelected();
    void synchronizeClocks();
    void openFiles();
    void openNamed(const QStringList& paths, OpenSource source);
    void saveSelected(bool bSaveAs);
    void closeSelected();
    void closeAll();
    void deleteDisplayed();
    void exportTable();
    frmPrint printer(); // for the explorer in front
    void printReport(); // of the window in front
    void showPreview();
    AskSaveName saveName(); // a function that asks the user
    std::optional<std::string> askSaveName(const std::string& proposal, Text::Id filter, const char* suffix);
    void askExposureTime();
    void showHistory();
    void showDatabase();
    bool downloadDatabase(QWidget* parent);
    void followProtectors(); // which have changed
    void showSettings(Command command);
    void applySettings(const SettingsChanges& changes, frmExplorer* opener);
    void openHelp(std::string_view topic);
    void addStandardKeys(); // those of the desktop, to our own
    void showKeys();        // the list of them
    void copyData(bool valuesOnly);
    void showFind();
    void findNext();
    void commitCells();
    void saveState();
    void savePlace(); // of the window
    void followColours();
    void lookForOtherPrograms(); // that have changed a file that is open
    void openHandedOver();
    void noteOpen() const; // for a report of a fault
    void watchUnsaved();   // copies unsaved work from time to time

    Session& session_;
    SteadyClock steadyClock_;
    NodeEdits edits_;
    bool hasClipboardFiles_ = false;
    QMdiArea* area_;
    std::map<Command, QAction*> actions_;
    std::map<Menu, QMenu*> menus_;
    std::vector<QAction*> recent_;
    std::vector<std::pair<QAction*, const MenuItem*>> separators_; // of the popups, and the first item behind each
    std::map<Panel, MessageLabel*> panels_;
    QToolBar* tbToolBar_;
    std::optional<int> treeWidth_; // pixels; nothing until the user has chosen a width
    int busy_ = 0;                 // so many have said that they are at long work
    bool isShowingChecks_ = false; // code is setting the marks of commands, which gives none
    bool isAtWork_ = false;        // while a command is working, including the event loops that it runs
    QTimer waiting_;               // looks again for logs to show
    frmFind* find_ = nullptr;      // created when it is first used
    NodeSearch search_;
    QPoint popUpAt_;
    QPointer<frmAssessment> assessment_; // the one that was in front last
    QTimer placing_;                     // until the place of the window is chosen
    QTimer looking_;                     // for unsaved work
    Recovery recovery_;
    QStringList handedOver_; // paths that other starts have given
    QTimer opening_;         // until they can be opened
};

} // namespace kestrane

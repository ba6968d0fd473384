// What the commands of the frame do.
#include "app/Documents.h"
#include "app/Download.h"
#include "app/DownloadHPD.h"
#include "app/Help.h"
#include "app/StartUp.h"
#include "desktop/frmExplorer.h"
#include "desktop/frmPrint.h"
#include "desktop/mdiMain.h"
#include "desktop/pages/ComparisonPage.h"
#include "desktop/pages/ExposurePage.h"
#include "desktop/tabLog.h"
#include "dialogs/DownloadDialogs.h"
#include "dialogs/HPDProgressDialog.h"
#include "dialogs/Words.h"
#include "dialogs/frmAbout.h"
#include "dialogs/frmExpTime.h"
#include "dialogs/frmFind.h"
#include "dialogs/frmHPD.h"
#include "dialogs/frmOptions.h"
#include "explorer/NodeKeys.h"
#include "model/LogTime.h"
#include "platform/RuntimeError.h"
#include "platform/qt/DesktopPrograms.h"
#include "platform/qt/QtClipboard.h"

#include <QDesktopServices>
#include <QDir>
#include <QFileDialog>
#include <QMdiArea>
#include <QMdiSubWindow>
#include <QScopedValueRollback>
#include <QStatusBar>
#include <QToolBar>
#include <QUrl>

namespace kestrane {

namespace {

// 0 when it is not known.
float measuredHours(const clsLog& log) {
    try {
        return getTime(log, 'h', Run::Measured, ExcludedRows::Count);
    } catch (const RuntimeError&) {
        return 0;
    }
}

Desktop desktop() {
    return {[](const std::string& mimeType) { return hasProgramFor(shown(mimeType)); },
            [](const std::string& address) {
                const bool isFile = address.starts_with('/');
                return QDesktopServices::openUrl(isFile ? QUrl::fromLocalFile(shown(address)) : QUrl(shown(address)));
            }};
}

} // namespace

// The one gate of all that a user asks for: one thing at a time, and none behind a dialog.
void mdiMain::begin(const std::function<void()>& work) {
    if (isAtWork_ || isAnswering()) return;
    const QScopedValueRollback atWork(isAtWork_, true);
    work();
}

// Asks the rule again: what a menu shows may be of a moment ago.
void mdiMain::give(Command command) {
    begin([&] {
        if (IsMenuEnabled(session_, command, menuState())) run(command);
    });
    EnableMenusAndButtons();
}

void mdiMain::run(Command command) {
    frmExplorer* const explorer = activeExplorer();
    switch (command) {
    case Command::FileDownload:
        return download(nullptr);
    case Command::FileOpen:
        return openFiles();
    case Command::FileMerge:
        return mergeIntoSelected();
    case Command::FileClose:
        return closeSelected();
    case Command::FileCloseAll:
        CloseFile(session_, nullptr, [this](const std::string& proposal) { return askSaveName(proposal); });
        return;
    case Command::FileSave:
        return saveSelected(false);
    case Command::FileSaveAs:
        return saveSelected(true);
    case Command::FilePrint:
    case Command::PrintDefault:
        return frmPrint(session_, *explorer, this).PrintReport(ReportForm::Default);
    case Command::PrintCumulative:
        return frmPrint(session_, *explorer, this).PrintReport(ReportForm::Cumulative);
    case Command::PrintIntervals:
        return frmPrint(session_, *explorer, this).PrintReport(ReportForm::CumulativeAndIntervals);
    case Command::PrintCurrentView:
        return frmPrint(session_, *explorer, this).PrintGraph();
    case Command::FilePrintPreview:
        return frmPrint(session_, *explorer, this).ShowPreview();
    case Command::FileExit:
        close();
        return;
    case Command::EditUndo:
        return exchange(Direction::Undo);
    case Command::EditRedo:
        return exchange(Direction::Redo);
    case Command::EditCut:
        return edits_.Copy(*explorer, true);
    case Command::EditCopy:
        return menuState().IsTreeActive ? edits_.Copy(*explorer, false) : copyData(false);
    case Command::EditPaste:
        return edits_.Paste(*explorer);
    case Command::EditDelete:
        return edits_.Delete(*explorer);
    case Command::LogDelete:
        explorer->SelectNode(explorer->State().View.Key);
        return edits_.Delete(*explorer);
    case Command::EditCopyValues:
        return copyData(true);
    case Command::EditFind:
        return showFind();
    case Command::EditFindNext:
        return findNext();
    case Command::ViewZoom:
        return explorer->LogTabs().ToggleZoom();
    case Command::ViewIntervals:
        return explorer->LogTabs().CutIntervals();
    case Command::ViewToolbar:
        return tbToolBar_->setVisible(actions_.at(command)->isChecked());
    case Command::ViewStatusBar:
        return statusBar()->setVisible(actions_.at(command)->isChecked());
    case Command::ViewExposureTime:
        return askExposureTime();
    case Command::ToolsSettings:
    case Command::TreeDisplayOptions:
    case Command::LogDisplayOptions:
        return showSettings(command);
    case Command::ToolsSynchronizeClocks:
        return synchronizeClocks();
    case Command::WindowNew:
        return NewExplorerWindow();
    case Command::WindowReset:
        return explorer->ResetControls();
    case Command::WindowTileHorizontally:
        return tile(Qt::Vertical);
    case Command::WindowTileVertically:
        return tile(Qt::Horizontal);
    case Command::WindowCascade:
        return area_->cascadeSubWindows();
    case Command::WindowArrangeIcons:
        return arrangeIcons();
    case Command::HelpHelp:
        return OpenHelpFile(session_, desktop(), dataFolder() + "help.html");
    case Command::HelpTerms:
        return OpenHelpFile(session_, desktop(), dataFolder() + "AcousticTerms.html");
    case Command::HelpHomePage:
        return OpenPage(session_, desktop(), session_.Options.HomePage);
    case Command::HelpManual:
        return GetManual(session_, desktop(), dataFolder() + "manuals/" + session_.brand.ManualFile);
    case Command::HelpAbout:
        frmAbout(session_, this).exec();
        return;
    case Command::ViewHPD:
        return showDatabase();
    case Command::ToolsDownloadHPD:
        downloadDatabase(this);
        return;
    case Command::LogCompareHPD:
        return explorer->LogTabs().Comparison().ChooseProtector();
    case Command::LogConvertWeighting:
        return explorer->LogTabs().ConvertWeighting();
    case Command::LogDeleteRows:
        return explorer->LogTabs().Exposures().DeleteRows();
    case Command::LogInsertRows:
        return explorer->LogTabs().Exposures().InsertRows();
    case Command::ForceRecalc:
        return explorer->LogTabs().FullRecalculation();
    case Command::Rename:
        return explorer->EditSelectedNode();
    case Command::LogNote:
        return explorer->LogTabs().ToggleNote();
    case Command::LogLegend:
        return explorer->LogTabs().ToggleLegend();
    case Command::LogEditNote:
        return explorer->LogTabs().EditNote();
    case Command::LogSavePicture:
        return explorer->LogTabs().SavePicture();
    }
}

void mdiMain::download(clsFile* file) {
    DownloadDialogs dialogs(session_, steadyClock_, this);
    if (!DownloadData({session_, *session_.comm, dialogs, steadyClock_, dialogs.Transcript()}, file))
        dialogs.OfferTranscript();
}

void mdiMain::mergeIntoSelected() {
    if (clsFile* const file = resolve(session_, menuState().SelectedKey).file; file != nullptr) download(file);
}

void mdiMain::synchronizeClocks() {
    DownloadDialogs dialogs(session_, steadyClock_, this);
    clsInsData instrument(session_);
    if (!SynchronizeClock({session_, *session_.comm, dialogs, steadyClock_, dialogs.Transcript()}, instrument))
        dialogs.OfferTranscript();
}

void mdiMain::openFiles() {
    const QStringList names = QFileDialog::getOpenFileNames(this, loadText(session_, Text::OpenDataFile),
                                                            shown(session_.Options.DefaultDataDirectory),
                                                            fileFilter(session_.LoadText(Text::OpenFilter)));
    if (!names.isEmpty()) openNamed(names, OpenSource::Dialog);
}

void mdiMain::openNamed(const QStringList& paths, OpenSource source) {
    if (explorers().empty()) NewExplorerWindow(); // what is opened is to be seen
    std::vector<std::string> names;
    for (const QString& path : paths)
        names.push_back(path.toStdString());
    OpenFiles(session_, names, source);
}

void mdiMain::saveSelected(bool bSaveAs) {
    clsFile* const file = resolve(session_, menuState().SelectedKey).file;
    if (file == nullptr) return;
    SaveFile(session_, *file, bSaveAs, [this](const std::string& proposal) { return askSaveName(proposal); });
}

void mdiMain::closeSelected() {
    clsFile* const file = resolve(session_, menuState().SelectedKey).file;
    if (file == nullptr) return;
    CloseFile(session_, file, [this](const std::string& proposal) { return askSaveName(proposal); });
}

std::optional<std::string> mdiMain::askSaveName(const std::string& proposal) {
    const QString name = QFileInfo(shown(proposal)).isAbsolute()
                             ? shown(proposal)
                             : QDir(shown(session_.Options.DefaultDataDirectory)).filePath(shown(proposal));
    QFileDialog dialog(this, loadPlainText(session_, Text::CommandSave), name,
                       fileFilter(session_.LoadText(Text::SaveFilter)));
    dialog.setAcceptMode(QFileDialog::AcceptSave);
    dialog.setDefaultSuffix("xml");
    dialog.selectFile(name);
    if (dialog.exec() != QDialog::Accepted || dialog.selectedFiles().isEmpty()) return std::nullopt;
    return dialog.selectedFiles().front().toStdString();
}

void mdiMain::askExposureTime() {
    if (clsLog* log = resolve(session_, menuState().SelectedKey).log; log != nullptr)
        frmExpTime::getExpTime(session_, log->objLogOptions.ExposureTime, measuredHours(*log), *log, this);
}

void mdiMain::showDatabase() {
    frmHPD::ShowMaintenanceScreen(
        session_, [this](QWidget* parent) { return downloadDatabase(parent); }, this);
    for (frmExplorer* explorer : explorers())
        explorer->LogTabs().ShowControls();
}

bool mdiMain::downloadDatabase(QWidget* parent) {
    HPDProgressDialog progress(session_, parent);
    const bool isReplaced = DownloadHPD(session_, progress, false);
    for (frmExplorer* explorer : explorers())
        explorer->LogTabs().ShowControls();
    return isReplaced;
}

void mdiMain::showSettings(Command command) {
    frmExplorer* const explorer = activeExplorer();
    std::optional<SettingsChanges> changes;
    if (command == Command::ToolsSettings) {
        changes = frmOptions::ShowFromToolsMenu(session_, this);
    } else if (command == Command::TreeDisplayOptions) {
        changes = frmOptions::ShowFromTreeViewRightClick(session_, session_.Options, popUpAt_, this);
    } else if (clsLog* log = explorer->State().OpenedLog(session_); log != nullptr) {
        const bool isOfRows = tabRow(explorer->State().View.Tab).Figures == TabFigures::OfRows;
        changes = frmOptions::ShowFromLogTabCtrlRightClick(session_, *log, isOfRows ? kInterval : kCumulative, popUpAt_,
                                                           this);
    }
    if (changes) applySettings(*changes, explorer);
}

void mdiMain::applySettings(const SettingsChanges& changes, frmExplorer* opener) {
    if (changes.RebuildTrees) RebuildExplorerTrees();
    for (frmExplorer* explorer : explorers())
        explorer->LogTabs().FollowSettings(changes.ResetTabs || (changes.RedrawTab && explorer == opener));
    EnableMenusAndButtons();
}

void mdiMain::copyData(bool valuesOnly) {
    SetBusy(true); // a table may be long
    QtClipboard().Set(activeExplorer()->LogTabs().CopyData(valuesOnly));
    SetBusy(false);
}

void mdiMain::showFind() {
    if (find_ == nullptr)
        find_ = new frmFind(
            session_, [this] { give(Command::EditFindNext); }, this);
    find_->ShowFind(QRect(activeExplorer()->mapToGlobal(QPoint()), activeExplorer()->size()));
}

void mdiMain::findNext() {
    if (find_ == nullptr || find_->Entry().What.empty()) return showFind();
    frmExplorer* const explorer = activeExplorer();
    if (const auto key = search_.Find(buildTree(session_), find_->Entry())) return explorer->SelectNode(*key);
    session_.ShowMessage(session_.LoadText(Text::CannotFind), kIconInformation);
}

// One above the other, or side by side, each as large as the area allows.
void mdiMain::tile(Qt::Orientation orientation) {
    QList<QMdiSubWindow*> windows = area_->subWindowList();
    windows.removeIf([](const QMdiSubWindow* window) { return window->isMinimized(); });
    const bool isAbove = orientation == Qt::Vertical;
    const QRect room = area_->viewport()->rect();
    const int count = static_cast<int>(windows.size());
    for (int i = 0; i < count; ++i) {
        windows[i]->showNormal();
        const int from = (isAbove ? room.height() : room.width()) * i / count;
        const int to = (isAbove ? room.height() : room.width()) * (i + 1) / count;
        windows[i]->setGeometry(isAbove ? QRect(0, from, room.width(), to - from)
                                        : QRect(from, 0, to - from, room.height()));
    }
}

// Minimised windows stand in a row along the foot of the area.
void mdiMain::arrangeIcons() {
    const QRect room = area_->viewport()->rect();
    int left = 0;
    for (QMdiSubWindow* window : area_->subWindowList()) {
        if (!window->isMinimized()) continue;
        window->move(left, room.height() - window->height());
        left += window->width();
    }
}

} // namespace kestrane

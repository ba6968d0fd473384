#include "desktop/mdiMain.h"

#include "app/Documents.h"
#include "app/Download.h"
#include "app/DownloadHPD.h"
#include "app/Placement.h"
#include "app/StartUp.h"
#include "desktop/frmExplorer.h"
#include "desktop/frmPrint.h"
#include "desktop/tabLog.h"
#include "desktop/tvwTreeView.h"
#include "dialogs/DownloadDialogs.h"
#include "dialogs/HPDProgressDialog.h"
#include "dialogs/Icons.h"
#include "dialogs/Words.h"
#include "dialogs/frmAbout.h"
#include "dialogs/frmExpTime.h"
#include "dialogs/frmFind.h"
#include "dialogs/frmHPD.h"
#include "dialogs/frmOptions.h"
#include "explorer/NodeKeys.h"
#include "model/LogTime.h"
#include "model/SettingsText.h"
#include "platform/Files.h"
#include "platform/RuntimeError.h"
#include "platform/qt/QtClipboard.h"

#include <QApplication>
#include <QClipboard>
#include <QCloseEvent>
#include <QDesktopServices>
#include <QDir>
#include <QFileDialog>
#include <QLabel>
#include <QMdiArea>
#include <QMdiSubWindow>
#include <QMenuBar>
#include <QMimeData>
#include <QScreen>
#include <QStatusBar>
#include <QToolBar>
#include <QToolButton>
#include <QUrl>

#include <algorithm>

namespace kestrane {

namespace {

constexpr QSize kFirstSize(1180, 760);
constexpr int kToolIcon = 22;
constexpr int kNextLook = 50; // milliseconds

struct MenuTitle {
    Menu menu;
    int text;
};

constexpr MenuTitle kTitles[] = {{Menu::File, 1001},  {Menu::Edit, 1002},   {Menu::View, 1003},
                                 {Menu::Tools, 1004}, {Menu::Window, 1005}, {Menu::Help, 1006}};

constexpr std::pair<Command, Direction> kSteps[] = {{Command::EditUndo, Direction::Undo},
                                                    {Command::EditRedo, Direction::Redo}};

struct PanelOf {
    Frame::Panel panel;
    const char* name;
    int stretch;
};

constexpr PanelOf kPanels[] = {
    {Frame::Panel::Status, "Status", 3}, {Frame::Panel::Process, "Process", 1}, {Frame::Panel::Error, "Error", 2}};

Placement placementOf(const QRect& rect) {
    return {rect.left(), rect.top(), rect.width(), rect.height()};
}

QRect rectOf(const Placement& placement) {
    return {placement.Left, placement.Top, placement.Width, placement.Height};
}

// 0 when it is not known.
float measuredHours(const clsLog& log) {
    try {
        return getTime(log, 'h', false, false);
    } catch (const RuntimeError&) {
        return 0;
    }
}

bool isUserInput(QEvent::Type type) {
    constexpr QEvent::Type kInput[] = {QEvent::MouseButtonPress,
                                       QEvent::MouseButtonRelease,
                                       QEvent::MouseButtonDblClick,
                                       QEvent::KeyPress,
                                       QEvent::KeyRelease,
                                       QEvent::Wheel,
                                       QEvent::ContextMenu,
                                       QEvent::Shortcut,
                                       QEvent::ShortcutOverride,
                                       QEvent::DragEnter,
                                       QEvent::Drop,
                                       QEvent::Close};
    return std::find(std::begin(kInput), std::end(kInput), type) != std::end(kInput);
}

// Leaves Ctrl+W to the files: an explorer window closes with Ctrl+F4.
void keepCloseKey(const QMdiSubWindow& window) {
    for (QAction* action : window.systemMenu()->actions())
        if (action->shortcuts().contains(QKeySequence("Ctrl+W"))) action->setShortcut(QKeySequence("Ctrl+F4"));
}

} // namespace

mdiMain::mdiMain(Session& session) :
    session_(session), edits_(session, [this](const QStringList& paths) { openDropped(paths); }) {
    setObjectName("mdiMain");
    setWindowTitle(shown(std::string(kApplicationTitle)));
    setWindowIcon(iconOf("application"));
    setAcceptDrops(true);
    area_ = new QMdiArea;
    area_->setActivationOrder(QMdiArea::ActivationHistoryOrder);
    setCentralWidget(area_);
    makeActions();
    makeMenus();
    makeStatusBar();
    waiting_.setSingleShot(true);
    waiting_.setInterval(kNextLook);
    connect(&waiting_, &QTimer::timeout, this, &mdiMain::showWaiting);
    connect(area_, &QMdiArea::subWindowActivated, this, [this] { EnableMenusAndButtons(); });
    connect(QApplication::clipboard(), &QClipboard::dataChanged, this, &mdiMain::readClipboard);

    resize(kFirstSize);
    if (const auto placement = readPlacement(session.settings)) {
        std::vector<Placement> screens;
        for (const QScreen* screen : QGuiApplication::screens())
            screens.push_back(placementOf(screen->availableGeometry()));
        setGeometry(rectOf(broughtOnScreen(*placement, screens)));
    }
    session_.frame = this;
    readClipboard();
}

mdiMain::~mdiMain() {
    area_->disconnect(this); // its windows go when the members are gone
    session_.ForgetFrame();
}

void mdiMain::makeActions() {
    for (const MenuItem& item : menuItems()) {
        if (actions_.contains(item.command)) continue;
        auto* const action = new QAction(iconOf(item.icon), loadText(session_, item.text), this);
        action->setShortcut(QKeySequence(QLatin1String(item.keys)));
        if (item.toolTip != 0) {
            action->setToolTip(loadText(session_, item.toolTip));
            action->setStatusTip(loadText(session_, item.toolTip));
        }
        connect(action, &QAction::triggered, this, [this, command = item.command] { run(command); });
        addAction(action);
        actions_[item.command] = action;
    }
    for (const Command command : {Command::ViewToolbar, Command::ViewStatusBar, Command::LogNote, Command::LogLegend}) {
        actions_.at(command)->setCheckable(true);
        actions_.at(command)->setChecked(true);
    }
    actions_.at(Command::ViewZoom)->setCheckable(true);
    actions_.at(Command::EditDelete)->setShortcutContext(Qt::WidgetShortcut); // the key is the tree's
}

void mdiMain::makeMenus() {
    for (const MenuTitle& title : kTitles) {
        QMenu* const menu = menuBar()->addMenu(loadText(session_, title.text));
        fillMenu(*menu, title.menu);
        connect(menu, &QMenu::aboutToShow, this, [this] { EnableMenusAndButtons(); });
        menus_[title.menu] = menu;
    }
    for (const Menu popUp : {Menu::TreePopup, Menu::LogPopup}) {
        menus_[popUp] = new QMenu(this);
        fillMenu(*menus_[popUp], popUp);
    }

    tbToolBar_ = addToolBar(loadPlainText(session_, 1091));
    tbToolBar_->setObjectName("tbToolBar");
    tbToolBar_->setMovable(false);
    tbToolBar_->setIconSize({kToolIcon, kToolIcon});
    tbToolBar_->setContextMenuPolicy(Qt::PreventContextMenu);
    std::map<int, QAction*> buttons;
    for (const MenuItem& item : menuItems())
        if (item.toolBar != 0) buttons[item.toolBar] = actions_.at(item.command);
    int before = 0;
    for (const auto& [place, action] : buttons) {
        if (before != 0 && place > before + 1) tbToolBar_->addSeparator();
        tbToolBar_->addAction(action);
        auto* const button = qobject_cast<QToolButton*>(tbToolBar_->widgetForAction(action));
        if (button != nullptr && action->menu() != nullptr) button->setPopupMode(QToolButton::MenuButtonPopup);
        before = place;
    }
}

void mdiMain::fillMenu(QMenu& menu, Menu which) {
    int before = -1;
    const auto separate = [&](int index) {
        if (before >= 0 && index > before + 1) menu.addSeparator();
        before = index;
    };
    for (const MenuItem& item : menuItems()) {
        if (item.menu != which) continue;
        if (which == Menu::File && recent_.empty() && item.index > kRecentFilesIndex) {
            separate(kRecentFilesIndex);
            for (std::size_t i = 0; i < kRecentFiles; ++i) {
                recent_.push_back(menu.addAction(QString()));
                connect(recent_.back(), &QAction::triggered, this, [this, i] {
                    const std::string name = session_.RecentFiles.at(i);
                    OpenFile(session_, name, OpenSource::Recent, true);
                });
            }
            before += static_cast<int>(kRecentFiles) - 1;
        }
        separate(item.index);
        QAction* const action = actions_.at(item.command);
        if (item.subMenu && action->menu() == nullptr) {
            auto* const opened = new QMenu(this);
            fillMenu(*opened, *item.subMenu);
            action->setMenu(opened);
        }
        menu.addAction(action);
    }
}

void mdiMain::makeStatusBar() {
    for (const PanelOf& panel : kPanels) {
        auto* const label = new QLabel;
        nameControl(*label, panel.name, QLatin1String(panel.name));
        label->setTextFormat(Qt::PlainText);
        label->setMinimumWidth(1);
        statusBar()->addWidget(label, panel.stretch);
        panels_[panel.panel] = label;
    }
    QPalette palette = panels_[Panel::Error]->palette();
    palette.setColor(QPalette::WindowText, QColor(0xc0, 0x2a, 0x2a));
    panels_[Panel::Error]->setPalette(palette);
}

void mdiMain::NewExplorerWindow() {
    auto* const explorer = new frmExplorer(session_);
    wire(*explorer);
    QMdiSubWindow* const window = area_->addSubWindow(explorer);
    window->setAttribute(Qt::WA_DeleteOnClose);
    window->setWindowIcon(explorer->windowIcon());
    keepCloseKey(*window);
    window->resize(area_->size() * 3 / 4);
    if (area_->subWindowList().size() == 1) {
        window->showMaximized();
    } else {
        window->show();
    }
}

void mdiMain::wire(frmExplorer& explorer) {
    connect(&explorer, &frmExplorer::StateChanged, this, [this] { EnableMenusAndButtons(); });
    connect(&explorer.LogTabs(), &tabLog::DatabaseDownloadAsked, this,
            [this](QWidget* parent, bool* isDone) { *isDone = downloadDatabase(parent); });
    connect(&explorer, &frmExplorer::TreesChanged, this, [this] { RebuildExplorerTrees(); });
    connect(&explorer, &frmExplorer::DeleteAsked, this, [this, &explorer] { edits_.Delete(explorer); });
    connect(&explorer, &frmExplorer::NodeDropped, this,
            [this, &explorer](const std::string& source, const std::string& target, bool move) {
                edits_.Drop(explorer, source, target, move);
            });
    connect(&explorer, &frmExplorer::FilesDropped, this, &mdiMain::openDropped, Qt::QueuedConnection);
    connect(&explorer, &frmExplorer::TreeViewPopUpMenu, this, [this](QPoint at) { showPopUp(Menu::TreePopup, at); });
    connect(&explorer, &frmExplorer::TabControlPopUpMenu, this, [this](QPoint at) { showPopUp(Menu::LogPopup, at); });
}

std::vector<frmExplorer*> mdiMain::explorers() const {
    std::vector<frmExplorer*> all;
    for (const QMdiSubWindow* window : area_->subWindowList())
        if (auto* explorer = qobject_cast<frmExplorer*>(window->widget()); explorer != nullptr) all.push_back(explorer);
    return all;
}

frmExplorer* mdiMain::activeExplorer() const {
    const QMdiSubWindow* window = area_->currentSubWindow();
    return window == nullptr || window->isMinimized() ? nullptr : qobject_cast<frmExplorer*>(window->widget());
}

MenuState mdiMain::menuState() const {
    const frmExplorer* explorer = activeExplorer();
    MenuState state = explorer == nullptr ? MenuState{} : explorer->StateForMenus();
    state.CopiedKey = edits_.Copied().Key;
    state.HasClipboardFiles = hasClipboardFiles_;
    return state;
}

void mdiMain::EnableMenusAndButtons() {
    const MenuState state = menuState();
    for (const auto& [command, action] : actions_)
        action->setEnabled(IsMenuEnabled(session_, command, state));
    if (frmExplorer* explorer = activeExplorer(); explorer != nullptr) {
        actions_.at(Command::LogNote)->setChecked(explorer->State().View.ShowsNote);
        actions_.at(Command::LogLegend)->setChecked(explorer->State().View.ShowsLegend);
        actions_.at(Command::ViewZoom)->setChecked(explorer->LogTabs().IsZoomShown());
    }
    showRecentFiles();
    showSteps();
}

void mdiMain::showSteps() {
    const std::string key = menuState().SelectedKey;
    for (const auto& [command, direction] : kSteps) {
        const clsFile* const file = documentToEdit(session_, key, direction);
        actions_.at(command)->setText(shown(exchangeText(session_, file, direction)));
    }
}

void mdiMain::exchange(Direction direction) {
    std::map<frmExplorer*, std::string> before;
    for (frmExplorer* explorer : explorers())
        before[explorer] = explorer->State().BasisOfFigures(session_);
    edits_.Exchange(menuState().SelectedKey, direction);
    for (const auto& [explorer, basis] : before) {
        if (explorer->State().BasisOfFigures(session_) != basis) explorer->EndZoom();
    }
}

void mdiMain::readClipboard() {
    hasClipboardFiles_ = !QtClipboard().GetClipboardFiles().empty();
    EnableMenusAndButtons();
}

void mdiMain::showRecentFiles() {
    constexpr int kFirstText = 1039;
    for (std::size_t i = 0; i < recent_.size(); ++i) {
        const bool isThere = i < session_.RecentFiles.size();
        recent_[i]->setVisible(isThere);
        if (!isThere) continue;
        const std::string& name = session_.RecentFiles[i];
        const std::string text = session_.LoadText(kFirstText + static_cast<int>(i));
        recent_[i]->setText(shown(ReplaceText(text, "^", clsFile(session_, name).ShortenedFileName())));
        recent_[i]->setStatusTip(shown(name));
    }
}

void mdiMain::SetPanel(Panel panel, const std::string& text) {
    panels_.at(panel)->setText(shown(text));
}

void mdiMain::RebuildExplorerTrees() {
    for (frmExplorer* explorer : explorers())
        explorer->RebuildTree();
    edits_.TreesRebuilt();
}

void mdiMain::LogValuesChanged(const clsLog& log) {
    for (frmExplorer* explorer : explorers())
        explorer->LogValuesChanged(log);
    showWaiting();
}

// A view stays as it is while a command is under way that works on it.
void mdiMain::showWaiting() {
    if (isBusy_ || QApplication::activeModalWidget() != nullptr) return waiting_.start();
    for (frmExplorer* explorer : explorers())
        explorer->ShowWaiting();
}

void mdiMain::SetBusy(bool isBusy) {
    if (isBusy == isBusy_) return;
    isBusy_ = isBusy;
    if (isBusy) {
        QApplication::setOverrideCursor(Qt::WaitCursor);
        qApp->installEventFilter(this);
    } else {
        qApp->removeEventFilter(this);
        QApplication::restoreOverrideCursor();
    }
}

bool mdiMain::eventFilter(QObject* watched, QEvent* event) {
    if (!isUserInput(event->type())) return QMainWindow::eventFilter(watched, event);
    event->ignore();
    return true;
}

void mdiMain::showPopUp(Menu which, QPoint at) {
    EnableMenusAndButtons();
    popUpAt_ = at;
    menus_.at(which)->popup(at);
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
        return openBeside("help.html");
    case Command::HelpTerms:
        return openBeside("AcousticTerms.html");
    case Command::HelpHomePage:
        return openHomePage();
    case Command::HelpManual:
        return openBeside("manuals/" + session_.brand.ManualFile);
    case Command::HelpAbout:
        frmAbout(session_, this).exec();
        return;
    case Command::ViewHPD:
        return showDatabase();
    case Command::ToolsDownloadHPD:
        downloadDatabase(this);
        return;
    case Command::LogCompareHPD:
        return explorer->LogTabs().ChooseProtector();
    case Command::LogConvertWeighting:
        return explorer->LogTabs().ConvertWeighting();
    case Command::LogDeleteRows:
        return explorer->LogTabs().DeleteRows();
    case Command::LogInsertRows:
        return explorer->LogTabs().InsertRows();
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
    if (explorers().empty()) NewExplorerWindow(); // what is opened is to be seen
    const QStringList names =
        QFileDialog::getOpenFileNames(this, loadText(session_, 6528), shown(session_.Options.DefaultDataDirectory),
                                      fileFilter(session_.LoadText(6541)));
    for (const QString& name : names)
        OpenFile(session_, name.toStdString(), OpenSource::Dialog, &name == &names.back());
}

void mdiMain::openDropped(const QStringList& paths) {
    if (explorers().empty()) NewExplorerWindow(); // what is opened is to be seen
    for (const QString& path : paths)
        OpenFile(session_, path.toStdString(), OpenSource::Named, &path == &paths.back());
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
    QFileDialog dialog(this, loadPlainText(session_, 1036), name, fileFilter(session_.LoadText(6540)));
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
        const bool isOfRows = explorer->State().View.Tab <= eTabIntervalsGraph;
        changes = frmOptions::ShowFromLogTabCtrlRightClick(session_, *log, isOfRows ? kInterval : kCumulative, popUpAt_,
                                                           this);
    }
    if (changes) applySettings(*changes, explorer);
}

void mdiMain::applySettings(const SettingsChanges& changes, frmExplorer* opener) {
    if (changes.RebuildTrees) RebuildExplorerTrees();
    for (frmExplorer* explorer : explorers())
        if (changes.ResetTabs || (changes.RedrawTab && explorer == opener)) explorer->LogTabs().Redraw();
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
            session_, [this] { findNext(); }, this);
    find_->ShowFind(QRect(activeExplorer()->mapToGlobal(QPoint()), activeExplorer()->size()));
}

void mdiMain::findNext() {
    if (find_ == nullptr || find_->Entry().What.empty()) return showFind();
    frmExplorer* const explorer = activeExplorer();
    if (explorer == nullptr) return;
    if (const auto key = search_.Find(buildTree(session_), find_->Entry())) return explorer->SelectNode(*key);
    session_.ShowMessage(session_.LoadText(4712), kIconInformation);
}

void mdiMain::openBeside(const std::string& name) {
    const std::string path = dataFolder() + name;
    if (fileExists(path) && QDesktopServices::openUrl(QUrl::fromLocalFile(shown(path)))) return;
    session_.ShowMessage(session_.LoadText(6536), kIconExclamation);
}

void mdiMain::openHomePage() {
    const std::string address = session_.Options.HomePage;
    if (QDesktopServices::openUrl(QUrl(shown(address)))) return;
    session_.ShowMessage(ReplaceText(session_.LoadText(8401), "^", address), kIconExclamation);
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

void mdiMain::dragEnterEvent(QDragEnterEvent* event) {
    if (!filesOf(event->mimeData()).isEmpty()) event->acceptProposedAction();
}

void mdiMain::dropEvent(QDropEvent* event) {
    event->setDropAction(Qt::CopyAction);
    event->accept();
    // Deferred, so that a box shown while opening does not hold up whoever dropped the files.
    QMetaObject::invokeMethod(
        this, [this, paths = filesOf(event->mimeData())] { openDropped(paths); }, Qt::QueuedConnection);
}

void mdiMain::closeEvent(QCloseEvent* event) {
    if (!CloseFiles(session_, nullptr, [this](const std::string& proposal) { return askSaveName(proposal); })) {
        event->ignore();
        return;
    }
    saveState();
    event->accept();
    qApp->quit();
}

// The tool bar is written under another key than the one that would be read: it always starts visible.
void mdiMain::saveState() {
    try {
        if (!isMinimized())
            savePlacement(session_.settings, placementOf(isMaximized() ? normalGeometry() : geometry()));
        if (const frmExplorer* explorer = activeExplorer(); explorer != nullptr)
            saveTreeWidth(session_.settings, explorer->TreeWidth());
        session_.settings.write("Settings", "Preferences", settingsText(tbToolBar_->isVisible()));
        saveRecentFiles(session_);
    } catch (const RuntimeError& error) {
        session_.ShowMessage(std::to_string(error.Number) + ": " + error.what(), kIconExclamation);
    }
}

} // namespace kestrane

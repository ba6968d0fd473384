#include "desktop/mdiMain.h"

#include "app/Documents.h"
#include "app/Placement.h"
#include "app/StartUp.h"
#include "desktop/HelpTopic.h"
#include "desktop/MessageLabel.h"
#include "desktop/StartPage.h"
#include "desktop/WindowList.h"
#include "desktop/assessment/frmAssessment.h"
#include "desktop/frmExplorer.h"
#include "desktop/grdDose.h"
#include "desktop/pages/ComparisonPage.h"
#include "desktop/pages/TimePage.h"
#include "desktop/tabLog.h"
#include "desktop/tvwTreeView.h"
#include "dialogs/Icons.h"
#include "dialogs/SignalColours.h"
#include "dialogs/Words.h"
#include "dialogs/frmFind.h"
#include "model/SettingsText.h"
#include "platform/CrashReport.h"
#include "platform/desktop/QtClipboard.h"

#include <QApplication>
#include <QClipboard>
#include <QCloseEvent>
#include <QKeyEvent>
#include <QMdiArea>
#include <QMdiSubWindow>
#include <QMenuBar>
#include <QMimeData>
#include <QProgressDialog>
#include <QScopedValueRollback>
#include <QScreen>
#include <QStatusBar>
#include <QToolBar>
#include <QToolButton>

#include <algorithm>

namespace kestrane {

namespace {

constexpr QSize kFirstSize(1180, 760);
constexpr int kToolIcon = 22;
constexpr int kNextLook = 50;     // milliseconds until the next look
constexpr int kPlaceChosen = 500; // milliseconds without a move

struct MenuTitle {
    Menu menu;
    Text::Id text;
};

constexpr MenuTitle kTitles[] = {{Menu::File, Text::MenuFile},     {Menu::Edit, Text::MenuEdit},
                                 {Menu::View, Text::MenuView},     {Menu::Tools, Text::MenuTools},
                                 {Menu::Window, Text::MenuWindow}, {Menu::Help, Text::MenuHelp}};

constexpr Command kCheckable[] = {Command::ViewToolbar, Command::ViewStatusBar, Command::LogNote,
                                  Command::LogLegend,   Command::ViewZoom,      Command::RangeMeasure};

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

constexpr const char* kWaiting = "frmWaiting";

// Whether the dialog is open that can end a wait.
bool isWaitingShown() {
    const QWidget* const dialog = QApplication::activeModalWidget();
    return dialog != nullptr && dialog->objectName() == QLatin1String(kWaiting);
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

// Whether an event is the key for help in a dialog that keeps the commands of the frame off.
bool isHelpAskedInDialog(QObject* watched, QEvent& event) {
    if (event.type() != QEvent::KeyPress || !watched->isWidgetType()) return false;
    return QApplication::activeModalWidget() != nullptr &&
           static_cast<QKeyEvent&>(event).matches(QKeySequence::HelpContents);
}

// Leaves Ctrl+W to closing files: an explorer window is closed with Ctrl+F4.
void keepCloseKey(const QMdiSubWindow& window) {
    for (QAction* action : window.systemMenu()->actions())
        if (action->shortcuts().contains(QKeySequence("Ctrl+W"))) action->setShortcut(QKeySequence("Ctrl+F4"));
}

template <class Child>
std::vector<Child*> childrenOf(const QMdiArea& area) {
    std::vector<Child*> all;
    for (const QMdiSubWindow* window : area.subWindowList())
        if (auto* child = qobject_cast<Child*>(window->widget()); child != nullptr) all.push_back(child);
    return all;
}

template <class Child>
Child* activeChild(const QMdiArea& area) {
    const QMdiSubWindow* window = area.currentSubWindow();
    return window == nullptr || window->isMinimized() ? nullptr : qobject_cast<Child*>(window->widget());
}

} // namespace

mdiMain::mdiMain(Session& session) :
    session_(session),
    edits_(session, [this](const QStringList& paths) { openNamed(paths, OpenSource::Named); }),
    recovery_(session, [this] { return openAssessments(); }) {
    setObjectName("mdiMain");
    setWindowTitle(shown(std::string(kApplicationTitle)));
    setWindowIcon(iconOf("application"));
    setAcceptDrops(true);
    setContextMenuPolicy(Qt::NoContextMenu); // otherwise the toolkit would show its list of tool bars
    area_ = new QMdiArea;
    area_->setActivationOrder(QMdiArea::ActivationHistoryOrder);
    setCentralWidget(area_);
    makeActions();
    makeMenus();
    makeStatusBar();
    waiting_.setSingleShot(true);
    waiting_.setInterval(kNextLook);
    connect(&waiting_, &QTimer::timeout, this, &mdiMain::showWaiting);
    connect(area_, &QMdiArea::subWindowActivated, this, [this] {
        if (frmAssessment* const assessment = activeAssessment(); assessment != nullptr) assessment_ = assessment;
        EnableMenusAndButtons();
    });
    connect(QApplication::clipboard(), &QClipboard::dataChanged, this, &mdiMain::readClipboard);

    resize(kFirstSize.boundedTo(screen()->availableSize()));
    if (const auto placement = readPlacement(*session.state)) {
        std::vector<Placement> screens;
        for (const QScreen* screen : QGuiApplication::screens())
            screens.push_back(placementOf(screen->availableGeometry()));
        setGeometry(rectOf(broughtOnScreen(*placement, screens)));
    }
    placing_.setSingleShot(true);
    placing_.setInterval(kPlaceChosen);
    connect(&placing_, &QTimer::timeout, this, &mdiMain::savePlace);
    session_.frame = this;
    watchUnsaved();
    qApp->installEventFilter(this);
    readClipboard();
}

mdiMain::~mdiMain() {
    setLastWords({});
    area_->disconnect(this); // it and its windows are destroyed after the members
    for (QMdiSubWindow* window : area_->subWindowList())
        window->disconnect(this);
    session_.ForgetFrame();
}

void mdiMain::makeActions() {
    for (const MenuItem& item : menuItems()) {
        if (actions_.contains(item.command)) continue;
        auto* const action = new QAction(iconOf(item.icon), loadText(session_, item.text), this);
        action->setShortcuts(QKeySequence::listFromString(QLatin1String(item.keys)));
        if (item.toolTip != 0) {
            action->setToolTip(loadText(session_, item.toolTip));
            action->setStatusTip(loadText(session_, item.toolTip));
        }
        action->setCheckable(std::ranges::find(kCheckable, item.command) != std::end(kCheckable));
        if (action->isCheckable()) {
            connect(action, &QAction::toggled, this, [this, command = item.command] {
                if (!isShowingChecks_) give(command);
            });
        } else {
            connect(action, &QAction::triggered, this, [this, command = item.command] { give(command); });
        }
        addAction(action);
        actions_[item.command] = action;
    }
    addStandardKeys();
    const QScopedValueRollback showing(isShowingChecks_, true);
    for (const Command command : {Command::ViewToolbar, Command::ViewStatusBar, Command::LogNote, Command::LogLegend})
        actions_.at(command)->setChecked(true);
    actions_.at(Command::EditDelete)->setShortcutContext(Qt::WidgetShortcut); // the key belongs to the tree
}

void mdiMain::makeMenus() {
    for (const MenuTitle& title : kTitles) {
        QMenu* const menu = menuBar()->addMenu(loadText(session_, title.text));
        fillMenu(*menu, title.menu);
        menus_[title.menu] = menu;
    }
    listWindows(*menus_.at(Menu::Window), *area_, [this](const auto& work) { begin(work); });
    for (const Menu popUp : {Menu::TreePopup, Menu::LogPopup}) {
        menus_[popUp] = new QMenu(this);
        fillMenu(*menus_[popUp], popUp);
    }

    tbToolBar_ = addToolBar(loadPlainText(session_, Text::CommandToolbar));
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
        // An assistive program toggles the button, which would not tell the action.
        if (action->isCheckable()) connect(button, &QToolButton::toggled, action, &QAction::setChecked);
        before = place;
    }
}

void mdiMain::fillMenu(QMenu& menu, Menu which) {
    connect(&menu, &QMenu::aboutToShow, this, [this, which] {
        showTexts(which);
        EnableMenusAndButtons();
    });
    const bool isPopUp = which == Menu::TreePopup || which == Menu::LogPopup;
    int before = -1;
    const auto separate = [&](int index, const MenuItem* behind) {
        if (before >= 0 && index > before + 1) {
            QAction* const separator = menu.addSeparator();
            if (isPopUp) separators_.emplace_back(separator, behind);
        }
        before = index;
    };
    for (const MenuItem& item : menuItems()) {
        if (item.menu != which) continue;
        if (which == Menu::File && recent_.empty() && item.index > kRecentFilesIndex) {
            separate(kRecentFilesIndex, nullptr);
            for (std::size_t i = 0; i < kRecentFiles; ++i) {
                recent_.push_back(menu.addAction(QString()));
                connect(recent_.back(), &QAction::triggered, this, [this, i] {
                    begin([&] { openNamed({shown(session_.RecentFiles.at(i))}, OpenSource::Recent); });
                });
            }
            before += static_cast<int>(kRecentFiles) - 1;
        }
        separate(item.index, &item);
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
        auto* const label = new MessageLabel;
        label->setObjectName(QLatin1String(panel.name));
        statusBar()->addWidget(label, panel.stretch);
        panels_[panel.panel] = label;
    }
    showErrorColour();
}

// The bar gets its colours from the frame.
void mdiMain::showErrorColour() {
    QPalette colours;
    colours.setColor(QPalette::WindowText, signalColour(Signal::Bad, palette()));
    panels_.at(Panel::Error)->setPalette(colours);
}

void mdiMain::NewExplorerWindow() {
    auto* const explorer = new frmExplorer(session_);
    wire(*explorer);
    showChild(*explorer);
}

void mdiMain::showChild(QWidget& child) {
    QMdiSubWindow* const window = area_->addSubWindow(&child);
    window->setAttribute(Qt::WA_DeleteOnClose);
    window->setWindowIcon(child.windowIcon());
    keepCloseKey(*window);
    connect(window, &QMdiSubWindow::windowStateChanged, this, [this] { EnableMenusAndButtons(); });
    window->resize(area_->size() * 3 / 4);
    if (area_->subWindowList().size() == 1) {
        window->showMaximized();
    } else {
        window->show();
    }
}

void mdiMain::wire(frmExplorer& explorer) {
    connect(&explorer, &frmExplorer::StateChanged, this, [this] { EnableMenusAndButtons(); });
    connect(&explorer, &frmExplorer::TreeWidthChosen, this, [this](int width) {
        treeWidth_ = width;
        placing_.start();
    });
    connect(&explorer.LogTabs(), &tabLog::DatabaseDownloadAsked, this,
            [this](QWidget* parent, bool* isDone) { *isDone = downloadDatabase(parent); });
    connect(&explorer.LogTabs(), &tabLog::ProtectorAsked, this, [this, &explorer] {
        if (activeExplorer() == &explorer) give(Command::LogCompareHPD);
    });
    connect(&explorer.LogTabs(), &tabLog::RankAsked, this,
            [this, &explorer] { begin([&] { explorer.LogTabs().Comparison().ChooseByRank(); }); });
    std::vector<QAction*> ofRange;
    for (const MenuItem& item : menuItems())
        if (item.menu == Menu::Range && item.command != Command::RangeMeasure)
            ofRange.push_back(actions_.at(item.command));
    explorer.LogTabs().TimeChart().AddButtons(ofRange);
    const StartPage& start = explorer.LogTabs().Start();
    connect(&start, &StartPage::CommandAsked, this, &mdiMain::give);
    connect(&start, &StartPage::RecentAsked, this,
            [this](const QString& path) { begin([&] { openNamed({path}, OpenSource::Recent); }); });
    connect(&start, &StartPage::SampleAsked, this,
            [this](const QString& path) { begin([&] { openNamed({path}, OpenSource::Named); }); });
    connect(&explorer, &frmExplorer::TreesChanged, this, [this] {
        RebuildExplorerTrees();
        EnableMenusAndButtons(); // there is a step that can be undone
    });
    connect(&explorer, &frmExplorer::DeleteAsked, this, [this] { give(Command::EditDelete); });
    connect(&explorer, &frmExplorer::NodeDropped, this,
            [this, &explorer](const std::string& source, const std::string& target, bool move) {
                begin([&] { edits_.Drop(explorer, source, target, move); });
            });
    connect(
        &explorer, &frmExplorer::FilesDropped, this,
        [this](const QStringList& paths) { begin([&] { openNamed(paths, OpenSource::Named); }); },
        Qt::QueuedConnection);
    connect(&explorer, &frmExplorer::TreeViewPopUpMenu, this, [this](QPoint at) { showPopUp(Menu::TreePopup, at); });
    connect(&explorer, &frmExplorer::TabControlPopUpMenu, this, [this](QPoint at) { showPopUp(Menu::LogPopup, at); });
}

std::vector<frmExplorer*> mdiMain::explorers() const {
    return childrenOf<frmExplorer>(*area_);
}

frmExplorer* mdiMain::activeExplorer() const {
    return activeChild<frmExplorer>(*area_);
}

std::vector<frmAssessment*> mdiMain::assessments() const {
    return childrenOf<frmAssessment>(*area_);
}

frmAssessment* mdiMain::activeAssessment() const {
    return activeChild<frmAssessment>(*area_);
}

MenuState mdiMain::menuState() const {
    const frmExplorer* explorer = activeExplorer();
    MenuState state = explorer == nullptr ? MenuState{} : explorer->StateForMenus();
    if (const frmAssessment* assessment = activeAssessment(); assessment != nullptr)
        state.Assessment = &assessment->Document();
    state.CopiedKey = edits_.Copied().Key;
    state.HasClipboardFiles = hasClipboardFiles_;
    return state;
}

void mdiMain::EnableMenusAndButtons() {
    const MenuState state = menuState();
    for (const auto& [command, action] : actions_)
        action->setEnabled(IsMenuEnabled(session_, command, state));
    if (frmExplorer* explorer = activeExplorer(); explorer != nullptr) {
        const QScopedValueRollback showing(isShowingChecks_, true);
        actions_.at(Command::LogNote)->setChecked(explorer->State().View.ShowsNote);
        actions_.at(Command::LogLegend)->setChecked(explorer->State().View.ShowsLegend);
        actions_.at(Command::ViewZoom)->setChecked(explorer->LogTabs().IsZoomShown());
        actions_.at(Command::RangeMeasure)->setChecked(explorer->State().View.ShowsRange);
    }
    for (const auto& [separator, behind] : separators_)
        separator->setVisible(IsGroupEnabled(session_, behind->menu, behind->index, state));
    for (frmExplorer* explorer : explorers())
        explorer->ShowMarks();
    showRecentFiles();
    showSteps();
}

void mdiMain::showTexts(Menu which) {
    std::vector<std::string> texts = menuTexts(session_, which);
    auto text = texts.begin();
    for (const MenuItem& item : menuItems())
        if (item.menu == which) actions_.at(item.command)->setText(shown(*text++));
}

void mdiMain::showSteps() {
    const MenuState state = menuState();
    for (const auto& [command, direction] : kSteps) {
        const clsFile* const file =
            state.Assessment != nullptr ? nullptr : documentToEdit(session_, state.SelectedKey, direction);
        std::string text = exchangeText(session_, file, direction);
        if (state.Assessment != nullptr && state.Assessment->CanExchange(direction))
            text = exchangeText(session_, state.Assessment->Title(direction), direction);
        actions_.at(command)->setText(shown(text));
    }
}

void mdiMain::exchange(Direction direction) {
    if (frmAssessment* const assessment = activeAssessment(); assessment != nullptr)
        return assessment->Exchange(direction);
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
    // Qualified, because it is also called on construction, where there is no virtual call.
    mdiMain::EnableMenusAndButtons();
}

void mdiMain::showRecentFiles() {
    for (std::size_t i = 0; i < recent_.size(); ++i) {
        const bool isThere = i < session_.RecentFiles.size();
        recent_[i]->setVisible(isThere);
        if (!isThere) continue;
        const std::string& name = session_.RecentFiles[i];
        const std::string text = session_.LoadText(Text::Id{Text::CommandRecent1 + static_cast<int>(i)});
        const std::string fileName = ReplaceText(clsFile(session_, name).ShortenedFileName(), "&", "&&");
        recent_[i]->setText(shown(ReplaceText(text, "^", fileName)));
        recent_[i]->setStatusTip(shown(name));
    }
}

void mdiMain::SetPanel(Panel panel, const std::string& text) {
    panels_.at(panel)->Show(shown(text));
}

void mdiMain::ClearPanel(Panel panel, const std::string& text) {
    if (panels_.at(panel)->text() == shown(text)) SetPanel(panel, {});
}

void mdiMain::RebuildExplorerTrees() {
    for (frmExplorer* explorer : explorers())
        explorer->RebuildTree();
    edits_.TreesRebuilt();
}

void mdiMain::ChooseLog(const std::string& key, bool isToShow) {
    if (explorers().empty()) NewExplorerWindow(); // so that what is opened can be seen
    if (frmExplorer* const explorer = activeExplorer(); explorer != nullptr) explorer->ChooseLog(key, isToShow);
}

void mdiMain::LogValuesChanged(const clsLog& log) {
    for (frmExplorer* explorer : explorers())
        explorer->LogValuesChanged(log);
    showWaiting();
}

// Whether a dialog waits for the user, or the user for the program.
bool mdiMain::isAnswering() const {
    return busy_ > 0 || QApplication::activeModalWidget() != nullptr;
}

// Shows logs whose rows have come. While a command is working on a view, this is postponed.
void mdiMain::showWaiting() {
    if (isAnswering()) return waiting_.start();
    for (frmExplorer* explorer : explorers())
        explorer->ShowWaiting();
}

void mdiMain::SetBusy(bool isBusy) {
    busy_ += isBusy ? 1 : -1;
    if (isBusy) {
        QApplication::setOverrideCursor(Qt::WaitCursor);
    } else {
        QApplication::restoreOverrideCursor();
    }
}

bool mdiMain::WaitUntil(EventPump& pump, const std::string& what, const std::function<bool()>& isDone) {
    if (isDone()) return true;
    QProgressDialog progress(shown(what), loadPlainText(session_, Text::Cancel), 0, 0, this);
    nameControl(progress, kWaiting, progress.labelText());
    progress.setWindowTitle(windowTitle());
    progress.setWindowModality(Qt::ApplicationModal);
    progress.show();
    pump.runUntil([&] { return progress.wasCanceled() || !progress.isVisible() || isDone(); });
    return isDone();
}

// Whether an event must not reach an object: while a dialog is open, or about to open and still without the focus,
// nothing behind it gets keys or is closed.
bool mdiMain::isHeldBack(const QObject* object) const {
    const QWidget* const dialog = QApplication::activeModalWidget();
    for (; object != nullptr && object != dialog; object = object->parent())
        if (object == this) return dialog != nullptr;
    return false;
}

bool mdiMain::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() == QEvent::Show) leaveLettersToMenus(watched);
    if (isHelpAskedInDialog(watched, *event)) {
        openHelp(helpTopicOf(qobject_cast<QWidget*>(watched)));
        return true;
    }
    const bool isDropped = isUserInput(event->type()) && ((busy_ > 0 && !isWaitingShown()) || isHeldBack(watched));
    if (!isDropped && !isKeptFromText(*event)) return QMainWindow::eventFilter(watched, event);
    event->ignore();
    return true;
}

void mdiMain::showPopUp(Menu which, QPoint at) {
    EnableMenusAndButtons();
    popUpAt_ = at;
    menus_.at(which)->popup(at);
}

void mdiMain::dragEnterEvent(QDragEnterEvent* event) {
    if (event->source() == nullptr && !filesOf(event->mimeData()).isEmpty()) event->acceptProposedAction();
}

void mdiMain::dropEvent(QDropEvent* event) {
    event->setDropAction(Qt::CopyAction);
    event->accept();
    // Deferred, so that a box shown while opening does not block the program from which the files were dropped.
    QMetaObject::invokeMethod(
        this, [this, paths = filesOf(event->mimeData())] { begin([&] { openNamed(paths, OpenSource::Named); }); },
        Qt::QueuedConnection);
}

void mdiMain::closeEvent(QCloseEvent* event) {
    commitCells();
    const std::vector<frmAssessment*> open = assessments();
    const bool areClosed = std::ranges::all_of(open, &frmAssessment::MayClose);
    if (!areClosed || !CloseFiles(session_, nullptr, saveName())) {
        event->ignore();
        return;
    }
    recovery_.End();
    saveState();
    event->accept();
    emit Closed();
}

// What is being typed into an exposure grid counts.
void mdiMain::commitCells() {
    for (grdDose* grid : findChildren<grdDose*>())
        grid->CommitCell();
}

// The state of the tool bar is written under a key that is never read, so it is always visible at start; that is meant.
void mdiMain::saveState() {
    savePlace();
    session_.settings.write("Settings", "Preferences", settingsText(tbToolBar_->isVisible()));
}

// The place of the window and the width of the tree. A window that is not there yet has no place that anybody chose.
void mdiMain::savePlace() {
    if (!isVisible() || isMinimized()) return;
    savePlacement(*session_.state, placementOf(isMaximized() ? normalGeometry() : geometry()));
    if (treeWidth_) saveTreeWidth(*session_.state, *treeWidth_);
}

void mdiMain::moveEvent(QMoveEvent* event) {
    QMainWindow::moveEvent(event);
    placing_.start();
}

void mdiMain::resizeEvent(QResizeEvent* event) {
    QMainWindow::resizeEvent(event);
    placing_.start();
}

} // namespace kestrane

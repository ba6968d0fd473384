#include "desktop/frmExplorer.h"

#include "app/Placement.h"
#include "desktop/pages/ExposurePage.h"
#include "desktop/tabLog.h"
#include "desktop/tvwTreeView.h"
#include "dialogs/HandySplitter.h"
#include "dialogs/Icons.h"
#include "dialogs/Words.h"
#include "explorer/NodeKeys.h"
#include "explorer/NodeRename.h"

#include <QApplication>
#include <QBoxLayout>

namespace kestrane {

namespace {

constexpr int kTreeWidth = 270;
constexpr int kLogWidth = 760;

} // namespace

frmExplorer::frmExplorer(Session& session, QWidget* parent) : QWidget(parent), session_(session) {
    setObjectName("frmExplorer");
    setWindowIcon(iconOf("application"));
    tree_ = new tvwTreeView(session);
    log_ = new tabLog(session, state_);
    auto* const splitter = new HandySplitter;
    splitter->addWidget(tree_);
    splitter->addWidget(log_);
    splitter->setStretchFactor(1, 1);
    splitter->setSizes({readTreeWidth(*session.state).value_or(kTreeWidth), kLogWidth});
    splitter->setChildrenCollapsible(false);
    auto* const layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(splitter);

    connect(splitter, &QSplitter::splitterMoved, this, [this](int at) { emit TreeWidthChosen(at); });
    connect(tree_, &tvwTreeView::NodeClick, this, [this](const QString& key) { nodeClick(key.toStdString()); });
    // Deferred, because the tree is rebuilt, which must wait until its editor has closed or the drag has ended.
    connect(
        tree_, &tvwTreeView::NodeRenamed, this,
        [this](const QString& key, const QString& text) { nodeRenamed(key.toStdString(), text.toStdString()); },
        Qt::QueuedConnection);
    connect(
        tree_, &tvwTreeView::NodeDropped, this,
        [this](const QString& source, const QString& target, bool move) {
            emit NodeDropped(source.toStdString(), target.toStdString(), move);
        },
        Qt::QueuedConnection);
    connect(tree_, &tvwTreeView::DeleteAsked, this, &frmExplorer::DeleteAsked);
    connect(tree_, &tvwTreeView::FilesDropped, this, &frmExplorer::FilesDropped);
    connect(tree_, &tvwTreeView::PopUpMenuAsked, this, &frmExplorer::TreeViewPopUpMenu);
    connect(qApp, &QApplication::focusChanged, this,
            [this](const QWidget*, const QWidget* focused) { takeFocus(focused); });
    connect(log_, &tabLog::TabChanged, this, &frmExplorer::StateChanged);
    connect(log_, &tabLog::PopUpMenuAsked, this, &frmExplorer::TabControlPopUpMenu);
    RebuildTree();
}

MenuState frmExplorer::StateForMenus() const {
    return {true,
            state_.SelectedKey,
            state_.OpenedLog(session_),
            state_.View.Tab,
            log_->Exposures().IsOnRow(),
            isTreeActive_,
            log_->HasContent(),
            state_.LogInView(session_),
            {},
            false,
            nullptr,
            log_->HasRange()};
}

// When the focus goes to something else, such as a menu, the active one of the two stays active.
void frmExplorer::takeFocus(const QWidget* focused) {
    const bool isTree = focused == tree_ || tree_->isAncestorOf(focused);
    if (isTree == isTreeActive_ || (!isTree && !log_->isAncestorOf(focused))) return;
    isTreeActive_ = isTree;
    emit StateChanged();
}

void frmExplorer::RebuildTree() {
    const std::vector<TreeNode> nodes = state_.RebuildTree(session_, tree_->ShownNodes());
    tree_->ShowNodes(nodes, state_.SelectedKey);
    showDisplayed();
}

void frmExplorer::ShowMarks() {
    tree_->ShowMarks();
    showCaption();
}

void frmExplorer::ChooseLog(const std::string& key, bool isToShow) {
    state_.SelectedKey = key;
    if (isToShow) state_.DisplayedKey = key;
    RebuildTree();
    emit StateChanged();
}

void frmExplorer::ResetControls() {
    state_.ResetControls();
    tree_->ShowOpenLog({});
    showDisplayed();
    emit StateChanged();
}

void frmExplorer::nodeClick(const std::string& key) {
    const bool isLog = state_.NodeClick(key);
    emit StateChanged();
    if (!isLog) return;
    tree_->ShowOpenLog(state_.DisplayedKey);
    const clsLog* log = resolve(session_, state_.DisplayedKey).log;
    if (log != nullptr && log->IsBusy()) session_.ShowMessage(session_.LoadText(Text::StillLoading), kIconInformation);
    showDisplayed();
    emit StateChanged();
}

void frmExplorer::showDisplayed() {
    const bool isAnother = state_.takeDisplayed(session_);
    showCaption();
    if (isAnother || state_.Content(session_) != LogContent::Values) log_->ShowLog();
}

void frmExplorer::showCaption() {
    setWindowTitle(shown(state_.Caption(session_)));
}

void frmExplorer::LogValuesChanged(const clsLog& log) {
    if (&log == state_.LogInView(session_) || &log == state_.OpenedLog(session_)) log_->Redraw();
}

void frmExplorer::ShowWaiting() {
    if (!state_.takeDisplayed(session_)) return;
    log_->ShowLog();
    emit StateChanged();
}

void frmExplorer::EndZoom() {
    if (!state_.endZoom(session_)) return;
    log_->ShowLog();
    emit StateChanged();
}

void frmExplorer::EditSelectedNode() {
    tree_->EditNode(state_.SelectedKey);
}

void frmExplorer::SelectNode(const std::string& key) {
    tree_->SelectNode(key);
}

void frmExplorer::nodeRenamed(const std::string& key, const std::string& text) {
    if (renameNode(session_, key, text)) emit TreesChanged();
}

} // namespace kestrane

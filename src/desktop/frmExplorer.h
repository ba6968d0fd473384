// An explorer window: the tree of the open files on the left, the log view on the right. Several can be open at once.
// Its state is in an ExplorerState of the core; it has no measurement data.
#pragma once

#include "app/Menus.h"
#include "explorer/ExplorerState.h"
#include "model/Session.h"

#include <QWidget>

class QSplitter;

namespace kestrane {

class tabLog;
class tvwTreeView;

class frmExplorer : public QWidget {
    Q_OBJECT

public:
    explicit frmExplorer(Session& session, QWidget* parent = nullptr);

    ExplorerState& State() { return state_; }

    tabLog& LogTabs() { return *log_; }

    MenuState StateForMenus() const; // with this window in front, not minimised

    void RebuildTree();
    void ShowMarks(); // of documents with unsaved changes
    void ChooseLog(const std::string& key, bool isToShow);
    void ResetControls(); // forgets the open log
    void LogValuesChanged(const clsLog& log);
    void ShowWaiting(); // shows the log that was chosen while its rows were still to come
    void EndZoom();
    void EditSelectedNode();
    void SelectNode(const std::string& key); // and shows it as if it had been clicked

signals:
    void StateChanged();             // the menus of the frame must be updated
    void TreeWidthChosen(int width); // by the user, in pixels
    void TreesChanged();             // a file, collection or log has been renamed
    void NodeDropped(const std::string& sourceKey, const std::string& targetKey, bool move);
    void DeleteAsked(); // of the selected node
    void FilesDropped(const QStringList& paths);
    void TreeViewPopUpMenu(QPoint at);
    void TabControlPopUpMenu(QPoint at);

private:
    void takeFocus(const QWidget* focused);
    void nodeClick(const std::string& key);
    void nodeRenamed(const std::string& key, const std::string& text);
    void showDisplayed();
    void showCaption();

    Session& session_;
    ExplorerState state_;
    tvwTreeView* tree_;
    tabLog* log_;
    bool isTreeActive_ = true; // false: the log view had the focus last
};

} // namespace kestrane

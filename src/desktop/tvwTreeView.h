// The tree of an explorer window: it shows the nodes that the core built and reports, by key, what the user did with
// them. Of its own it only knows which nodes are expanded.
#pragma once

#include "explorer/ExplorerState.h"
#include "model/Session.h"

#include <QTreeWidget>

namespace kestrane {

class tvwTreeView : public QTreeWidget {
    Q_OBJECT

public:
    explicit tvwTreeView(const Session& session, QWidget* parent = nullptr);

    std::vector<ShownNode> ShownNodes() const;
    void ShowNodes(const std::vector<TreeNode>& nodes, const std::string& selectedKey);
    void ShowMarks();                                  // behind the names of documents with unsaved changes
    void ShowOpenLog(const std::string& displayedKey); // only this log gets the image of an open log
    void EditNode(const std::string& key);
    void SelectNode(const std::string& key);

signals:
    void NodeClick(const QString& key); // also by the keyboard, and again for a second click
    void NodeRenamed(const QString& key, const QString& text);
    void NodeDropped(const QString& sourceKey, const QString& targetKey, bool move);
    void DeleteAsked();
    void FilesDropped(const QStringList& paths);
    void PopUpMenuAsked(QPoint at); // in screen coordinates

protected:
    void keyPressEvent(QKeyEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void contextMenuEvent(QContextMenuEvent* event) override;
    void dragEnterEvent(QDragEnterEvent* event) override;
    void dragMoveEvent(QDragMoveEvent* event) override;
    void dragLeaveEvent(QDragLeaveEvent* event) override;
    void dropEvent(QDropEvent* event) override;

private:
    void addNodes(QTreeWidgetItem* parent, const std::vector<TreeNode>& nodes);
    QTreeWidgetItem* itemOf(const std::string& key) const;
    bool isDropTarget(const QString& sourceKey, QTreeWidgetItem* target) const;
    void startNodeDrag();
    void highlightDrop(QTreeWidgetItem* item); // null for none

    const Session& session_;
    QString dragKey_; // of the node that was pressed with Shift or Ctrl
    QPoint dragFrom_;
    bool isMoveDrag_ = false;             // the drag began with Ctrl
    QTreeWidgetItem* dropItem_ = nullptr; // the node below the drag
};

// The key of the node in a drag from a tree of this program; nothing when it contains anything else.
std::optional<std::string> nodeOf(const QMimeData& data);

// The paths of the files in a drag; empty when it contains anything else.
QStringList filesOf(const QMimeData* data);

} // namespace kestrane

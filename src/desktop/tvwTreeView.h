// The tree of an explorer window: shows the nodes that the core built and says what the user did with them, by key.
// Keeps nothing of its own but which nodes are expanded.
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
    void ShowMarks();                                  // behind the names of documents that have not been saved
    void ShowOpenLog(const std::string& displayedKey); // gives it, and it alone, the image of an open log
    void EditNode(const std::string& key);
    void SelectNode(const std::string& key);

signals:
    void NodeClick(const QString& key); // also by the keyboard, and again for a second click
    void NodeRenamed(const QString& key, const QString& text);
    void NodeDropped(const QString& sourceKey, const QString& targetKey, bool move);
    void DeleteAsked();
    void FilesDropped(const QStringList& paths);
    void PopUpMenuAsked(QPoint at); // on the screen

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
    void highlightDrop(QTreeWidgetItem* item); // null: none

    const Session& session_;
    QString dragKey_; // of the node pressed with Shift or Ctrl
    QPoint dragFrom_;
    bool isMoveDrag_ = false;             // begun with Ctrl
    QTreeWidgetItem* dropItem_ = nullptr; // the node under the drag
};

// The paths of the files that a drag brings along; empty when it brings anything else.
QStringList filesOf(const QMimeData* data);

} // namespace kestrane

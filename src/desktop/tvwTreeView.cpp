#include "desktop/tvwTreeView.h"

#include "app/DragFile.h"
#include "dialogs/Icons.h"
#include "dialogs/Words.h"
#include "explorer/NodeKeys.h"
#include "explorer/NodeRename.h"
#include "platform/desktop/DragOut.h"

#include <QApplication>
#include <QDrag>
#include <QDragEnterEvent>
#include <QLineEdit>
#include <QMimeData>
#include <QMouseEvent>
#include <QStyledItemDelegate>
#include <QTreeWidgetItemIterator>
#include <QUrl>

#include <map>

namespace kestrane {

namespace {

constexpr int kKeyRole = Qt::UserRole;
constexpr int kTextRole = Qt::UserRole + 1;                       // the text without a mark
constexpr auto kNodeFormat = "application/x-kestrane-node";       // the node's key
constexpr auto kProcessFormat = "application/x-kestrane-process"; // in addition: the program that has the node
constexpr auto kMoveFormat = "application/x-kestrane-move";       // in addition, when the node is to be moved
constexpr int kExpandDelay = 700;                                 // milliseconds that the drag rests on a node
constexpr float kDropShade = 0.35F;
constexpr int kNoEntrySize = 24;

QByteArray process() {
    return QByteArray::number(QCoreApplication::applicationPid());
}

// A key of another running program means nothing here.
bool hasNode(const QMimeData& data) {
    return data.hasFormat(kNodeFormat) && data.data(kProcessFormat) == process();
}

QIcon imageOf(const std::string& image) {
    static const std::map<std::string, const char*> kDrawings = {
        {"FILE", "file"}, {"INSTRUMENT", "instrument"}, {"FILEOPEN", "log-open"}, {"FILECLOSE", "log-closed"}};
    return iconOf(kDrawings.at(image));
}

QString keyOf(const QTreeWidgetItem* item) {
    return item == nullptr ? QString() : item->data(0, kKeyRole).toString();
}

// Edits the name in a node's text, and passes on what was typed instead of writing it into the node.
class NameDelegate : public QStyledItemDelegate {
public:
    NameDelegate(const Session& session, tvwTreeView& tree) :
        QStyledItemDelegate(&tree), session_(session), tree_(tree) {}

    void setEditorData(QWidget* editor, const QModelIndex& index) const override {
        auto& line = *qobject_cast<QLineEdit*>(editor);
        line.setText(QString::fromStdString(editableText(session_, index.data(kKeyRole).toString().toStdString())));
        line.selectAll();
    }

    void setModelData(QWidget* editor, QAbstractItemModel*, const QModelIndex& index) const override {
        emit tree_.NodeRenamed(index.data(kKeyRole).toString(), qobject_cast<QLineEdit*>(editor)->text());
    }

private:
    const Session& session_;
    tvwTreeView& tree_;
};

} // namespace

std::optional<std::string> nodeOf(const QMimeData& data) {
    return hasNode(data) ? std::optional(data.data(kNodeFormat).toStdString()) : std::nullopt;
}

QStringList filesOf(const QMimeData* data) {
    QStringList paths;
    for (const QUrl& url : data->urls())
        if (url.isLocalFile()) paths.push_back(url.toLocalFile());
    return paths;
}

tvwTreeView::tvwTreeView(const Session& session, QWidget* parent) : QTreeWidget(parent), session_(session) {
    nameControl(*this, "tvwTreeView", loadText(session, Text::OpenFiles));
    setHeaderHidden(true);
    setUniformRowHeights(true);
    setAcceptDrops(true);
    setAutoExpandDelay(kExpandDelay);
    setAnimated(false);
    setEditTriggers(EditKeyPressed);
    setItemDelegate(new NameDelegate(session, *this));
    // The node that commands work on stays visible even when a click below the nodes takes the toolkit's selection
    // away.
    connect(this, &QTreeWidget::itemSelectionChanged, this, [this] {
        if (selectedItems().isEmpty() && currentItem() != nullptr) currentItem()->setSelected(true);
    });
    connect(this, &QTreeWidget::currentItemChanged, this, [this](QTreeWidgetItem* item) {
        if (item != nullptr) emit NodeClick(keyOf(item));
    });
    for (const auto chosen : {&QTreeWidget::itemClicked, &QTreeWidget::itemActivated}) // by the mouse, and by Return
        connect(this, chosen, this, [this](const QTreeWidgetItem* item) { emit NodeClick(keyOf(item)); });
}

std::vector<ShownNode> tvwTreeView::ShownNodes() const {
    std::vector<ShownNode> nodes;
    for (QTreeWidgetItemIterator at(const_cast<tvwTreeView*>(this)); *at != nullptr; ++at)
        nodes.push_back({keyOf(*at).toStdString(), (*at)->isExpanded()});
    return nodes;
}

void tvwTreeView::ShowNodes(const std::vector<TreeNode>& nodes, const std::string& selectedKey) {
    const QSignalBlocker blocker(this);
    dropItem_ = nullptr;
    clear();
    addNodes(invisibleRootItem(), nodes);
    ShowMarks();
    if (QTreeWidgetItem* item = itemOf(selectedKey); item != nullptr) setCurrentItem(item);
}

void tvwTreeView::addNodes(QTreeWidgetItem* parent, const std::vector<TreeNode>& nodes) {
    for (const TreeNode& node : nodes) {
        auto* const item = new QTreeWidgetItem(parent, {QString::fromStdString(node.Text)});
        item->setData(0, kKeyRole, QString::fromStdString(node.Key));
        item->setData(0, kTextRole, item->text(0));
        item->setIcon(0, imageOf(node.Image));
        if (isEditableKind(node.Key)) item->setFlags(item->flags() | Qt::ItemIsEditable);
        addNodes(item, node.Children);
        item->setExpanded(node.Expanded);
    }
}

void tvwTreeView::ShowMarks() {
    for (int i = 0; i < topLevelItemCount(); ++i) {
        QTreeWidgetItem* const item = topLevelItem(i);
        const clsFile* const file = resolve(session_, keyOf(item).toStdString()).file;
        if (file == nullptr) continue;
        const QString text = item->data(0, kTextRole).toString() + QString::fromStdString(markOf(*file));
        if (text != item->text(0)) item->setText(0, text);
    }
}

void tvwTreeView::ShowOpenLog(const std::string& displayedKey) {
    for (QTreeWidgetItemIterator at(this); *at != nullptr; ++at) {
        const std::string key = keyOf(*at).toStdString();
        if (isLogKind(key)) (*at)->setIcon(0, imageOf(key == displayedKey ? "FILEOPEN" : "FILECLOSE"));
    }
}

void tvwTreeView::EditNode(const std::string& key) {
    if (QTreeWidgetItem* item = itemOf(key); item != nullptr) editItem(item);
}

void tvwTreeView::SelectNode(const std::string& key) {
    if (QTreeWidgetItem* item = itemOf(key); item != nullptr) setCurrentItem(item);
}

QTreeWidgetItem* tvwTreeView::itemOf(const std::string& key) const {
    for (QTreeWidgetItemIterator at(const_cast<tvwTreeView*>(this)); *at != nullptr; ++at)
        if (keyOf(*at).toStdString() == key) return *at;
    return nullptr;
}

void tvwTreeView::keyPressEvent(QKeyEvent* event) {
    if (event->key() == Qt::Key_Delete && event->modifiers() == Qt::NoModifier) {
        emit DeleteAsked();
    } else {
        QTreeWidget::keyPressEvent(event);
    }
}

// A plain press selects; with Shift or Ctrl a press begins a drag.
void tvwTreeView::mousePressEvent(QMouseEvent* event) {
    const bool isDrag =
        event->button() == Qt::LeftButton && (event->modifiers() & (Qt::ShiftModifier | Qt::ControlModifier)) != 0;
    if (!isDrag) {
        QTreeWidget::mousePressEvent(event);
        return;
    }
    dragKey_ = keyOf(itemAt(event->pos()));
    dragFrom_ = event->pos();
    isMoveDrag_ = (event->modifiers() & Qt::ControlModifier) != 0;
    if ((event->modifiers() & Qt::ShiftModifier) != 0 && !dragKey_.isEmpty()) setCurrentItem(itemAt(event->pos()));
}

void tvwTreeView::mouseMoveEvent(QMouseEvent* event) {
    if (dragKey_.isEmpty()) return; // moving over nodes does not select them
    if ((event->pos() - dragFrom_).manhattanLength() >= QApplication::startDragDistance()) startNodeDrag();
}

void tvwTreeView::mouseReleaseEvent(QMouseEvent* event) {
    dragKey_.clear();
    QTreeWidget::mouseReleaseEvent(event);
}

void tvwTreeView::startNodeDrag() {
    auto* const drag = new QDrag(this);
    const std::string key = dragKey_.toStdString();
    std::optional<FileToDrag> file = dataFileOf(session_, key);
    QMimeData* const node =
        file ? new PromisedFile({{}, std::move(file->Name), std::move(file->Bytes)}) : new QMimeData;
    node->setData(kNodeFormat, dragKey_.toUtf8());
    node->setData(kProcessFormat, process());
    if (isMoveDrag_) node->setData(kMoveFormat, "1");
    drag->setMimeData(node);
    if (const QTreeWidgetItem* item = itemOf(key); item != nullptr) drag->setPixmap(item->icon(0).pixmap(kNoEntrySize));
    drag->setDragCursor(iconOf("noentry").pixmap(kNoEntrySize), Qt::IgnoreAction);
    drag->exec(Qt::CopyAction | Qt::MoveAction);
    dragKey_.clear();
}

void tvwTreeView::contextMenuEvent(QContextMenuEvent* event) {
    setFocus();
    QPoint at = event->pos();
    if (event->reason() == QContextMenuEvent::Keyboard) {
        at = currentItem() != nullptr ? visualItemRect(currentItem()).bottomLeft() : QPoint();
    } else if (QTreeWidgetItem* item = itemAt(at); item != nullptr) {
        setCurrentItem(item);
    }
    emit PopUpMenuAsked(viewport()->mapToGlobal(at));
}

bool tvwTreeView::isDropTarget(const QString& sourceKey, QTreeWidgetItem* target) const {
    if (target == nullptr) return false;
    return sourceKey == keyOf(target) || SittingOnValidNode(sourceKey.toStdString(), keyOf(target).toStdString(), {});
}

void tvwTreeView::dragEnterEvent(QDragEnterEvent* event) {
    const bool isOurs = event->source() != nullptr; // asking for the files would write them
    if (hasNode(*event->mimeData()) || (!isOurs && !filesOf(event->mimeData()).isEmpty()))
        event->acceptProposedAction();
}

// The base class scrolls at the edges and expands the node on which the drag rests. What is allowed is decided here.
void tvwTreeView::dragMoveEvent(QDragMoveEvent* event) {
    QTreeWidget::dragMoveEvent(event);
    const bool isNode = hasNode(*event->mimeData());
    QTreeWidgetItem* const target = itemAt(event->position().toPoint());
    highlightDrop(isNode ? target : nullptr);
    if (isNode && !isDropTarget(QString::fromUtf8(event->mimeData()->data(kNodeFormat)), target)) {
        event->ignore();
        return;
    }
    if (!isNode) event->setDropAction(Qt::CopyAction);
    event->accept();
}

void tvwTreeView::dragLeaveEvent(QDragLeaveEvent* event) {
    highlightDrop(nullptr);
    QTreeWidget::dragLeaveEvent(event);
}

void tvwTreeView::dropEvent(QDropEvent* event) {
    QDragLeaveEvent left; // this ends the scrolling
    dragLeaveEvent(&left);
    event->setDropAction(Qt::CopyAction); // a node that is moved is removed by the command
    event->accept();
    if (!hasNode(*event->mimeData())) {
        emit FilesDropped(filesOf(event->mimeData()));
        return;
    }
    const QString source = QString::fromUtf8(event->mimeData()->data(kNodeFormat));
    QTreeWidgetItem* target = itemAt(event->position().toPoint());
    if (isDropTarget(source, target) && source != keyOf(target))
        emit NodeDropped(source, keyOf(target), event->mimeData()->hasFormat(kMoveFormat));
}

void tvwTreeView::highlightDrop(QTreeWidgetItem* item) {
    if (item == dropItem_) return;
    if (dropItem_ != nullptr) dropItem_->setBackground(0, {});
    dropItem_ = item;
    if (item == nullptr) return;
    QColor colour = palette().color(QPalette::Highlight);
    colour.setAlphaF(kDropShade);
    item->setBackground(0, colour);
}

} // namespace kestrane

#include "desktop/assessment/tvwAssessment.h"

#include "desktop/tvwTreeView.h"
#include "dialogs/Words.h"

#include <QDragEnterEvent>
#include <QHeaderView>
#include <QKeyEvent>
#include <QLineEdit>
#include <QMimeData>
#include <QStyledItemDelegate>
#include <QTreeWidgetItemIterator>

#include <algorithm>

namespace kestrane {

namespace {

constexpr int kPlaceRole = Qt::UserRole;
constexpr int kLeastWidth = 48;   // pixels
constexpr int kLeastLetters = 12; // of the names, behind the indentation of the deepest row
constexpr int kLevels = 3;
constexpr int kSamplesWidth = 130;
constexpr auto kRefused = "refused"; // the property of an editor with an entry that was refused

// The editor of a cell begins with the whole entry, not with the rounded figure that the cell shows, and reports what
// the user has typed. Cells of computed figures have no editor.
class CellDelegate : public QStyledItemDelegate {
public:
    explicit CellDelegate(tvwAssessment& tree) : QStyledItemDelegate(&tree), tree_(tree) {}

    QWidget* createEditor(QWidget* parent, const QStyleOptionViewItem&, const QModelIndex& index) const override {
        if (!tree_.IsEntered(index)) return nullptr;
        auto* const line = new QLineEdit(parent);
        line->setFrame(false);
        return line;
    }

    void setEditorData(QWidget* editor, const QModelIndex& index) const override {
        qobject_cast<QLineEdit*>(editor)->setText(tree_.EnteredText(index));
    }

    void setModelData(QWidget* editor, QAbstractItemModel*, const QModelIndex& index) const override {
        const auto& line = *qobject_cast<QLineEdit*>(editor);
        const QVariant refused = line.property(kRefused);
        const QString before = refused.isValid() ? refused.toString() : tree_.EnteredText(index);
        if (line.isModified() || line.text() != before) tree_.Enter(index, line.text());
    }

private:
    tvwAssessment& tree_;
};

} // namespace

tvwAssessment::tvwAssessment(const Session& session) : session_(session) {
    nameControl(*this, "tvwAssessment", loadText(session, Text::GroupsTree));
    QStringList captions;
    for (std::size_t column = 0; column < kAssessmentColumns; ++column)
        captions.push_back(shown(columnCaption(session, static_cast<AssessmentColumn>(column))));
    setColumnCount(static_cast<int>(captions.size()));
    setHeaderLabels(captions);
    header()->setStretchLastSection(false);
    for (int column = 0; column < captions.size(); ++column)
        resizeColumnToContents(column);
    header()->setMinimumSectionSize(kLeastWidth);
    header()->resizeSection(1, kSamplesWidth);
    setUniformRowHeights(true);
    setAlternatingRowColors(true);
    setSelectionBehavior(SelectItems); // the arrow keys go from cell to cell
    setEditTriggers(DoubleClicked | EditKeyPressed | AnyKeyPressed);
    setItemDelegate(new CellDelegate(*this));
    setAcceptDrops(true);
    connect(this, &QTreeWidget::currentItemChanged, this, &tvwAssessment::SelectionChanged);
}

void tvwAssessment::ShowRows(const std::vector<AssessmentRow>& rows, const Assessment& assessment) {
    const QSignalBlocker blocker(this);
    std::vector<AssessmentPlace> folded;
    for (QTreeWidgetItemIterator at(this, QTreeWidgetItemIterator::HasChildren); *at != nullptr; ++at)
        if (!(*at)->isExpanded()) folded.push_back(*placeOf(*at));
    const std::optional<AssessmentPlace> selected = Selected();
    const int column = std::max(currentColumn(), 0);
    clear();
    places_.clear();
    assessment_ = &assessment;
    addTopLevelItems(itemsOf(rows));
    expandAll();
    for (QTreeWidgetItemIterator at(this, QTreeWidgetItemIterator::HasChildren); *at != nullptr; ++at)
        if (std::ranges::find(folded, *placeOf(*at)) != folded.end()) (*at)->setExpanded(false);
    for (QTreeWidgetItemIterator at(this); *at != nullptr; ++at)
        if (placeOf(*at) == selected) setCurrentItem(*at, column);
    if (currentItem() == nullptr && topLevelItemCount() > 0) setCurrentItem(topLevelItem(0), 0);
}

// They are filled before they come into the tree, which would look at each of their texts otherwise.
QList<QTreeWidgetItem*> tvwAssessment::itemsOf(const std::vector<AssessmentRow>& rows) {
    QList<QTreeWidgetItem*> items;
    for (const AssessmentRow& row : rows) {
        auto* const item = new QTreeWidgetItem;
        for (std::size_t column = 0; column < kAssessmentColumns; ++column) {
            const int at = static_cast<int>(column);
            item->setText(at, shown(row.Cells[column]));
            item->setToolTip(at, item->text(at));
            if (column > static_cast<std::size_t>(AssessmentColumn::Samples))
                item->setTextAlignment(at, Qt::AlignRight | Qt::AlignVCenter);
        }
        item->setData(0, kPlaceRole, static_cast<int>(places_.size()));
        item->setFlags(item->flags() | Qt::ItemIsEditable);
        places_.push_back(row.Place);
        item->addChildren(itemsOf(row.Children));
        items.push_back(item);
    }
    return items;
}

std::optional<AssessmentPlace> tvwAssessment::placeOf(const QTreeWidgetItem* item) const {
    if (item == nullptr) return std::nullopt;
    return places_[static_cast<std::size_t>(item->data(0, kPlaceRole).toInt())];
}

std::optional<AssessmentPlace> tvwAssessment::Selected() const {
    return placeOf(currentItem());
}

void tvwAssessment::Select(const AssessmentPlace& place) {
    for (QTreeWidgetItemIterator at(this); *at != nullptr; ++at)
        if (placeOf(*at) == place) setCurrentItem(*at, std::max(currentColumn(), 0));
}

void tvwAssessment::EnterAgain(const AssessmentPlace& place, AssessmentColumn column, const QString& entry,
                               const QString& part) {
    Select(place);
    setCurrentItem(currentItem(), static_cast<int>(column));
    editItem(currentItem(), static_cast<int>(column));
    auto* const line = qobject_cast<QLineEdit*>(indexWidget(currentIndex()));
    if (line == nullptr) return;
    line->setText(entry);
    line->setProperty(kRefused, entry);
    line->setSelection(static_cast<int>(entry.indexOf(part)), static_cast<int>(part.size()));
}

bool tvwAssessment::IsEntered(const QModelIndex& index) const {
    return isEntered(*assessment_, *placeOf(itemFromIndex(index)), static_cast<AssessmentColumn>(index.column()));
}

QString tvwAssessment::EnteredText(const QModelIndex& index) const {
    return shown(enteredText(session_, *assessment_, *placeOf(itemFromIndex(index)),
                             static_cast<AssessmentColumn>(index.column())));
}

void tvwAssessment::Enter(const QModelIndex& index, const QString& text) {
    emit Entered(*placeOf(itemFromIndex(index)), static_cast<AssessmentColumn>(index.column()), text.toStdString());
}

void tvwAssessment::keyPressEvent(QKeyEvent* event) {
    if (event->key() == Qt::Key_Delete && event->modifiers() == Qt::NoModifier) {
        emit RemoveAsked();
    } else {
        QTreeWidget::keyPressEvent(event);
    }
}

// The names take the room that the other columns leave, and keep enough to be read in a narrow window, which scrolls.
void tvwAssessment::resizeEvent(QResizeEvent* event) {
    QTreeWidget::resizeEvent(event);
    const int others = header()->length() - header()->sectionSize(0);
    const int least = kLevels * indentation() + kLeastLetters * fontMetrics().averageCharWidth();
    header()->resizeSection(0, std::max(least, viewport()->width() - others));
}

void tvwAssessment::dragEnterEvent(QDragEnterEvent* event) {
    if (nodeOf(*event->mimeData())) event->acceptProposedAction();
}

// The base class scrolls at the edges and unfolds what the drag rests on.
void tvwAssessment::dragMoveEvent(QDragMoveEvent* event) {
    QTreeWidget::dragMoveEvent(event);
    if (!nodeOf(*event->mimeData())) return;
    event->setDropAction(Qt::CopyAction);
    event->accept();
}

void tvwAssessment::dropEvent(QDropEvent* event) {
    QDragLeaveEvent left; // ends the scrolling
    dragLeaveEvent(&left);
    const auto key = nodeOf(*event->mimeData());
    if (!key) return;
    event->setDropAction(Qt::CopyAction);
    event->accept();
    emit NodeDropped(*key, placeOf(itemAt(event->position().toPoint())));
}

} // namespace kestrane

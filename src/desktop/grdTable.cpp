#include "desktop/grdTable.h"

#include "dialogs/Palettes.h"
#include "dialogs/Words.h"
#include "views/CaptionHints.h"

#include <QApplication>
#include <QHeaderView>
#include <QPalette>

#include <algorithm>
#include <numeric>

namespace kestrane {

namespace {

constexpr int kColumnWidth = 117; // 1750 twips
constexpr int kGridLine = 1;

const QColor kOverload(HighlightColour.red, HighlightColour.green, HighlightColour.blue);

} // namespace

void IntervalTableModel::SetTable(IntervalTable table) {
    beginResetModel();
    table_ = std::move(table);
    endResetModel();
}

int IntervalTableModel::rowCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : static_cast<int>(table_.rowCount());
}

int IntervalTableModel::columnCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : static_cast<int>(table_.columnCount());
}

QVariant IntervalTableModel::data(const QModelIndex& index, int role) const {
    if (!index.isValid()) return {}; // a view copies the current cell even when there is none
    const auto row = static_cast<std::size_t>(index.row());
    switch (role) {
    case Qt::DisplayRole:
        return QString::fromStdString(table_.cell(row, static_cast<std::size_t>(index.column())));
    case Qt::TextAlignmentRole:
        return static_cast<int>(Qt::AlignCenter);
    case Qt::BackgroundRole:
        return table_.isOverloaded(row) ? QVariant(kOverload) : QVariant();
    case Qt::ForegroundRole:
        if (table_.isOverloaded(row)) return QColor(Qt::black);
        return table_.isExcluded(row) ? QVariant(QApplication::palette().color(QPalette::PlaceholderText)) : QVariant();
    case Qt::FontRole:
        if (!table_.isExcluded(row)) return {};
        {
            QFont font;
            font.setStrikeOut(true);
            return font;
        }
    case Qt::AccessibleDescriptionRole:
        if (table_.isOverloaded(row)) return loadText(session_, Text::IntervalOverloaded);
        return table_.isExcluded(row) ? QVariant(loadText(session_, Text::IntervalLeftOut)) : QVariant();
    default:
        return {};
    }
}

QVariant IntervalTableModel::headerData(int section, Qt::Orientation orientation, int role) const {
    const bool isHint = role == Qt::ToolTipRole || role == Qt::AccessibleDescriptionRole;
    if (orientation != Qt::Horizontal || (role != Qt::DisplayRole && !isHint))
        return QAbstractTableModel::headerData(section, orientation, role);
    const std::string caption = table_.caption(static_cast<std::size_t>(section));
    return shown(role == Qt::DisplayRole ? caption : captionHint(session_, caption));
}

grdTable::grdTable(const Session& session, QWidget* parent) : QTableView(parent), model_(session) {
    nameControl(*this, "grdTable", loadText(session, Text::TabIntervalsTable));
    setModel(&model_);
    setAlternatingRowColors(true);
    setWordWrap(false);
    setTabKeyNavigation(false);
    setSelectionMode(ExtendedSelection);
    verticalHeader()->hide();
    verticalHeader()->setSectionResizeMode(QHeaderView::Fixed);
    verticalHeader()->setDefaultSectionSize(tableRowHeight(fontMetrics()));
    horizontalHeader()->setHighlightSections(false);
    horizontalHeader()->setDefaultAlignment(Qt::AlignCenter);
    connect(horizontalHeader(), &QHeaderView::sectionHandleDoubleClicked, this, [this] { isSizedByUser_ = true; });
    connect(horizontalHeader(), &QHeaderView::sectionResized, this, [this] {
        if (!isFilling_ && (QApplication::mouseButtons() & Qt::LeftButton) != 0) isSizedByUser_ = true;
    });
}

void grdTable::SetTable(IntervalTable table) {
    const std::size_t columnsBefore = model_.Table().columnCount();
    model_.SetTable(std::move(table));
    if (model_.Table().columnCount() != columnsBefore) isSizedByUser_ = false;
    fillWidth();
}

void grdTable::fillWidth() {
    const int columns = model_.columnCount();
    if (isSizedByUser_ || columns == 0) return;
    std::vector<int> widths;
    for (int column = 0; column < columns; ++column) {
        const int caption = horizontalHeader()->sectionSizeHint(column);
        const int cell = model_.rowCount() > 0 ? sizeHintForIndex(model_.index(0, column)).width() + kGridLine : 0;
        widths.push_back(std::max({kColumnWidth, caption, cell}));
    }
    isFilling_ = true; // mouse buttons may be down, so width changes must not count as the user's
    int spare = std::max(0, viewport()->width() - std::accumulate(widths.begin(), widths.end(), 0));
    for (int column = 0; column < columns; ++column) {
        const int share = spare / (columns - column);
        spare -= share;
        setColumnWidth(column, widths[static_cast<std::size_t>(column)] + share);
    }
    isFilling_ = false;
}

void grdTable::resizeEvent(QResizeEvent* event) {
    QTableView::resizeEvent(event);
    fillWidth();
}

bool grdTable::HasSelection() const {
    const QItemSelection selection = selectionModel()->selection();
    return selection.size() > 1 ||
           (selection.size() == 1 && selection.first().width() * selection.first().height() > 1);
}

CopiedRows grdTable::SelectedRows() const {
    const QItemSelection selection = selectionModel()->selection();
    int left = model_.columnCount();
    int right = 0;
    std::vector<std::pair<int, int>> ranges;
    for (const QItemSelectionRange& range : selection) {
        left = std::min(left, range.left());
        right = std::max(right, range.right());
        ranges.emplace_back(range.top(), range.bottom());
    }
    std::sort(ranges.begin(), ranges.end());
    const IntervalTable& table = model_.Table();
    CopiedRows copied;
    int next = 0;
    for (const auto& [top, bottom] : ranges) {
        for (int row = std::max(top, next); row <= bottom; ++row) {
            const auto at = static_cast<std::size_t>(row);
            if (table.isOverloaded(at)) {
                ++copied.LeftOut;
                continue;
            }
            for (int column = left; column <= right; ++column) {
                if (column > left) copied.Text += '\t';
                const bool isSelected = selection.contains(model_.index(row, column));
                if (isSelected) copied.Text += table.copiedCell(at, static_cast<std::size_t>(column));
            }
            copied.Text += "\r\n";
            copied.HasExcluded = copied.HasExcluded || (left == 0 && table.isExcluded(at));
        }
        next = std::max(next, bottom + 1);
    }
    return copied;
}

} // namespace kestrane

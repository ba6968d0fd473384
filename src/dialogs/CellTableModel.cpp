#include "dialogs/CellTableModel.h"

#include "dialogs/DragOffers.h"
#include "dialogs/Words.h"
#include "views/CopyData.h"

#include <QHeaderView>
#include <QTableView>

#include <utility>

namespace kestrane {

CellTableModel::CellTableModel(CellTable table, QObject* parent) :
    QAbstractTableModel(parent), table_(std::move(table)) {}

void CellTableModel::ShowTable(CellTable table) {
    beginResetModel();
    table_ = std::move(table);
    endResetModel();
}

int CellTableModel::rowCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : static_cast<int>(table_.RowCount);
}

int CellTableModel::columnCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : static_cast<int>(table_.Captions.size());
}

QVariant CellTableModel::data(const QModelIndex& index, int role) const {
    if (!index.isValid()) return {}; // a view copies the current cell even when there is none
    if (role == Qt::TextAlignmentRole) return static_cast<int>(Qt::AlignCenter);
    if (role != Qt::DisplayRole) return {};
    return shown(table_.Cell(static_cast<std::size_t>(index.row()), static_cast<std::size_t>(index.column())));
}

QVariant CellTableModel::headerData(int section, Qt::Orientation orientation, int role) const {
    if (orientation != Qt::Horizontal || role != Qt::DisplayRole)
        return QAbstractTableModel::headerData(section, orientation, role);
    return shown(table_.Captions[static_cast<std::size_t>(section)]);
}

QTableView* readTable(CellTableModel& model, const char* name, const QString& spoken) {
    auto* const view = new QTableView;
    nameControl(*view, name, spoken);
    view->setModel(&model);
    view->setTabKeyNavigation(false);
    view->setWordWrap(false);
    view->setAlternatingRowColors(true);
    view->verticalHeader()->hide();
    view->horizontalHeader()->setHighlightSections(false);
    view->resizeColumnsToContents();
    allowDragging(
        *view, [&model] { return copiedCells(model.Table()); }, spoken.toStdString());
    if (model.rowCount({}) > 0) view->setCurrentIndex(model.index(0, 0));
    return view;
}

} // namespace kestrane

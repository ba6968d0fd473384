// A table of the core as a view of the toolkit shows it: the text of a cell is made when the cell is drawn.
#pragma once

#include "views/CellTable.h"

#include <QAbstractTableModel>

class QTableView;

namespace kestrane {

class CellTableModel : public QAbstractTableModel {
public:
    explicit CellTableModel(CellTable table, QObject* parent = nullptr);

    void ShowTable(CellTable table); // in place of the one before

    const CellTable& Table() const { return table_; }

    int rowCount(const QModelIndex& parent) const override;
    int columnCount(const QModelIndex& parent) const override;
    QVariant data(const QModelIndex& index, int role) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;

private:
    CellTable table_;
};

// A table that is read, not edited: Tab leaves it, and the arrow keys go through its cells. It can be dragged out.
QTableView* readTable(CellTableModel& model, const char* name, const QString& spoken);

} // namespace kestrane

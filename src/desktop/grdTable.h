// The grid of the "Intervals (Table)" tab: a view on an IntervalTable of the core, which makes cells when they become
// visible, so that a table of any length opens at once.
#pragma once

#include "model/Session.h"
#include "views/IntervalTable.h"

#include <QAbstractTableModel>
#include <QTableView>

namespace kestrane {

class IntervalTableModel : public QAbstractTableModel {
public:
    explicit IntervalTableModel(const Session& session) : session_(session) {}

    void SetTable(IntervalTable table);

    const IntervalTable& Table() const { return table_; }

    int rowCount(const QModelIndex& parent = {}) const override;
    int columnCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;

private:
    const Session& session_;
    IntervalTable table_;
};

class grdTable : public QTableView {
public:
    explicit grdTable(const Session& session, QWidget* parent = nullptr);

    void SetTable(IntervalTable table);

    const IntervalTable& Table() const { return model_.Table(); }

    bool HasSelection() const;       // of more cells than just the current one
    CopiedRows SelectedRows() const; // only the selected cells

protected:
    void resizeEvent(QResizeEvent* event) override;

private:
    void fillWidth(); // widens the columns when there is space left

    IntervalTableModel model_;
    bool isFilling_ = false;
    bool isSizedByUser_ = false;
};

} // namespace kestrane

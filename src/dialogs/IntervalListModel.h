// The intervals of a log as a list to choose from, each with its time and date. The texts are made when they become
// visible.
#pragma once

#include "views/RowTimes.h"

#include <QAbstractListModel>

class QComboBox;

namespace kestrane {

class IntervalListModel : public QAbstractListModel {
public:
    using QAbstractListModel::QAbstractListModel;

    void SetLog(const clsLog& log) {
        beginResetModel();
        times_ = RowTimes(log);
        count_ = static_cast<int>(log.LogIntervals.Count());
        endResetModel();
    }

    int rowCount(const QModelIndex& parent = {}) const override { return parent.isValid() ? 0 : count_; }

    QVariant data(const QModelIndex& index, int role) const override {
        if (role != Qt::DisplayRole || !index.isValid()) return {};
        return QString::fromStdString(times_.listText(static_cast<std::size_t>(index.row())));
    }

private:
    RowTimes times_;
    int count_ = 0;
};

QComboBox* intervalBox(IntervalListModel& intervals); // a box to choose an interval from; fast with any number of them

} // namespace kestrane

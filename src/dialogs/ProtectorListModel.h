// The list of protectors as a model, with the cells of ProtectorScreen, which are made again after each change. A
// figure is sorted by its number; cells without one come last.
#pragma once

#include "app/ProtectorScreen.h"
#include "dialogs/SignalColours.h"
#include "dialogs/Words.h"

#include <QAbstractTableModel>
#include <QGuiApplication>
#include <QPalette>

#include <limits>

namespace kestrane {

class ProtectorListModel : public QAbstractTableModel {
public:
    static constexpr int kSortRole = Qt::UserRole;

    explicit ProtectorListModel(const ProtectorScreen& screen) : screen_(screen) { Refresh(); }

    void Refresh() {
        beginResetModel();
        captions_ = screen_.Captions();
        cells_.clear();
        for (const clsHP& protector : screen_.Protectors())
            cells_.push_back(screen_.Cells(protector));
        endResetModel();
    }

    int rowCount(const QModelIndex& parent = {}) const override {
        return parent.isValid() ? 0 : static_cast<int>(cells_.size());
    }

    int columnCount(const QModelIndex& parent = {}) const override {
        return parent.isValid() ? 0 : static_cast<int>(captions_.size());
    }

    QVariant data(const QModelIndex& index, int role) const override {
        if (!index.isValid()) return {}; // a view copies the current cell even when there is none
        const ProtectorCell& cell =
            cells_[static_cast<std::size_t>(index.row())][static_cast<std::size_t>(index.column())];
        switch (role) {
        case Qt::DisplayRole:
            return shown(cell.Text);
        case kSortRole:
            if (cell.Number) return *cell.Number;
            return cell.Text.empty() ? QVariant(std::numeric_limits<float>::max())
                                     : QVariant(shown(cell.Text).toCaseFolded());
        case Qt::ForegroundRole:
            return cell.Verdict ? QVariant(signalColour(signalOf(*cell.Verdict), QGuiApplication::palette()))
                                : QVariant();
        case Qt::TextAlignmentRole:
            return static_cast<int>(index.column() > 1 ? Qt::AlignCenter : Qt::AlignLeft | Qt::AlignVCenter);
        default:
            return {};
        }
    }

    QVariant headerData(int section, Qt::Orientation orientation, int role) const override {
        if (orientation != Qt::Horizontal || role != Qt::DisplayRole) return {};
        return shown(captions_[static_cast<std::size_t>(section)]);
    }

private:
    const ProtectorScreen& screen_;
    std::vector<std::string> captions_;
    std::vector<std::vector<ProtectorCell>> cells_; // indexed by record
};

} // namespace kestrane

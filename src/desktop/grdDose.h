// The grid of the "Exp Calc" tab: the rows of a log's exposure calculator with their totals, edited in place. It shows
// an ExposureTable of the core and passes on what is typed, ticked, pasted, inserted and deleted. Tab and Enter move
// like in a spreadsheet; a bar under each row shows its share of the day's dose.
#pragma once

#include "explorer/ExposureEdits.h"
#include "model/Session.h"
#include "views/ExposureTable.h"

#include <QAbstractTableModel>
#include <QTableView>

#include <functional>

namespace kestrane {

// Its columns are those of the rows but for the number, which stands in the header of the row.
class ExposureModel : public QAbstractTableModel {
public:
    explicit ExposureModel(const Session& session) : session_(session) {}

    std::function<void(std::size_t row, int column, const std::string& entry)> Enter; // by ExposureColumn

    void SetTable(ExposureTable table);

    const ExposureTable& Table() const { return table_; }

    static int columnOf(const QModelIndex& index) { return index.column() + 1; } // by ExposureColumn

    bool isRow(const QModelIndex& index) const; // not the totals

    int rowCount(const QModelIndex& parent = {}) const override;
    int columnCount(const QModelIndex& parent = {}) const override;
    Qt::ItemFlags flags(const QModelIndex& index) const override;
    QVariant data(const QModelIndex& index, int role) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;
    bool setData(const QModelIndex& index, const QVariant& value, int role) override;

private:
    const std::string& cell(const QModelIndex& index) const;
    bool isIncluded(const QModelIndex& index) const;
    std::string levelNote(const QModelIndex& index) const;
    bool isMissing(const QModelIndex& index) const;

    const Session& session_;
    ExposureTable table_;
};

class grdDose : public QTableView {
    Q_OBJECT

public:
    // The log on view, null for none, is asked for whenever it is needed.
    grdDose(Session& session, std::function<clsLog*()> log, QWidget* parent = nullptr);

    void ShowRows();       // as the log has them now
    void ForgetOtherLog(); // the status bar says nothing more of a log that is not on view
    bool IsOnRow() const;
    void InsertRows();
    void DeleteRows();
    bool HasSelection() const;         // of more cells than the one that is always current
    std::string SelectionText() const; // the selected cells, tabs between them, CR LF behind rows
    void Paste();

signals:
    void CurrentRowChanged();

protected:
    bool event(QEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void closeEditor(QWidget* editor, QAbstractItemDelegate::EndEditHint hint) override;
    bool edit(const QModelIndex& index, EditTrigger trigger, QEvent* event) override;
    void currentChanged(const QModelIndex& current, const QModelIndex& previous) override;

private:
    std::size_t currentRow() const;
    void showRowsFrom(int row, int column);
    bool stepSideways(int by); // to the next cell that can be edited; false: there is none
    void stepDown(int by);
    void sizeColumns();
    void tell(const std::string& text); // in the status bar

    Session& session_;
    std::function<clsLog*()> log_;
    ExposureModel model_;
    std::string told_;               // last in the status bar
    const clsLog* toldOf_ = nullptr; // of which log; never looked into
    int tabbedFrom_ = -1;            // the column where Tab set out from, to which Enter returns
    bool isStepping_ = false;
};

} // namespace kestrane

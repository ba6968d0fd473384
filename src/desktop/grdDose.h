// The grid of the "Exp Calc" tab: the rows of a log's exposure calculator with their totals, edited in place. It shows
// an ExposureTable of the core and passes on what is typed, ticked, pasted, inserted and deleted. Tab and Enter work as
// in a spreadsheet; a bar under each row shows its share of the day's dose.
#pragma once

#include "explorer/ExposureEdits.h"
#include "model/Session.h"
#include "views/ExposureTable.h"

#include <QAbstractTableModel>
#include <QTableView>

#include <functional>

namespace kestrane {

// The columns are those of the rows without the number, which is in the header of the row.
class ExposureModel : public QAbstractTableModel {
public:
    explicit ExposureModel(const Session& session) : session_(session) {}

    std::function<void(std::size_t row, int column, const std::string& entry)> Enter; // column is an ExposureColumn

    void SetTable(ExposureTable table);

    const ExposureTable& Table() const { return table_; }

    static int columnOf(const QModelIndex& index) { return index.column() + 1; } // an ExposureColumn

    bool isRow(const QModelIndex& index) const; // false for the totals

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
    // log returns the log that is shown, or null; it is called whenever the log is needed.
    grdDose(Session& session, std::function<clsLog*()> log, QWidget* parent = nullptr);

    void ShowRows();       // as the log has them now
    void ForgetOtherLog(); // clears the message in the status bar when it is about a log that is not shown
    bool IsOnRow() const;
    void InsertRows();
    void DeleteRows();
    bool HasSelection() const;         // of more cells than just the current one
    std::string SelectionText() const; // the selected cells, with tabs between them and CR LF behind rows
    void Paste();
    void CommitCell(); // ends the editing of a cell, if there is one, with its entry

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
    void goTo(const QModelIndex& cell);
    bool stepSideways(int by); // to the next cell that can be edited; false when there is none
    void stepDown(int by);
    void sizeColumns();
    void tell(const std::string& text); // shows a text in the status bar

    Session& session_;
    std::function<clsLog*()> log_;
    ExposureModel model_;
    std::string told_;               // the last text in the status bar
    const clsLog* toldOf_ = nullptr; // the log that the text is about; never dereferenced
    int tabbedFrom_ = -1;            // the column where Tab was first pressed, to which Enter returns
    bool isStepping_ = false;
};

} // namespace kestrane

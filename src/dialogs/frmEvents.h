// The events of a log: stretches at or above a level that is typed, as a list. What is chosen in it is marked on the
// chart behind.
#pragma once

#include "platform/Clipboard.h"
#include "resources/TextNames.h"
#include "views/EventTable.h"

#include <QDialog>

#include <functional>
#include <memory>

class QDoubleSpinBox;
class QLabel;
class QTableView;

namespace kestrane {

class CellTableModel;

class frmEvents : public QDialog {
public:
    struct Owner {
        std::function<void(const RowRange& rows)> mark; // rows of the log, counted from 1
        std::function<void(const ClipboardForms& forms)> copy;
    };

    // The log, of which these are the analysed rows, must outlive the dialog.
    frmEvents(const clsLog& log, AnalysedRows rows, Owner owner, QWidget* parent);

private:
    QDoubleSpinBox* numberBox(const char* name, Text::Id label, double most);
    void find();

    const clsLog& log_;
    AnalysedRows rows_;
    Owner owner_;
    std::unique_ptr<EventTable> events_;
    CellTableModel* model_;
    QDoubleSpinBox* level_;
    QDoubleSpinBox* seconds_;
    QTableView* table_;
    QLabel* summary_;
};

} // namespace kestrane

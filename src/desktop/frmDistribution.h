// The distribution of levels of a log or of a range of it: a histogram, the same as a table, and percentiles, by a
// class width and percentages that the user chooses; copied and printed.
#pragma once

#include "desktop/PrintedChart.h"
#include "model/Session.h"
#include "platform/Clipboard.h"
#include "views/Distribution.h"
#include "views/EventTable.h"

#include <QDialog>

#include <functional>

class QDoubleSpinBox;
class QLabel;
class QLineEdit;
class QTableView;

namespace kestrane {

class CellTableModel;
class chaTab;

class frmDistribution : public QDialog {
    Q_OBJECT

public:
    struct Owner {
        std::function<void(const ClipboardForms& forms)> copy;
        PrintChart print;
    };

    // rows are analysed rows of the log, which must outlive the dialog. place says which part of the log they are;
    // empty for all of it.
    frmDistribution(const clsLog& log, std::vector<AnalysedRow> rows, std::string place, Owner owner, QWidget* parent);

private:
    void makeFields();
    void showClasses();
    void showPercentiles();
    CellTable table() const;
    TypedNumbers typedPercents() const;
    std::string percentiles() const;

    const clsLog& log_;
    const std::vector<AnalysedRow> rows_;
    const std::string place_;
    Owner owner_;
    QDoubleSpinBox* width_;
    QLineEdit* percents_;
    QLabel* levels_;
    chaTab* chart_;
    CellTableModel* model_;
    QTableView* table_;
};

} // namespace kestrane

// Logs of the open files side by side: which of them, on which axis, as a chart and a table; copied and printed.
#pragma once

#include "desktop/PrintedChart.h"
#include "model/Session.h"
#include "platform/Clipboard.h"
#include "views/LogComparison.h"

#include <QDialog>

#include <functional>
#include <vector>

class QListWidget;
class QTableView;

namespace kestrane {

class CellTableModel;
class chaTab;

class frmCompare : public QDialog {
    Q_OBJECT

public:
    struct Owner {
        std::function<void(const ClipboardForms& forms)> copy;
        PrintChart print;
    };

    // first is the log that is chosen at first. The files must stay open as long as the dialog is.
    frmCompare(const Session& session, const clsLog* first, Owner owner, QWidget* parent);

private:
    struct Offered {
        const clsLog* Log;
        const clsFile* File;
    };

    void fillList(const clsLog* first);
    QWidget* axes();
    void choose();
    void showChosen();
    PrintedChart printed() const;

    const Session& session_;
    Owner owner_;
    std::vector<Offered> offered_; // by row of the list
    std::vector<ComparedLog> compared_;
    CompareBy by_ = CompareBy::TimeOfDay;
    QListWidget* list_;
    chaTab* chart_;
    CellTableModel* model_;
    QTableView* table_;
};

} // namespace kestrane

// Writes rows or logs as a table for other programs: the user chooses what, the format, the columns and the name, with
// the first lines in view. What is offered and done is decided by ExportDialog.
#pragma once

#include "app/ExportDialog.h"

#include <QDialog>

class QComboBox;
class QLabel;
class QLineEdit;
class QListWidget;
class QListWidgetItem;
class QPushButton;
class QTableWidget;

namespace kestrane {

class frmExport : public QDialog {
public:
    frmExport(Session& session, ExportSubject subject, QWidget* parent);

    void accept() override;

private:
    QWidget* choices();
    QWidget* columns();
    QWidget* preview();
    QWidget* target();
    void showTable();
    void showTicks();
    void showName();
    void tick(const QListWidgetItem& item);
    void tickAll(bool areTicked);
    void browse();

    Session& session_;
    ExportDialog dialog_;
    QComboBox* cboContent_;
    QComboBox* cboFormat_;
    QListWidget* lstColumns_;
    QTableWidget* grdPreview_;
    QLabel* lblCounts_;
    QLineEdit* txtName_;
    QPushButton* cmdOK_;
};

} // namespace kestrane

// The tool window that finds a node of the tree. It stays open beside the explorer while the user continues to work.
// What is searched, and what happens with a match, is decided by its caller.
#pragma once

#include "explorer/Find.h"
#include "model/Session.h"

#include <QDialog>

#include <functional>

class QCheckBox;
class QComboBox;
class QLineEdit;
class QPushButton;

namespace kestrane {

class frmFind : public QDialog {
public:
    frmFind(const Session& session, std::function<void()> findNext, QWidget* parent);

    // Shows the window to the right of the explorer, within the screen. When it is open already, it comes to the front
    // without moving.
    void ShowFind(const QRect& explorer);

    FindEntry Entry() const;

private:
    QLineEdit* txtFindWhat_;
    QComboBox* cboSearch_;
    QCheckBox* chkMatchCase_;
    QCheckBox* chkFindEntire_;
    QPushButton* cmdFind_;
};

} // namespace kestrane

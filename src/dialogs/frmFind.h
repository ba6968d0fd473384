// The tool window that finds a node of the tree. It stays open beside the explorer while the user goes on working; what
// is searched, and what a hit does, is its caller's.
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

    // Shows it to the right of a window, on the screen; one that is open already comes to the front where it is.
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

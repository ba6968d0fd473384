// The window of the protector database: the list with sorting and a search box, and beside it the protector that is
// selected in the list. It is used to maintain the database, or to choose a protector to compare a log with. What it
// shows and does is decided in app/ProtectorScreen.
#pragma once

#include "app/ProtectorScreen.h"
#include "dialogs/ProtectorListModel.h"

#include <QDialog>
#include <QSortFilterProxyModel>

#include <functional>

class QCheckBox;
class QComboBox;
class QFrame;
class QLabel;
class QLineEdit;
class QPushButton;
class QTableView;

namespace kestrane {

class ProtectorBoxes;

class frmHPD : public QDialog {
public:
    using Download = std::function<bool(QWidget* parent)>; // true when the database has been replaced

    static void ShowMaintenanceScreen(Session& session, const Download& download, QWidget* parent);

    // The window is placed near the corner of the parent's window. The protector with the given name is selected at
    // first. Nothing when the user declines to choose.
    static std::optional<ProtectorChoice> ShowHPDComparisonScreen(Session& session, const clsLog& log,
                                                                  const std::string& chosen, const Download& download,
                                                                  QWidget* parent);

    void accept() override;
    void reject() override;

private:
    enum class Editing { Nothing, New, Selected };

    frmHPD(ProtectorScreen& screen, const Download& download, QWidget* parent);

    QWidget* damageBar();
    QWidget* listSide();
    QWidget* boxesSide();
    QWidget* buttonRow();
    std::optional<std::size_t> selected() const; // the index of the record
    void select(std::optional<std::size_t> record);
    void showSelected();
    void edit(Editing what);
    void enableControls();
    void deleteSelected();
    void downloadDatabase();
    void listChanged(std::optional<std::size_t> record);

    ProtectorScreen& screen_;
    const Download& download_;
    Editing editing_ = Editing::Nothing;
    std::optional<ProtectorChoice> choice_;
    ProtectorListModel model_;
    QSortFilterProxyModel sorted_;
    QFrame* fraDamage_;
    QLabel* lblDamage_;
    QLineEdit* txtSearch_;
    QTableView* lvwHPD_;
    ProtectorBoxes* boxes_;
    QCheckBox* chkUS_;
    QComboBox* cboCorrectionFactor_;
    QPushButton *cmdAdd_, *cmdChange_, *cmdDelete_, *cmdDownload_, *cmdOK_, *cmdCancel_;
};

} // namespace kestrane

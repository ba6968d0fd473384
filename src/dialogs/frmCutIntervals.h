// The interval selection wizard: a welcome page, then a page for each range of intervals. It lays out what CutWizard
// decides.
#pragma once

#include "dialogs/IntervalListModel.h"
#include "explorer/CutWizard.h"
#include "model/Session.h"

#include <QDialog>

#include <array>
#include <optional>

class QButtonGroup;
class QLabel;
class QListView;
class QPushButton;
class QStackedWidget;

namespace kestrane {

class frmCutIntervals : public QDialog {
public:
    // The finished wizard, to be stored in the log; nothing when the user cancels.
    static std::optional<CutWizard> getIntervals(const Session& session, const clsLog& log, QWidget* parent);

private:
    frmCutIntervals(const Session& session, const clsLog& log, QWidget* parent);

    QWidget* welcomePage();
    QWidget* rangePage();
    QWidget* buttons();
    void showStep();
    void showButtons();

    const Session& session_;
    CutWizard wizard_;
    IntervalListModel intervals_;
    QStackedWidget* picNav_;
    QLabel* lblTitle_;
    std::array<QListView*, 2> lstIntervals_{}; // from, to
    QButtonGroup* optInclude_;
    std::array<QPushButton*, 2> cmdNav_{}; // back, next
    QPushButton* cmdFinish_;
    QPushButton* cmdClear_;
};

} // namespace kestrane

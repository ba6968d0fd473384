// The protectors of the database for a log, with the best first: levels by every method, the verdict as symbol, word
// and colour, and a chart of the best. The selected one can be taken into the comparison; two are estimated together.
#pragma once

#include "app/ProtectorScreen.h"
#include "model/Session.h"
#include "printing/Printer.h"
#include "protection/RankTable.h"

#include <QDialog>

#include <optional>

class QDoubleSpinBox;
class QLabel;
class QPushButton;
class QTableWidget;

namespace kestrane {

class chaTab;

class frmRank : public QDialog {
public:
    // Returns nothing when the user cancels. The log and its file must outlive the dialog.
    static std::optional<ProtectorChoice> Choose(Session& session, const clsFile& file, const clsLog& log,
                                                 CorrectionKind iCorrectionFactor, QWidget* parent);

private:
    frmRank(Session& session, const clsFile& file, const clsLog& log, CorrectionKind iCorrectionFactor,
            QWidget* parent);

    QWidget* topBar();
    QWidget* bottomBar();
    void showRanks();
    void showSelected();
    void select(const std::vector<const clsHP*>& chosen);
    std::vector<std::size_t> selected() const; // rows of the table
    void copy() const;
    void print();

    Session& session_;
    const clsFile& file_;
    const clsLog& log_;
    const CorrectionKind correction_;
    RankTable ranks_;
    QDoubleSpinBox* spnWorn_;
    QTableWidget* grdRanks_;
    chaTab* chart_;
    QLabel* lblBoth_;
    QPushButton* cmdOK_;
};

} // namespace kestrane

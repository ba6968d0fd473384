// Asks for the calibration of a measurement and for the offset of its levels. What an entry must be, and what it does
// to the log, is decided in explorer/CalibrationEdits.
#pragma once

#include "explorer/CalibrationEdits.h"
#include "model/Session.h"

#include <QDialog>

class QLabel;
class QLineEdit;

namespace kestrane {

class frmCalibration : public QDialog {
public:
    // Nothing when the user cancels.
    static std::optional<Calibration> Ask(const clsLog& log, QWidget* parent);

    void accept() override;

private:
    frmCalibration(const clsLog& log, QWidget* parent);

    CalibrationEntries entries() const;
    void showDrift();

    Session& session_;
    QLineEdit* before_;
    QLineEdit* after_;
    QLineEdit* offset_;
    QLabel* drift_;
    Calibration typed_;
};

} // namespace kestrane

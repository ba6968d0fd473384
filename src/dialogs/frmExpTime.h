// Asks for the exposure time of a log. What an entry must be and what a change does is decided in calc/ExposureTime.
#pragma once

#include "model/Session.h"

#include <QDialog>

class QLabel;
class QLineEdit;

namespace kestrane {

// A box for an exposure time, with hours in it. While it is edited, the label beside it says what is understood; when
// it is left, it shows that in full.
QLineEdit* exposureTimeBox(const Session& session, float hours, QLabel& understood);

class frmExpTime : public QDialog {
public:
    // Shows the default; the time that the log was measured for, in hours, is the least that is taken (0: not known).
    // True when a time has been accepted; a log of the Brevik family then has it, and its figures follow.
    static bool getExpTime(Session& session, float sngDefaultShiftLength, float sngMeasurementTime, clsLog& log,
                           QWidget* parent);

    void accept() override;

private:
    frmExpTime(Session& session, float shiftLength, float measurementTime, QWidget* parent);

    Session& session_;
    float measurementTime_;
    float hours_ = 0;
    QLineEdit* txtExposureTime_;
};

} // namespace kestrane

// Asks for the exposure time of a log. What an entry must be, and what a change does, is decided in calc/ExposureTime.
#pragma once

#include "model/Session.h"

#include <QDialog>

class QLabel;
class QLineEdit;

namespace kestrane {

// A box for an exposure time that starts with hours. While it is edited, the label understood shows how the entry is
// understood; when it is left, the box shows that time in full.
QLineEdit* exposureTimeBox(const Session& session, float hours, QLabel& understood);

class frmExpTime : public QDialog {
public:
    // Starts with the default. sngMeasurementTime, the time in hours that the log was measured for (0 when not known),
    // is the least that is accepted. Returns true when the user has confirmed a time; changeExposureTime then decides
    // what it does to the log.
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

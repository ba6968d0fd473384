// How a download stands, with a way to end it. Stands above the frame, which takes no commands meanwhile, and runs no
// loop of its own: whoever downloads keeps the event pump going. What it shows is decided in app/ProgressReport.
#pragma once

#include "app/ProgressReport.h"
#include "model/Session.h"

#include <QDialog>

class QCheckBox;
class QLabel;
class QProgressBar;
class QPushButton;

namespace kestrane {

class frmProgress : public QDialog {
public:
    frmProgress(const Session& session, QWidget* parent);

    void Show(const ProgressWords& words); // comes up when it is not there

    bool IsCancelled() const { return isCancelled_; }

    // Stands once more, with the last figures, behind a download that failed, until it is closed. True when the user
    // ticked that the transcript is to be kept.
    bool AskTranscript();

    void reject() override; // Cancel, Escape, and closing the window

private:
    const Session& session_;
    bool isCancelled_ = false;
    bool hasEnded_ = false;
    QLabel* lblProgress_;
    QProgressBar* barProgress_;
    QLabel* lblLog_;
    QLabel* lblReceived_;
    QLabel* lblTimeLeft_;
    QCheckBox* chkTranscript_;
    QPushButton* cmdCancel_;
};

} // namespace kestrane

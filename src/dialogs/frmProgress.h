// Shows the progress of a download and lets the user cancel it. The dialog is shown above the frame, which accepts no
// commands meanwhile. It runs no event loop of its own: the download keeps the event pump going. What it shows is
// decided in app/ProgressReport.
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

    void Show(const ProgressWords& words); // shows the dialog when it is hidden

    bool IsCancelled() const { return isCancelled_; }

    // Shows the dialog again with the last figures after a failed download, until it is closed. Returns true when the
    // user has ticked that the transcript is to be kept.
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

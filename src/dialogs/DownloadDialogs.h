// The dialogs of a download on the desktop: frmProgress while it runs, frmAcquire to choose logs and, after a failure,
// the offer to keep the transcript. An object serves one download.
#pragma once

#include "app/ProgressReport.h"
#include "download/DownloadUser.h"
#include "download/Transcript.h"
#include "model/Session.h"

#include <memory>
#include <string>

class QWidget;

namespace kestrane {

class frmProgress;

class DownloadDialogs : public DownloadUser {
public:
    DownloadDialogs(Session& session, const MonotonicClock& clock, QWidget* parent);
    ~DownloadDialogs() override;

    void ShowProgress(const DownloadProgress& progress) override;
    void CloseProgress() override;
    std::optional<AcquireChoice> ChooseLogs(const AcquireList& list) override;
    bool IsCancelled() const override;

    TranscriptSink Transcript();

    // Offers to save what went over the line. Does nothing when the user cancelled or nothing went over the line.
    void OfferTranscript();

private:
    void saveTranscript();

    Session& session_;
    QWidget* parent_;
    ProgressReport report_;
    std::unique_ptr<frmProgress> progress_;
    std::string transcript_;
    bool isCancelled_ = false; // the user cancelled in the list of logs
    bool hasTraffic_ = false;
};

} // namespace kestrane

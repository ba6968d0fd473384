// The person before a download on the desktop: frmProgress while it runs, frmAcquire to choose logs, and behind a
// failure the offer to keep the transcript. Made for one download.
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

    // Offers to save what went over the line. Nothing when the user had cancelled, or nothing went over it.
    void OfferTranscript();

private:
    void saveTranscript();

    Session& session_;
    QWidget* parent_;
    ProgressReport report_;
    std::unique_ptr<frmProgress> progress_;
    std::string transcript_;
    bool isCancelled_ = false; // in the list of logs
    bool hasTraffic_ = false;
};

} // namespace kestrane

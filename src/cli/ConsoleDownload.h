// Stands for the user during a download on the command line: the logs are those that the call names, Cancel is an
// interrupt (Ctrl+C), and the progress is one line on standard error when that is a terminal. An object serves one
// download.
#pragma once

#include "app/ProgressReport.h"
#include "download/DownloadUser.h"
#include "model/Session.h"
#include "platform/Interrupt.h"

#include <optional>
#include <string>
#include <vector>

namespace kestrane {

// Rows of the list of logs, counted from 1; nothing for all rows.
using ChosenRows = std::optional<std::vector<int>>;

class ConsoleDownload : public DownloadUser {
public:
    ConsoleDownload(Session& session, const MonotonicClock& clock, bool showsProgress, ChosenRows rows);

    void ShowProgress(const DownloadProgress& progress) override;
    void CloseProgress() override;
    std::optional<AcquireChoice> ChooseLogs(const AcquireList& list) override;
    bool IsCancelled() const override;

private:
    Session& session_;
    ProgressReport report_;
    bool showsProgress_;
    ChosenRows rows_;
    Interrupt interrupt_;
};

} // namespace kestrane

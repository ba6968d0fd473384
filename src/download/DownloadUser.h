// What a download needs from the user: showing progress, choosing logs, cancelling. The desktop program shows
// frmProgress and frmAcquire, the command line answers from its options, tests answer from a script. Called on the
// owner thread.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace kestrane {

// The progress of a download. Label is the text that the protocol sets; a number is 0 when it is not known.
struct DownloadProgress {
    std::string Label;
    std::int64_t BytesReceived = 0; // of the whole download
    int Log = 0;                    // the log that is being read, counted from 1
    int Logs = 0;                   // the number of logs chosen
    std::int64_t LogBytes = 0;      // of this log: received, and in all
    std::int64_t LogBytesTotal = 0;
    int SilentSeconds = 0; // since the last byte, in a read that has no time limit
};

// A list of logs to choose from; every row is selected at first.
struct AcquireList {
    std::string InsName;
    std::string InsSerial;
    std::vector<std::string> Rows;
    bool HasOctaveChoice = false; // chkOctaves is shown; it is enabled and ticked only when CanFetchOctaves
    bool CanFetchOctaves = false;
    std::vector<std::optional<std::int64_t>> Seconds; // how long each log is, where the instrument says it beforehand
};

struct AcquireChoice {
    std::vector<bool> Selected; // a flag for each row
    bool FetchOctaves = false;
};

class DownloadUser {
public:
    virtual ~DownloadUser() = default;

    virtual void ShowProgress(const DownloadProgress& progress) = 0;
    virtual void CloseProgress() = 0;

    // Returns nothing when the user cancels.
    virtual std::optional<AcquireChoice> ChooseLogs(const AcquireList& list) = 0;

    virtual bool IsCancelled() const = 0; // whether Cancel has been pressed; asked in every wait
};

} // namespace kestrane

// What a download asks of the person before it: to see how it goes, to choose logs, to cancel. The desktop program
// shows frmProgress and frmAcquire, the command line answers from its options, tests by script. Called on the owner
// thread.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace kestrane {

// How a download stands. Label is the text that the protocol sets; the numbers are 0 where nothing is known of them.
struct DownloadProgress {
    std::string Label;
    std::int64_t BytesReceived = 0; // of the whole download
    int Log = 0;                    // the one being read, from 1
    int Logs = 0;                   // chosen
    std::int64_t LogBytes = 0;      // of this log, received and in all
    std::int64_t LogBytesTotal = 0;
};

// A list of logs to choose from; every row is selected at first.
struct AcquireList {
    std::string InsName;
    std::string InsSerial;
    std::vector<std::string> Rows;
    bool HasOctaveChoice = false; // chkOctaves is shown; it can be ticked, and is, where octave data can be fetched
    bool CanFetchOctaves = false;
};

struct AcquireChoice {
    std::vector<bool> Selected; // a flag a row
    bool FetchOctaves = false;
};

class DownloadUser {
public:
    virtual ~DownloadUser() = default;

    virtual void ShowProgress(const DownloadProgress& progress) = 0;
    virtual void CloseProgress() = 0;

    // Nothing when the user cancels.
    virtual std::optional<AcquireChoice> ChooseLogs(const AcquireList& list) = 0;

    virtual bool IsCancelled() const = 0; // Cancel has been pressed; asked in every wait
};

} // namespace kestrane

// Questions and answers over the serial line: framing, the two ways in which a reply ends, the retry question, progress
// and transcript. One transport lives as long as one download; it opens and closes the port. What the bytes mean is
// the protocols' business.
// Every wait sleeps on the event pump and ends within 50 ms of a cancel.
#pragma once

#include "download/DownloadUser.h"
#include "download/Transcript.h"
#include "model/Session.h"
#include "platform/Comm.h"
#include "platform/MonotonicClock.h"

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

namespace kestrane {

// What a download works with.
struct DownloadServices {
    Session& session;
    Comm& comm;
    DownloadUser& user;
    const MonotonicClock& clock;
    TranscriptSink transcript; // empty: none is kept
};

// Words that stand for an outcome, as replies and as messages.
constexpr std::string_view kReplyError = "ERROR";
constexpr std::string_view kNoResponse = "NORESPONSE";
constexpr std::string_view kNoLogs = "0";

// Ends the whole download from wherever it stands; nothing read so far is kept. Caught within this folder. Message is
// kReplyError, kNoLogs, a text for people, or empty after a cancel.
struct DownloadEnded {
    std::string Message;
};

// A command that begins with this byte is raw: the rest goes out as it stands.
constexpr char kRaw = '\xAC';
std::string rawCommand(std::string_view bytes);

// The bytes of a command. A text command is wrapped as STX, its length as four hexadecimal digits, itself, "00", ETX.
// No frame carries a checksum.
std::string FrameCommand(std::string_view command);

class Transport {
public:
    explicit Transport(const DownloadServices& services);
    ~Transport(); // closes the port
    Transport(const Transport&) = delete;
    Transport& operator=(const Transport&) = delete;

    Session& session() const { return services_.session; }

    Comm& comm() const { return services_.comm; }

    bool IsCancelled() const { return isCancelled_ || services_.user.IsCancelled(); }

    void Cancel() { isCancelled_ = true; }

    void OpenPort(const PortInfo& port); // closes the one before; raises the system's error
    void ClosePort();
    void SetLine(const std::string& settings);

    // A reply ends at 1.5 seconds of silence. Without any, the command is sent up to retries times in all; then,
    // silent: the port is closed and the reply is kNoResponse; else the user is asked whether to try again. Empty when
    // cancelled. Raises DownloadEnded with the port's text when the line goes away.
    std::string SendCommand(std::string_view command, bool silent, int retries);

    // A reply ends when count bytes are in, or with the word ERROR and 1.5 seconds of silence; there is no other limit
    // of time. May hold more than count bytes. Empty when cancelled.
    std::string SendCommandCounted(std::string_view command, std::size_t count);

    void SendOnly(std::string_view command); // reads no reply; comes back when the line has had time to take it all

    // The same for the protocols: the user is asked after three tries; kReplyError and a cancel end the download.
    std::string Ask(std::string_view command);
    std::string AskCounted(std::string_view command, std::size_t count);

    // The dialog that chooses logs. Ends the download when the user cancels, or wants none of what there is; with
    // kNoLogs when there is nothing to want.
    AcquireChoice ChooseLogs(const AcquireList& list);

    // Runs the pump until done() is true. Ends the download when cancelled.
    template <class Done>
    void WaitUntil(Done done) {
        while (!done()) {
            if (IsCancelled()) throw DownloadEnded{};
            rest();
        }
    }

    void ShowLabel(const std::string& label);
    void CountLogs(int logs); // chosen
    // The next log; bytesTotal: how many bytes are to come of it, 0 when nobody knows.
    void BeginLog(const std::string& label, std::int64_t bytesTotal);

    const Transcript& transcript() const { return transcript_; }

private:
    void send(const std::string& frame);
    bool take(std::string& reply); // true when there was something
    bool receiveUntilSilence(std::string& reply);
    bool askRetry();
    void rest();
    void showProgress();
    float seconds() const;

    DownloadServices services_;
    Transcript transcript_;
    DownloadProgress progress_;
    std::chrono::milliseconds start_, shown_;
    bool isCancelled_ = false;
};

} // namespace kestrane

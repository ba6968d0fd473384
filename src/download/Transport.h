// Questions and answers over the serial line: framing, the two ways in which a reply ends, the question whether to
// retry, progress and transcript. A transport lives as long as one download; it opens and closes the port. What the
// bytes mean is left to the protocols. Every wait sleeps on the event pump and ends within 50 ms after a cancel.
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
    TranscriptSink transcript; // empty when no transcript is recorded
};

// Words that stand for an outcome, as replies and as messages.
constexpr std::string_view kReplyError = "ERROR";
constexpr std::string_view kNoResponse = "NORESPONSE";
constexpr std::string_view kNoLogs = "0";

// Thrown to end the whole download; nothing read so far is kept. It is caught within this folder. Message is
// kReplyError, kNoLogs, a text for the user, or empty after a cancel.
struct DownloadEnded {
    std::string Message;
};

// A command that begins with this byte is raw: the rest of it is sent unchanged.
constexpr char kRaw = '\xAC';
std::string rawCommand(std::string_view bytes);

// The bytes that are sent for a command. A text command is wrapped: STX, its length as four hexadecimal digits, the
// command, "00", ETX. No frame carries a checksum.
std::string FrameCommand(std::string_view command);

// What the user has chosen on an instrument, and what of it is still to be read. It outlives the transport, so that a
// download that broke off can be taken up again with the log that failed.
struct LogsToRead {
    AcquireList List;
    std::optional<AcquireChoice> Left; // the logs, and the octaves, that have not been read; nothing before the choice
    int Chosen = 0, Read = 0;          // numbers of logs
    std::string Messages;              // about logs that could not be read, a line each

    bool IsAnythingLeft() const;
};

class Transport {
public:
    Transport(const DownloadServices& services, LogsToRead& logs);
    ~Transport(); // closes the port
    Transport(const Transport&) = delete;
    Transport& operator=(const Transport&) = delete;

    Session& session() const { return services_.session; }

    Comm& comm() const { return services_.comm; }

    bool IsCancelled() const { return isCancelled_ || services_.user.IsCancelled(); }

    void Cancel() { isCancelled_ = true; }

    void OpenPort(const PortInfo& port); // closes an open port first; raises the system's error
    void ClosePort();
    void SetLine(const std::string& settings);

    // Sends a command and returns the reply, which ends at 1.5 seconds of silence. When nothing comes, the command is
    // sent again, up to retries times in all. After that, with silent, the port is closed and kNoResponse is returned;
    // without it, the user is asked whether to try again. Returns an empty text when cancelled. Raises DownloadEnded
    // with the port's text when the line goes away.
    std::string SendCommand(std::string_view command, bool silent, int retries);

    // The same, but the reply ends when count bytes have come, or with the word ERROR followed by 1.5 seconds of
    // silence; there is no other time limit. The reply may contain more than count bytes. Empty when cancelled.
    std::string SendCommandCounted(std::string_view command, std::size_t count);

    // Reads no reply; returns when the line has had the time to send everything.
    void SendOnly(std::string_view command);

    // Forms of the two for the protocols: the user is asked after three tries; a reply of kReplyError and a cancel end
    // the download.
    std::string Ask(std::string_view command);
    std::string AskCounted(std::string_view command, std::size_t count);

    // Shows the dialog that chooses logs and returns what is to be read. When the user has chosen before, that is what
    // is left of the choice. Ends the download when the user cancels or chooses nothing; ends it with kNoLogs when
    // there is nothing to choose, and with a text when the list is not the one that the user chose from.
    AcquireChoice ChooseLogs(const AcquireList& list);

    // Runs the pump until done() is true. Ends the download when it is cancelled.
    template <class Done>
    void WaitUntil(Done done) {
        while (!done()) {
            if (IsCancelled()) throw DownloadEnded{};
            rest();
        }
    }

    void Pause(); // a second, in which a line that has gone away may come back

    void ShowLabel(const std::string& label);
    // Begins the next log. bytesTotal is the number of bytes to come, 0 when it is not known.
    void BeginLog(const std::string& label, std::int64_t bytesTotal);
    void EndLog(std::size_t row); // the log of this row of the list is whole, and not to be read again
    void EndOctaves();            // the same of the octaves
    void AddMessage(const std::string& log, const std::string& why); // about a log that cannot be read

    const Transcript& transcript() const { return transcript_; }

private:
    void send(const std::string& frame);
    bool take(std::string& reply); // returns whether bytes were waiting
    bool receiveUntilSilence(std::string& reply);
    bool askRetry();
    void rest();
    void showProgress();
    float seconds() const;

    void waitFor(std::chrono::milliseconds time);
    void takeUpChoice(const AcquireList& list);

    DownloadServices services_;
    LogsToRead& logs_;
    Transcript transcript_;
    DownloadProgress progress_;
    std::chrono::milliseconds start_, shown_;
    bool isCancelled_ = false;
};

} // namespace kestrane

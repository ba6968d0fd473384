#include "download/Transport.h"

#include "platform/RuntimeError.h"

#include <algorithm>
#include <array>
#include <cstdio>

namespace kestrane {

namespace {

constexpr char kStx = '\x02';
constexpr char kEtx = '\x03';
constexpr std::string_view kCheckField = "00";
constexpr float kSilence = 1.5F;              // seconds
constexpr std::chrono::milliseconds kNap{20}; // between two looks at the line
constexpr std::chrono::milliseconds kShowEvery{100};
constexpr std::chrono::milliseconds kSending{300}; // enough for the longest frame at 2400 baud
constexpr std::chrono::milliseconds kPause{1000};
constexpr int kTries = 3;

} // namespace

std::string rawCommand(std::string_view bytes) {
    return kRaw + std::string(bytes);
}

std::string FrameCommand(std::string_view command) {
    if (command.starts_with(kRaw)) return std::string(command.substr(1));
    std::array<char, 24> length{};
    std::snprintf(length.data(), length.size(), "%04zX", command.size());
    return kStx + std::string(length.data()).append(command).append(kCheckField) + kEtx;
}

bool LogsToRead::IsAnythingLeft() const {
    return Left && (Left->FetchOctaves || std::ranges::find(Left->Selected, true) != Left->Selected.end());
}

Transport::Transport(const DownloadServices& services, LogsToRead& logs) :
    services_(services),
    logs_(logs),
    transcript_(services.clock, services.transcript),
    start_(services.clock.now()),
    shown_(start_ - kShowEvery) {}

Transport::~Transport() {
    ClosePort();
}

void Transport::OpenPort(const PortInfo& port) {
    ClosePort();
    transcript_.Note("port " + std::to_string(port.Number) + " " + port.Device);
    comm().CommPort(port.Number);
    comm().Open();
}

void Transport::ClosePort() {
    if (comm().IsOpen()) comm().Close();
}

void Transport::SetLine(const std::string& settings) {
    transcript_.Note("settings " + settings);
    comm().Settings(settings);
}

std::string Transport::SendCommand(std::string_view command, bool silent, int retries) {
    const std::string frame = FrameCommand(command);
    for (int attempts = 0;;) {
        send(frame);
        std::string reply;
        if (!receiveUntilSilence(reply)) return {};
        if (!reply.empty()) return reply;
        if (++attempts < retries) continue;
        if (silent) {
            ClosePort();
            return std::string(kNoResponse);
        }
        if (!askRetry()) {
            Cancel();
            return {};
        }
        attempts = 0;
    }
}

std::string Transport::SendCommandCounted(std::string_view command, std::size_t count) {
    send(FrameCommand(command));
    std::string reply;
    for (float last = seconds();;) {
        if (IsCancelled()) return {};
        if (take(reply)) last = seconds();
        progress_.SilentSeconds = static_cast<int>(seconds() - last);
        if (reply.size() >= count) return reply;
        if (reply == kReplyError && seconds() > last + kSilence) return reply;
        rest();
    }
}

void Transport::SendOnly(std::string_view command) {
    send(FrameCommand(command));
    waitFor(kSending);
}

void Transport::Pause() {
    waitFor(kPause);
}

void Transport::waitFor(std::chrono::milliseconds time) {
    const std::chrono::milliseconds begin = services_.clock.now();
    WaitUntil([&] { return services_.clock.now() - begin >= time; });
}

std::string Transport::Ask(std::string_view command) {
    std::string reply = SendCommand(command, false, kTries);
    if (IsCancelled()) throw DownloadEnded{};
    if (reply == kReplyError) throw DownloadEnded{reply};
    return reply;
}

std::string Transport::AskCounted(std::string_view command, std::size_t count) {
    std::string reply = SendCommandCounted(command, count);
    if (IsCancelled()) throw DownloadEnded{};
    if (reply == kReplyError) throw DownloadEnded{reply};
    return reply;
}

AcquireChoice Transport::ChooseLogs(const AcquireList& list) {
    if (logs_.Left) {
        takeUpChoice(list);
        return *logs_.Left;
    }
    std::optional<AcquireChoice> choice = services_.user.ChooseLogs(list);
    if (!choice) Cancel();
    if (IsCancelled()) throw DownloadEnded{};
    choice->Selected.resize(list.Rows.size());
    const auto selected = std::count(choice->Selected.begin(), choice->Selected.end(), true);
    if (selected == 0 && !choice->FetchOctaves) {
        if (list.Rows.empty()) throw DownloadEnded{std::string(kNoLogs)};
        Cancel();
        throw DownloadEnded{};
    }
    progress_.Logs = logs_.Chosen = static_cast<int>(selected);
    logs_.List = list;
    logs_.Left = choice;
    logs_.Left->FetchOctaves = choice->FetchOctaves && list.CanFetchOctaves;
    return *std::move(choice);
}

// Logs are asked for by their place in the list, so only the same list gives the same logs.
void Transport::takeUpChoice(const AcquireList& list) {
    const AcquireList& before = logs_.List;
    if (list.InsName != before.InsName || list.InsSerial != before.InsSerial || list.Rows != before.Rows)
        throw DownloadEnded{session().LoadText(Text::OtherLogsOnInstrument)};
    progress_.Logs = logs_.Chosen;
    progress_.Log = logs_.Read;
}

void Transport::ShowLabel(const std::string& label) {
    transcript_.Note(label);
    progress_.Label = label;
    showProgress();
}

void Transport::BeginLog(const std::string& label, std::int64_t bytesTotal) {
    ++progress_.Log;
    progress_.LogBytes = 0;
    progress_.LogBytesTotal = bytesTotal;
    ShowLabel(label);
}

void Transport::EndLog(std::size_t row) {
    logs_.Left->Selected.at(row) = false;
    ++logs_.Read;
    transcript_.Note(kReadToEnd);
}

void Transport::EndOctaves() {
    logs_.Left->FetchOctaves = false;
    transcript_.Note(kReadToEnd);
}

void Transport::AddMessage(const std::string& log, const std::string& why) {
    if (!logs_.Messages.empty()) logs_.Messages += "\r\n";
    logs_.Messages.append(log).append(": ").append(why);
}

void Transport::send(const std::string& frame) {
    std::string late; // bytes that came too late for the question before
    take(late);
    comm().Flush();
    transcript_.Sent(frame);
    try {
        comm().Output(frame);
    } catch (const RuntimeError& error) {
        const std::string fault = comm().Fault();
        throw DownloadEnded{fault.empty() ? std::to_string(error.Number) + ": " + error.what() : fault};
    }
}

bool Transport::take(std::string& reply) {
    if (comm().InBufferCount() == 0) {
        if (std::string fault = comm().Fault(); !fault.empty()) throw DownloadEnded{std::move(fault)};
        return false;
    }
    const std::string bytes = comm().Input();
    transcript_.Received(bytes);
    reply += bytes;
    progress_.BytesReceived += static_cast<std::int64_t>(bytes.size());
    progress_.LogBytes += static_cast<std::int64_t>(bytes.size());
    return true;
}

bool Transport::receiveUntilSilence(std::string& reply) {
    for (float last = seconds();;) {
        if (IsCancelled()) return false;
        if (take(reply)) last = seconds();
        if (seconds() > last + kSilence) return true;
        rest();
    }
}

bool Transport::askRetry() {
    return session().ShowMessage(session().LoadText(Text::AskTryAgain), kButtonsRetryCancel | kIconExclamation,
                                 session().LoadText(Text::ErrorDownloading)) == Button::Retry;
}

void Transport::rest() {
    session().pump.wait(kNap);
    if (services_.clock.now() - shown_ >= kShowEvery) showProgress();
}

void Transport::showProgress() {
    shown_ = services_.clock.now();
    services_.user.ShowProgress(progress_);
}

// Seconds since the download began, in single precision.
float Transport::seconds() const {
    return std::chrono::duration<float>(services_.clock.now() - start_).count();
}

} // namespace kestrane

// A serial line, a clock and a user by script, and a session around them: a download that runs at once, whatever it
// waits for.
#pragma once

#include "download/Download.h"
#include "download/DownloadUser.h"
#include "model/Session.h"
#include "platform/MonotonicClock.h"
#include "platform/RuntimeError.h"
#include "server/KestraneThread.h"

#include <algorithm>
#include <chrono>
#include <deque>
#include <functional>
#include <string>
#include <vector>

namespace kestrane {

using std::chrono::milliseconds;

struct ScriptedTime : MonotonicClock {
    milliseconds Now{0};

    milliseconds now() const override { return Now; }
};

// Sleeping is the time going on.
class ScriptedPump : public HeadlessEventPump {
public:
    explicit ScriptedPump(ScriptedTime& time) : time_(time) {}

    void wait(milliseconds atMost) override {
        time_.Now += atMost;
        yield();
    }

private:
    ScriptedTime& time_;
};

class ScriptedComm : public Comm {
public:
    explicit ScriptedComm(ScriptedTime& time) : time_(time) {}

    struct Arrival {
        milliseconds Delay; // behind the question
        std::string Bytes;
    };

    std::vector<PortInfo> TheirPorts = {{1, "/dev/one", "one"}};
    std::vector<int> Refused;                                            // ports that cannot be opened
    std::function<std::vector<Arrival>(const std::string& sent)> Answer; // of the open port
    int Port = 0;
    std::string LineSettings;
    std::string FaultText; // not empty: the port goes away at the next look
    std::vector<int> Opened;
    std::vector<std::string> Sent;

    void arrive(milliseconds delay, const std::string& bytes) { arriving_.push_back({time_.Now + delay, bytes}); }

    std::vector<PortInfo> Ports() const override { return TheirPorts; }

    void CommPort(int number) override { Port = number; }

    void Settings(const std::string& settings) override { LineSettings = settings; }

    void Open() override {
        if (std::count(Refused.begin(), Refused.end(), Port) > 0) throw RuntimeError(13, "Permission denied");
        Opened.push_back(Port);
        isOpen_ = true;
        arriving_.clear();
    }

    void Close() override { isOpen_ = false; }

    bool IsOpen() const override { return isOpen_; }

    std::size_t InBufferCount() const override {
        std::size_t count = 0;
        for (const Arrival& arrival : arriving_)
            count += arrival.Delay <= time_.Now ? arrival.Bytes.size() : 0;
        return isOpen_ ? count : 0;
    }

    void Flush() override { Input(); }

    void Output(std::string_view bytes) override {
        Sent.emplace_back(bytes);
        if (!Answer) return;
        for (const Arrival& arrival : Answer(Sent.back()))
            arrive(arrival.Delay, arrival.Bytes);
    }

    std::string Input() override {
        std::string bytes;
        while (!arriving_.empty() && arriving_.front().Delay <= time_.Now) {
            bytes += arriving_.front().Bytes;
            arriving_.pop_front();
        }
        return bytes;
    }

    std::string Fault() const override { return FaultText; }

private:
    ScriptedTime& time_;
    std::deque<Arrival> arriving_; // Delay: the time it is there
    bool isOpen_ = false;
};

struct ScriptedUser : DownloadUser {
    std::function<std::optional<AcquireChoice>(const AcquireList&)> Choose; // unset: all, with octaves
    std::function<bool()> Cancels;
    std::vector<std::string> Labels;
    std::vector<AcquireList> Lists;
    DownloadProgress Last;
    bool IsClosed = false;

    void ShowProgress(const DownloadProgress& progress) override {
        if (Labels.empty() || Labels.back() != progress.Label) Labels.push_back(progress.Label);
        Last = progress;
    }

    void CloseProgress() override { IsClosed = true; }

    std::optional<AcquireChoice> ChooseLogs(const AcquireList& list) override {
        Lists.push_back(list);
        if (Choose) return Choose(list);
        return AcquireChoice{std::vector<bool>(list.Rows.size(), true), list.CanFetchOctaves};
    }

    bool IsCancelled() const override { return Cancels && Cancels(); }
};

struct ScriptedDownload {
    ScriptedTime time;
    ScriptedPump pump{time};
    ScriptedComm comm{time};
    ScriptedUser user;
    MemorySettings settings;
    ScriptedMessages messages;
    FixedClock clock{fromCivil({2019, 3, 7}, 13 * 3600 + 5 * 60 + 9)};
    Session session{"Ordwyn Acoustics", Locale{}, settings, messages, pump, clock};
    BackgroundServer server{pump, 1};
    std::string transcript;
    DownloadServices services{session, comm, user, time, [this](std::string_view line) { transcript += line; }};
    clsInsData data{session};

    ScriptedDownload() { session.server = &server; }

    std::string shown() const { return messages.Boxes.empty() ? "" : messages.Boxes.back().Prompt; }
};

} // namespace kestrane

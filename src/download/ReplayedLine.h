// The line of an earlier download, made of its transcript: a command that was sent then is answered as it was answered
// then, at once. A command that was never answered is met with silence; when the program goes on waiting, the line
// goes away.
#pragma once

#include "platform/Comm.h"
#include "platform/MonotonicClock.h"

#include <string>
#include <string_view>
#include <vector>

namespace kestrane {

// A clock for a line that never needs time: each look finds that any silence has lasted long enough.
class LeapingClock : public MonotonicClock {
public:
    std::chrono::milliseconds now() const override { return now_ += std::chrono::seconds(2); }

private:
    mutable std::chrono::milliseconds now_{0};
};

class ReplayedLine : public Comm {
public:
    // What is no line of a transcript is passed over, as the last line may be torn.
    explicit ReplayedLine(std::string_view transcript);

    std::vector<PortInfo> Ports() const override { return {{1, "transcript", {}}}; }

    void CommPort(int) override {}

    void Settings(const std::string&) override {}

    void Open() override { isOpen_ = true; }

    void Close() override { isOpen_ = false; }

    bool IsOpen() const override { return isOpen_; }

    std::size_t InBufferCount() const override;

    void Flush() override { waiting_.clear(); }

    void Output(std::string_view bytes) override;
    std::string Input() override;
    std::string Fault() const override;

private:
    struct Exchange {
        std::string sent, received;
    };

    std::vector<Exchange> exchanges_; // those that were answered, in order
    std::size_t next_ = 0;
    std::string waiting_;
    bool isOpen_ = false;
    mutable int looks_ = 0; // in vain, since the last command
};

} // namespace kestrane

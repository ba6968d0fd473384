#include "sim/Line.h"

#include "platform/RuntimeError.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <chrono>
#include <deque>
#include <thread>

#include <fcntl.h>
#include <poll.h>
#include <stdlib.h>
#include <sys/ioctl.h>
#include <termios.h>
#include <unistd.h>

namespace kestrane {

namespace {

using Clock = std::chrono::steady_clock;

constexpr int kBitsOfByte = 11; // with one start bit and two stop bits

// The bytes that are still to be sent, and the time at which the next one is due.
class Outbox {
public:
    explicit Outbox(int baud) : baud_(baud) {}

    void replace(Reply reply) {
        pieces_.assign(std::make_move_iterator(reply.pieces.begin()), std::make_move_iterator(reply.pieces.end()));
        hangsUp_ = reply.hangsUp;
        due_ = Clock::now();
        begin();
    }

    bool isEmpty() const { return pieces_.empty(); }

    bool hangsUp() const { return hangsUp_ && isEmpty(); }

    // Milliseconds until the next byte is due, rounded up; at most 1000.
    int untilDue() const {
        const auto wait = std::chrono::ceil<std::chrono::milliseconds>(due_ - Clock::now());
        return static_cast<int>(std::clamp<std::int64_t>(wait.count(), 0, 1000));
    }

    // Sends the bytes that are due, as many as the line accepts.
    void send(int handle) {
        while (!isEmpty() && Clock::now() >= due_) {
            std::string& bytes = pieces_.front().bytes;
            // What is sent in 10 ms.
            const auto slice = static_cast<std::size_t>(std::max(baud_ / (kBitsOfByte * 100), 1));
            const std::size_t size = baud_ == 0 ? bytes.size() : std::min(bytes.size(), slice);
            const ssize_t written = write(handle, bytes.data(), size);
            if (written < 0 && errno == EINTR) continue;
            if (written < 0) {
                due_ = Clock::now() + std::chrono::milliseconds(1); // the other end reads slowly
                return;
            }
            bytes.erase(0, static_cast<std::size_t>(written));
            if (baud_ != 0) due_ += std::chrono::microseconds(written * kBitsOfByte * 1'000'000 / baud_);
            if (!bytes.empty()) continue;
            pieces_.pop_front();
            begin();
        }
    }

private:
    void begin() {
        while (!isEmpty() && pieces_.front().bytes.empty())
            pieces_.pop_front();
        if (!isEmpty() && baud_ != 0) due_ += pieces_.front().pause;
    }

    int baud_;
    std::deque<Piece> pieces_;
    bool hangsUp_ = false;
    Clock::time_point due_;
};

} // namespace

Line::Line() {
    own_ = posix_openpt(O_RDWR | O_NOCTTY | O_NONBLOCK | O_CLOEXEC);
    std::array<char, 128> name{};
    if (own_ < 0 || grantpt(own_) != 0 || unlockpt(own_) != 0 || ptsname_r(own_, name.data(), name.size()) != 0) {
        const int error = errno;
        close();
        raiseSystemError(error);
    }
    path_ = name.data();
    other_ = open(path_.c_str(), O_RDWR | O_NOCTTY | O_CLOEXEC);
    termios settings{};
    if (other_ < 0 || tcgetattr(other_, &settings) != 0) {
        const int error = errno;
        close();
        raiseSystemError(error);
    }
    cfmakeraw(&settings);
    tcsetattr(other_, TCSANOW, &settings);
}

Line::~Line() {
    close();
}

void Line::close() {
    for (int* handle : {&other_, &own_}) {
        if (*handle >= 0) ::close(*handle);
        *handle = -1;
    }
}

// Waits until everything has been read, but not for long: closing the line discards what is unread.
void Line::waitUntilRead() const {
    constexpr int kLooks = 50;
    for (int look = 0; look < kLooks; ++look) {
        std::this_thread::sleep_for(std::chrono::milliseconds(20));
        int waiting = 0;
        if (ioctl(other_, FIONREAD, &waiting) != 0 || waiting == 0) return;
    }
}

void Line::serve(int baud, Instrument& instrument, int stop) {
    Outbox outbox(baud);
    std::array<char, 4096> buffer{};
    while (!outbox.hangsUp()) {
        std::array<pollfd, 2> handles = {{{own_, POLLIN, 0}, {stop, POLLIN, 0}}};
        if (poll(handles.data(), handles.size(), outbox.isEmpty() ? -1 : outbox.untilDue()) < 0 && errno != EINTR) {
            raiseSystemError(errno);
        }
        if (handles[1].revents != 0) return;
        if (handles[0].revents != 0) {
            const ssize_t size = read(own_, buffer.data(), buffer.size());
            if (size < 0 && errno != EAGAIN && errno != EINTR) raiseSystemError(errno);
            if (size > 0) {
                Reply reply = instrument.answer(std::string_view(buffer.data(), static_cast<std::size_t>(size)));
                if (!reply.pieces.empty()) outbox.replace(std::move(reply));
            }
        }
        outbox.send(own_);
    }
    waitUntilRead();
    close();
}

} // namespace kestrane

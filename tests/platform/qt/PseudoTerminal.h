// A pseudo-terminal for a test, which holds the end of the instrument. The other end is a device that opens like a
// serial port.
#pragma once

#include <cstdlib>
#include <fcntl.h>
#include <poll.h>
#include <string>
#include <string_view>
#include <termios.h>
#include <unistd.h>

namespace kestrane {

class PseudoTerminal {
public:
    PseudoTerminal() : file_(::posix_openpt(O_RDWR | O_NOCTTY)) {
        ::grantpt(file_);
        ::unlockpt(file_);
        device = ::ptsname(file_);
    }

    ~PseudoTerminal() { hangUp(); }

    PseudoTerminal(const PseudoTerminal&) = delete;
    PseudoTerminal& operator=(const PseudoTerminal&) = delete;

    void hangUp() {
        if (file_ >= 0) ::close(file_);
        file_ = -1;
    }

    void send(std::string_view bytes) const {
        while (!bytes.empty()) {
            const ssize_t written = ::write(file_, bytes.data(), bytes.size());
            if (written <= 0) return;
            bytes.remove_prefix(static_cast<std::size_t>(written));
        }
    }

    // What has been written to the device, waiting a while for the first of it.
    std::string take() const {
        std::string bytes;
        pollfd ready{file_, POLLIN, 0};
        for (int wait = 1000; ::poll(&ready, 1, wait) > 0; wait = 20) {
            char buffer[4096];
            const ssize_t count = ::read(file_, buffer, sizeof buffer);
            if (count <= 0) break;
            bytes.append(buffer, static_cast<std::size_t>(count));
        }
        return bytes;
    }

    termios line() const {
        termios settings{};
        ::tcgetattr(file_, &settings);
        return settings;
    }

    std::string device;

private:
    int file_;
};

} // namespace kestrane

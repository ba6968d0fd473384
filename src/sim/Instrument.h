// An instrument as the line sees it: bytes in, bytes out. What it knows of measurements comes from the logs of a data
// file; what it knows of its protocol stands in its own file. Knows neither the line nor the program that asks.
#pragma once

#include <chrono>
#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace kestrane {

struct Piece {
    std::string bytes;
    std::chrono::milliseconds pause{0}; // before it is sent
};

struct Reply {
    std::vector<Piece> pieces;
    bool hangsUp = false; // the line is closed behind them
};

class Instrument {
public:
    virtual ~Instrument() = default;

    // Takes what has come over the line, cut anywhere, and gives what is answered to it: mostly nothing, until a
    // command is complete.
    virtual Reply answer(std::string_view bytes) = 0;
};

// An instrument that takes commands one by one. What is no command is passed over.
class CommandInstrument : public Instrument {
public:
    Reply answer(std::string_view bytes) final;

protected:
    static constexpr std::size_t kIncomplete = 0;
    static constexpr std::size_t kNoCommand = static_cast<std::size_t>(-1);

    // The length of the command that bytes begin with, or one of the above. Never kIncomplete for a long text, so that
    // a command that has lost its end blocks nothing.
    virtual std::size_t commandLength(std::string_view bytes) const = 0;

    virtual std::string reply(std::string_view command) = 0; // empty: none

private:
    std::string received_;
};

} // namespace kestrane

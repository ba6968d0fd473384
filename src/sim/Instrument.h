// An instrument as seen from the line: bytes come in, bytes go out. Its measurements are the logs of a data file; each
// protocol is in a file of its own. It knows neither the line nor the program that asks.
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
    bool hangsUp = false; // the line is closed after the pieces
};

class Instrument {
public:
    virtual ~Instrument() = default;

    // Takes what has come over the line, in pieces of any size, and returns the answer to it: usually nothing until a
    // command is complete.
    virtual Reply answer(std::string_view bytes) = 0;
};

// An instrument that takes commands one by one. Bytes that are no command are skipped.
class CommandInstrument : public Instrument {
public:
    Reply answer(std::string_view bytes) final;

protected:
    static constexpr std::size_t kIncomplete = 0;
    static constexpr std::size_t kNoCommand = static_cast<std::size_t>(-1);

    // The length of the command that bytes begin with, or one of the above. It must not return kIncomplete for a long
    // text, so that a command without its end does not block the following ones.
    virtual std::size_t commandLength(std::string_view bytes) const = 0;

    virtual std::string reply(std::string_view command) = 0; // empty when there is no reply

private:
    std::string received_;
};

} // namespace kestrane

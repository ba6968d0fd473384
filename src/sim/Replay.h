// An instrument made of the transcript of an earlier download: it answers the same commands with the same bytes and
// after the same pauses.
#pragma once

#include "sim/Instrument.h"

#include <istream>

namespace kestrane {

// The lines of a transcript: "+SECONDS.MILLIS > HEX" was sent by the program, "+SECONDS.MILLIS < HEX" was received, and
// "# note" is skipped.
class ReplayedInstrument : public Instrument {
public:
    // Raises kErrorApplication with the number of a line that is malformed, and when no command was sent.
    explicit ReplayedInstrument(std::istream& transcript);

    Reply answer(std::string_view bytes) override;

private:
    struct Exchange {
        std::string sent;
        std::chrono::milliseconds at; // when it was sent
        std::vector<Piece> received;
    };

    // The exchange whose command received_ begins with: the next one, else the first one; null when there is none.
    const Exchange* find();

    std::vector<Exchange> exchanges_; // in order
    std::size_t next_ = 0;
    std::string received_;
};

} // namespace kestrane

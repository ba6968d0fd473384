// An instrument that is a transcript of an earlier download: it answers what was sent then with what came then, after
// the pauses of then.
#pragma once

#include "sim/Instrument.h"

#include <istream>

namespace kestrane {

// Lines of a transcript: "+SECONDS.MILLIS > HEX" sent by the program, "+SECONDS.MILLIS < HEX" received, "# note".
class ReplayedInstrument : public Instrument {
public:
    explicit ReplayedInstrument(std::istream& transcript); // raises kErrorApplication with the line that is none

    Reply answer(std::string_view bytes) override;

private:
    struct Exchange {
        std::string sent;
        std::chrono::milliseconds at; // when it was sent
        std::vector<Piece> received;
    };

    const Exchange* find(); // the one that received_ begins with: the next one of its kind, else the first

    std::vector<Exchange> exchanges_; // in order
    std::size_t next_ = 0;
    std::string received_;
};

} // namespace kestrane

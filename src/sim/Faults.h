// Faults of an instrument or its line. A faulty instrument stands between the line and the instrument itself.
#pragma once

#include "sim/Instrument.h"

#include <cstdint>
#include <memory>
#include <optional>
#include <random>

namespace kestrane {

enum class FaultKind {
    Silence, // answers only the first Count commands
    Error,   // answers ERROR after the first Count commands
    Echo,    // a looped-back line: what is sent comes back
    Split,   // answers come in pieces, with pauses
    Noise,   // adds random bytes to the answers
    Cut,     // sends nothing after the first Count bytes
    HangUp,  // closes the line after the first Count bytes
};

struct Fault {
    FaultKind kind;
    std::size_t count = 0;
};

// Reads "cut=100" or "silence"; count is 0 when it is not given. Nothing for any other text.
std::optional<Fault> parseFault(std::string_view text);

class FaultyInstrument : public Instrument {
public:
    FaultyInstrument(std::unique_ptr<Instrument> instrument, Fault fault) :
        instrument_(std::move(instrument)), fault_(fault) {}

    Reply answer(std::string_view bytes) override;

private:
    void split(Reply& reply) const;
    void addNoise(Reply& reply);
    void cut(Reply& reply);

    std::unique_ptr<Instrument> instrument_;
    Fault fault_;
    std::size_t answered_ = 0; // commands
    std::size_t sent_ = 0;     // bytes
    std::minstd_rand random_;  // always the same sequence
};

} // namespace kestrane

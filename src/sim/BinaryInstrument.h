// The instruments whose logs are blocks of little-endian numbers: the Brevik and Halcyr families, with the four layouts
// of entries and records that their firmware uses.
#pragma once

#include "sim/Holdings.h"
#include "sim/Instrument.h"

#include <cstdint>

namespace kestrane {

enum class BinaryFamily { Brevik, BrevikEarly, Halcyr, HalcyrEarly };

class BinaryInstrument : public CommandInstrument {
public:
    BinaryInstrument(BinaryFamily family, Holdings holdings) : family_(family), holdings_(std::move(holdings)) {}

protected:
    std::size_t commandLength(std::string_view bytes) const override;
    std::string reply(std::string_view command) override;

private:
    std::string identity() const;
    std::string entry(const clsLog& log) const;
    std::string block(const clsLog& log) const; // rows and summary, which follow the entry

    BinaryFamily family_;
    Holdings holdings_;
    std::size_t blockOf_ = static_cast<std::size_t>(-1); // the index of the log whose block is in block_
    std::string block_;
};

} // namespace kestrane

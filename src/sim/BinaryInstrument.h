// The instruments whose logs are blocks of little-endian numbers: the Brevik and Halcyr families, in the four ways in
// which their firmware lays out entries and records.
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
    std::string block(const clsLog& log) const; // rows and summary: what stands behind the entry

    BinaryFamily family_;
    Holdings holdings_;
    std::size_t blockOf_ = static_cast<std::size_t>(-1); // the log whose block is kept
    std::string block_;
};

} // namespace kestrane

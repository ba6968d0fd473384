// Logs for the instruments of the simulator, and bytes written as hexadecimal digits.
#pragma once

#include "TestSession.h"
#include "sim/Holdings.h"
#include "sim/Instrument.h"

#include <gtest/gtest.h>

#include <string>
#include <string_view>

namespace kestrane {

// The bytes of hexadecimal pairs with blanks between: "02 01 00 03".
inline std::string bytes(std::string_view hex) {
    std::string out;
    for (std::size_t at = 0; at + 1 < hex.size(); at += 3)
        out += static_cast<char>(std::stoi(std::string(hex.substr(at, 2)), nullptr, 16));
    return out;
}

inline std::string joined(const Reply& reply) {
    std::string all;
    for (const Piece& piece : reply.pieces)
        all += piece.bytes;
    return all;
}

struct SimTest : testing::Test, TestSession {
    clsLog log{session};
    clsLog octave{session};

    SimTest() {
        log.Name = "Press";
        log.StartDate.setDate("26/11/2024", {});
        log.LogIntervals.setArraySize(2);
        octave.Mode(modeFullOctave);
        octave.Name = "Fan";
        octave.FreqWeightA("Z");
        octave.TimeWeightA("Fast");
    }

    Holdings holdings(const char* model, const char* serial = "901226") { return {model, serial, {&log}, {}, {}}; }
};

} // namespace kestrane

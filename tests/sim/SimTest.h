// Logs for the instruments of the simulator, and their replies as text.
#pragma once

#include "TestSession.h"
#include "download/Wire.h"
#include "sim/Holdings.h"
#include "sim/Instrument.h"

#include <gtest/gtest.h>

#include <string>

namespace kestrane {

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

// The calibration of the meter around a measurement, as it was typed with the log, and the offset of its levels that
// followed from it. All are in hundredths of a dB.
#pragma once

#include <cstdint>
#include <cstdlib>

namespace kestrane {

struct Calibration {
    std::int16_t Before = 0, After = 0; // what the meter showed of the calibrator; 0 when that was not noted
    std::int16_t Offset = 0;            // has been added to all levels of the log

    bool HasDrift() const { return Before != 0 && After != 0; }

    int Drift() const { return After - Before; } // only when HasDrift()

    bool DriftsTooFar() const { // further than the half decibel that a measurement allows
        constexpr int kMost = 50;
        return HasDrift() && std::abs(Drift()) > kMost;
    }

    bool operator==(const Calibration&) const = default;
};

constexpr double kHundredths = 100; // of a dB

} // namespace kestrane

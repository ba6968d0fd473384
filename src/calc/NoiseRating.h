// The noise rating of a log: for each octave band the family of rating curves and the log's own level, and the one
// figure that sums them up. It is made for a chart or a print-out and dropped afterwards. The band constants are the
// system's own.
#pragma once

#include "model/clsLog.h"

#include <cstdint>
#include <deque>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace kestrane {

class clsNoiseRating;

// A point of a curve; without a Parent, the log's own level.
class clsNoiseRatingLevel {
public:
    const clsNoiseRating* Parent = nullptr;
    std::int16_t NoiseRatingLevel = 0;

    float SoundLevel() const; // dB; computed by the constants of Parent, or the stored level when there is no Parent

    void SoundLevel(float level) { soundLevel_ = level; }

private:
    float soundLevel_ = 0;
};

// One frequency. Its levels point to it, so it must not be moved.
class clsNoiseRating {
public:
    clsNoiseRating() = default;
    clsNoiseRating(const clsNoiseRating&) = delete;
    clsNoiseRating& operator=(const clsNoiseRating&) = delete;

    std::vector<clsNoiseRatingLevel> Levels; // the curves from 0 to 120 in steps of 5, then the log's own level
    float Multiplier = 0;
    float ConstantNumber = 0;

    const std::string& Frequency() const { return frequency_; }

    void Frequency(std::string_view label); // sets the constants, too; both are 0 for a label that has none

    // The log's rating at this frequency, from its level in dB: level - ConstantNumber / Multiplier. It is meant that
    // this is not the inverse of the curve.
    float Rating(float level) const;

private:
    std::string frequency_;
};

struct NoiseRating {
    std::deque<clsNoiseRating> Rows; // empty for a broadband log
    std::int32_t Level = 0;          // the highest rating, rounded up; at least 0
};

// The rating by the curves themselves, not rounded: the highest (level - a) / b of the linear octave levels from 31.5
// Hz to 8 kHz, where third octaves are summed (ISO/R 1996:1971). Nothing when there is no such level.
std::optional<double> ratingByCurves(const clsLog& log);

// The rating from the cumulative Leq of the bands that have constants. Raises 6 for a rating that does not fit 32 bits.
NoiseRating noiseRating(const clsLog& log);

} // namespace kestrane

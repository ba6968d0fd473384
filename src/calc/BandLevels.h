// Figures that the bands of an octave or third-octave log give beside its own: linear octave levels, and the level
// under another weighting. Bands go through weightingOffset; bands of a log without a weighting count as linear. A band
// at 0 is absent and takes no part.
#pragma once

#include "model/clsLog.h"

#include <array>
#include <optional>
#include <string_view>

namespace kestrane {

constexpr int kOctaves = 10;

// The linear octave levels of channel A from 31.5 Hz to 16 kHz, dB, at [0] to [9]; of a third-octave log the energy sum
// of the three bands. Nothing where no band is there; all nothing for a broadband log.
std::array<std::optional<double>, kOctaves> linearOctaves(const clsLog& log);

// The label of an octave of that array.
std::string_view octaveLabel(int octave);

// What takes a level of a band of channel A (1..last) to the weighting "A", "C" or "Z", dB.
double toWeighting(const clsLog& log, std::string_view weight, int band);

// The overall level under the weighting "A" or "C": the energy sum of the bands of channel A, dB. Nothing for a
// broadband log and for one without levels.
std::optional<double> leqFromBands(const clsLog& log, std::string_view weight);

// Where the A-weighted levels of a log come from.
enum class LevelsFrom { ChannelA, ChannelB, Bands, Nowhere };

// Channel A when it is A-weighted, else an A-weighted channel B, else the bands of an octave log.
LevelsFrom aWeightedLevels(const clsLog& log);

// LAeq of the whole log, dB, from there. Nothing when it is absent.
std::optional<double> aWeightedLeq(const clsLog& log);

} // namespace kestrane

// Figures that follow from the bands of an octave or third-octave log: linear octave levels, and the level under
// another weighting. Levels are converted with weightingOffset; the bands of a log without a weighting count as linear.
// A band at 0 is absent and takes no part.
#pragma once

#include "model/clsLog.h"
#include "resources/TextNames.h"

#include <array>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace kestrane {

constexpr int kOctaves = 10;

// The linear octave levels of channel A from 31.5 Hz to 16 kHz, in dB, at [0] to [9]; in a third-octave log each is the
// energy sum of its three bands. A level is nothing when all of its bands are absent; in a broadband log every level is
// nothing.
std::array<std::optional<double>, kOctaves> linearOctaves(const clsLog& log);

// The label of an octave by its index in that array, 0 to 9.
std::string_view octaveLabel(int octave);

// What must be added to a level of a band (1..last) of channel A to convert it to the weighting "A", "C" or "Z", in dB.
double toWeighting(const clsLog& log, std::string_view weight, int band);

// The overall level under the weighting "A" or "C", in dB: the energy sum of the bands of channel A. Nothing for a
// broadband log and for a log without levels.
std::optional<double> leqFromBands(const clsLog& log, std::string_view weight);

// What LAeq from bands is called: of a log of unknown weighting, the name says that its bands are taken as linear.
Text::Id nameOfLAeqFromBands(const clsLog& log);

// The level of each row, from its bands, as single figures; 0 for a row without levels by band. Empty when no row has
// any. For Lmin and Lmax, too, it is the energy sum of the bands (instrument convention).
std::vector<float> levelsOfRowsFromBands(const clsLog& log, Quantity quantity, std::string_view weight);

// Where the A-weighted levels of a log come from.
enum class LevelsFrom { ChannelA, ChannelB, Bands, Nowhere };

// Channel A when it is A-weighted, else an A-weighted channel B, else the bands of a log that has bands, else nowhere.
LevelsFrom aWeightedLevels(const clsLog& log);

// LAeq of the whole log from there, in dB. Nothing when it is absent.
std::optional<double> aWeightedLeq(const clsLog& log);

// Whether a parameter of a channel is a figure of exposure though the levels of channel A, which it is made of, are not
// A-weighted. An octave log without a weighting counts as linear.
bool isExposureNotAWeighted(const clsLog& log, LogChannel channel, Parameter parameter);

// A caption or figure with " (not A-weighted)" behind it where that is so.
std::string withWeightingMark(const clsLog& log, LogChannel channel, Parameter parameter, std::string text);

} // namespace kestrane

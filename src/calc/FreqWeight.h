// Converting the band levels of channel A between the weightings A, C and Z, and which channel holds a figure in a
// given weighting. Source of the offsets: the A and C curves of IEC 61672-1 at the nominal band centres.
#pragma once

#include "model/clsLog.h"

#include <string>
#include <string_view>

namespace kestrane {

// What must be added to a weighted level of a band ("12.5" to "20k") to make it linear, in dB; 0 for "Z" and for a text
// that is no band.
float weightingOffset(std::string_view weight, std::string_view bandText);

// Converts the band levels of channel A to another weighting: CalcValue only, Value stays as reported; with
// bAdjustIntervals those of the rows, too. The overall figures, Peak and channel B stay as they are, and an absent
// level (0) stays absent, except in a cumulative Ln that is in use. A broadband log has no bands: the user gets a
// message, and only the name of the weighting changes. Nothing happens for a name that is no weighting or is the log's
// own.
void AdjustFreqWeight(clsLog& log, std::string_view newWeight, bool bAdjustIntervals);

// The overall Leq in dB of the channel that is weighted A (or C), of channel A if both are; 0 when none is.
float LeqFreqWA(const clsLog& log);
float LeqFreqWC(const clsLog& log);

// Whether one channel is weighted A and the other C.
bool IsHMLCalculateable(const clsLog& log);

float HMLCMinusA(const clsLog& log); // Leq in C less Leq in A, dB; 0 unless IsHMLCalculateable

// The weighting that a calculation by NRR can use, "C" or "A", of channel A if it has one of them, else of channel B;
// empty when neither has.
std::string FreqW_NRR(const clsLog& log);

} // namespace kestrane

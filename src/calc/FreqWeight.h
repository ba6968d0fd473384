// Converting the band levels of channel A between the weightings A, C and Z, and which channel holds a figure in a
// given weighting. Source of the offsets: the A and C curves of IEC 61672-1 at the nominal band centres.
#pragma once

#include "model/clsLog.h"

#include <string>
#include <string_view>

namespace kestrane {

// What is added to a weighted level of a band ("12.5" to "20k") to give the linear one, dB; 0 for "Z" and for what is
// no band.
float weightingOffset(std::string_view weight, std::string_view bandText);

// Converts the band levels (CalcValue alone; Value stays as reported), of the rows, too, with bAdjustIntervals. The
// overall figures, Peak and channel B stay. An absent level (0) stays absent. A broadband log has no bands: the user is
// told, and the name alone changes. Nothing happens for a name that is no weighting, or the log's own.
void AdjustFreqWeight(clsLog& log, std::string_view newWeight, bool bAdjustIntervals);

// The overall Leq, dB, of whichever channel is weighted A (or C), channel A first; 0 for none.
float LeqFreqWA(const clsLog& log);
float LeqFreqWC(const clsLog& log);

// The channels hold one A and one C weighting.
bool IsHMLCalculateable(const clsLog& log);

float HMLCMinusA(const clsLog& log); // Leq in C less Leq in A, dB; 0 unless IsHMLCalculateable

// The weighting that a calculation by NRR can use, "C" or "A", channel A first; empty for none.
std::string FreqW_NRR(const clsLog& log);

} // namespace kestrane

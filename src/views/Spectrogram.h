// The spectrogram of a log with bands: its levels over time and frequency as colours; and the spectrum of one row of
// it, as bars.
#pragma once

#include "model/clsLog.h"
#include "views/ChartData.h"

#include <string_view>

namespace kestrane {

bool hasSpectrogram(const clsLog& log); // it has rows with levels by band

// The Leq of the bands, converted to the weighting "A", "C" or "Z". The scale of colours reaches from a multiple of 5
// dB to another, and at most 80 dB down from the highest level.
ChartData spectrogramChart(const clsLog& log, std::string_view weight);

// The Leq of the bands of a row, counted from 0. Raises 9 for a row that does not exist.
ChartData spectrumChart(const clsLog& log, std::size_t row, std::string_view weight);

} // namespace kestrane

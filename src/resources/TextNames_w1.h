// The names of the texts of the spectrogram and of lines of the chart.
#pragma once

#include "resources/TextNames.h"

namespace kestrane::Text {

inline constexpr Id CommandSpectrogram = Id(9015);
inline constexpr Id SpectrogramTitle = Id(9016);
inline constexpr Id SpectrumAt = Id(9017);
inline constexpr Id FromBandsSeries = Id(9018);
inline constexpr Id LinesCriteria = Id(9019);
inline constexpr Id LevelsOfMap = Id(9020);

} // namespace kestrane::Text

// The names of the texts of the spectrogram and of the calibration of a measurement.
#pragma once

#include "resources/TextNames.h"

namespace kestrane::Text {

inline constexpr Id CommandSpectrogram = Id(9015);
inline constexpr Id SpectrogramTitle = Id(9016);
inline constexpr Id SpectrumAt = Id(9017);
inline constexpr Id FromBandsSeries = Id(9018);
inline constexpr Id LinesCriteria = Id(9019);
inline constexpr Id LevelsOfMap = Id(9020);

inline constexpr Id CommandCalibration = Id(9030);
inline constexpr Id CalibrationTitle = Id(9031);
inline constexpr Id StepCalibration = Id(9032);
inline constexpr Id CalibrationBefore = Id(9033);
inline constexpr Id CalibrationAfter = Id(9034);
inline constexpr Id CalibrationOffset = Id(9035);
inline constexpr Id CalibrationDrift = Id(9036);
inline constexpr Id CalibrationDriftWarning = Id(9037);
inline constexpr Id CalibrationLevels = Id(9038);
inline constexpr Id CalibrationOffsetApplied = Id(9039);
inline constexpr Id CalibrationFaulty = Id(9040);
inline constexpr Id CalibrationLabel = Id(9041);
inline constexpr Id CalibrationHint = Id(9042);
inline constexpr Id CalibrationOffsetLabel = Id(9043);

} // namespace kestrane::Text

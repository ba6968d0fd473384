// What a protector does to a log: which calculation both allow, and the level that its wearer is assumed to get.
// Sources: ISO 4869-2 (octave band, HML and SNR methods), 29 CFR 1910.95 appendix B and the NIOSH derating for NRR;
// roundings and the treatment of missing bands are instrument convention.
#pragma once

#include "model/clsLog.h"
#include "model/clsOptions.h"
#include "protection/clsHP.h"

#include <array>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace kestrane {

// The correction of a result, as settings keep it.
constexpr int kCorrectionNone = 0;
constexpr int kCorrectionTwoDeviations = 1; // octave data only
constexpr int kCorrectionFourDecibels = 2;
constexpr int kCorrectionOneDeviation = 3; // octave data only

// The correction of a text of the list; any other text is 4 dB in the European mode and none in the US modes.
int correctionOf(const Session& session, const std::string& text, std::int16_t mode);

bool IsSNRCalculateable(const clsLog& log); // a channel is weighted C
bool IsNRRCalculateable(const clsLog& log); // a channel is weighted C or A

// "Octave", "HML", "SNR", "NRR", or empty when nothing fits.
std::string HPDCalcMethodToUse(const clsLog& log, const clsOptions& options, const clsHP& protector);

// The methods that are tried by the settings, in order.
std::vector<std::string_view> methodsOf(const clsOptions& options);

constexpr std::string_view kByOctaves = "Octave";
constexpr float kCannotCompute = -1;

// A copy of the log with its bands converted to Z, which the user is told.
std::unique_ptr<clsLog> convertedToZ(const clsLog& log);

// "hse", "osha" and "niosh" as eHPDMode...; nothing for any other word.
std::optional<std::int16_t> modeOfName(std::string_view name);

// The octave levels of channel A from 31.5 Hz to 16 kHz, dB, at [0] to [9]; from a third-octave log summed by threes, a
// band at 0 counting as 0 dB. A broadband log has none (all 0).
std::array<double, 10> octaveLevels(const clsLog& log);

// The attenuation that is assumed of a band with data, dB: the mean less the correction's deviations.
double assumedAttenuation(const clsHP& protector, int band, int iCorrectionFactor);

// The protected level, dB: APL, PAR or ENL by the mode. -1 when it cannot be computed. The log is in the weighting that
// the method wants (Z for octave data).
float APL_PAR_ENL(const clsHP& protector, const clsLog& log, const clsOptions& options, int iCorrectionFactor);

} // namespace kestrane

// What a protector does to a log: which calculation the log and the protector both allow, and the level that the wearer
// is assumed to get. Sources: ISO 4869-2 (octave band, HML and SNR methods), 29 CFR 1910.95 appendix B and the NIOSH
// derating for NRR. Roundings and the treatment of missing bands are instrument convention.
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

// The correction that a text of the list stands for. Any other text stands for 4 dB in the European mode and for none
// in the US modes.
CorrectionKind correctionOf(const Session& session, const std::string& text, std::int16_t mode);

bool IsSNRCalculateable(const clsLog& log); // whether a channel is weighted C
bool IsNRRCalculateable(const clsLog& log); // whether a channel is weighted C or A

// The method for a log and a protector: "Octave", "HML", "SNR" or "NRR"; empty when none can be used.
std::string HPDCalcMethodToUse(const clsLog& log, const clsOptions& options, const clsHP& protector);

// The methods that are tried with these settings, in order.
std::vector<std::string_view> methodsOf(const clsOptions& options);

constexpr std::string_view kByOctaves = "Octave";
constexpr float kCannotCompute = -1;

// A copy of the log with its bands converted to Z. A message tells the user about it.
std::unique_ptr<clsLog> convertedToZ(const clsLog& log);

// The eHPDMode... of "hse", "osha" or "niosh"; nothing for any other word.
std::optional<std::int16_t> modeOfName(std::string_view name);

// The octave levels of channel A from 31.5 Hz to 16 kHz, in dB, at [0] to [9]. In a third-octave log each is the energy
// sum of three bands, where a band at 0 (absent) counts as 0 dB; that is meant. All are 0 for a broadband log.
std::array<double, 10> octaveLevels(const clsLog& log);

// The attenuation in dB that is assumed in a band (1..8): the mean less the deviations of the correction.
double assumedAttenuation(const clsHP& protector, int band, CorrectionKind iCorrectionFactor);

// The protected level in dB: APL, PAR or ENL, depending on the mode. -1 when it cannot be computed. The log must
// already have the weighting that the method needs (Z for octave data).
float APL_PAR_ENL(const clsHP& protector, const clsLog& log, const clsOptions& options,
                  CorrectionKind iCorrectionFactor);

} // namespace kestrane

// All protectors of a list on one log, the best first. Decided here; windows and the command line show it.
#pragma once

#include "protection/Standards.h"

#include <optional>
#include <string>
#include <vector>

namespace kestrane {

struct RankedProtector {
    const clsHP* Protector;
    std::string Method;             // of the comparison, or the standard's where the comparison has none; may be empty
    float Result;                   // of the comparison, dB; -1: it cannot be computed
    std::optional<double> Standard; // dB, by the standard of the method, with the 4 dB where the correction is that
    kestrane::Verdict Verdict;
};

// By verdict, within one by the distance from the middle of the good range, else as they stand in the list. A log that
// is not Z weighted is converted for the octave method, which the user is told once; it stays as it is itself.
// The entries point into the list.
std::vector<RankedProtector> rankProtectors(const clsLog& log, const std::vector<clsHP>& protectors,
                                            const clsOptions& options, int iCorrectionFactor);

} // namespace kestrane

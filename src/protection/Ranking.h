// Ranks all protectors of a list for one log, the best first. Windows and the command line show this order.
#pragma once

#include "protection/Standards.h"

#include <optional>
#include <string>
#include <vector>

namespace kestrane {

struct RankedProtector {
    const clsHP* Protector;
    std::string Method;             // that of the comparison; without one, the standard's; may be empty
    float Result;                   // of the comparison, dB; -1 when it cannot be computed
    std::optional<double> Standard; // by the method's standard, dB, plus the 4 dB when that is the correction
    kestrane::Verdict Verdict;
    std::optional<double> Level;         // dB, what the verdict goes by
    std::vector<StandardFigure> Figures; // of every method
};

// Orders by verdict, protectors of the same verdict by the distance from the middle of the good range, and otherwise by
// their order in the list. For the octave method a copy of a log that is not Z weighted is converted, and one message
// tells the user about it. The entries point into the list.
std::vector<RankedProtector> rankProtectors(const clsLog& log, const std::vector<clsHP>& protectors,
                                            const clsOptions& options, CorrectionKind iCorrectionFactor);

} // namespace kestrane

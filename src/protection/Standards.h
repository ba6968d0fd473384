// What a wearer is assumed to get by the standards themselves, in addition to the program's own comparison, and how
// good that is. Sources: ISO 4869-2:2018 (octave band, HML and SNR methods), 29 CFR 1910.95 Appendix B, the OSHA
// Technical Manual and the NIOSH deratings (NRR), EN 458 (verdict). Levels are in dB and unrounded unless a name says
// otherwise.
#pragma once

#include "model/clsLog.h"
#include "model/clsOptions.h"
#include "protection/clsHP.h"

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace kestrane {

// The predicted noise level reduction in dB by H, M and L and the difference between LC and LA.
double predictedReduction(double high, double medium, double low, double cMinusA);

enum class NrrRule { AppendixB, HalfOf, Muff, FormablePlug, OtherPlug };

// The protected level by NRR, from an A-weighted or a C-weighted level. A rating that is too small for the allowance
// raises the level.
double levelByNrr(NrrRule rule, double level, bool isC, double nrr);

constexpr double kRealWorldAllowance = 4; // dB, of HSE

struct StandardFigure {
    std::string Method; // the standard's method; it ends in " from bands" when LA and LC were computed from the bands
    double Level;
    int Rounded() const; // in whole dB, halves away from zero

    double Plus4() const { return Level + kRealWorldAllowance; }
};

// Every figure that the log and the protector allow, in the order octave bands, HML, SNR, NRR. The octave method begins
// at 125 Hz for a protector without a figure at 63 Hz, and needs a figure for every band above. Its protection is the
// one that 84 % of wearers reach; with the correction of two deviations, 98 %.
std::vector<StandardFigure> standardFigures(const clsLog& log, const clsHP& protector, const clsOptions& options,
                                            CorrectionKind iCorrectionFactor);

// From the best to the worst, in the order in which protectors are ranked.
enum class Verdict { Good, Acceptable, OverProtected, Insufficient, None };

std::string_view verdictName(Verdict verdict); // "good", "acceptable", "over-protected", "insufficient", "none"

// The verdict of EN 458: a level 5 to 10 dB below the action level is good; one from the action level down to 15 dB
// below it is acceptable otherwise. A level on a boundary gets the better verdict.
Verdict verdictOf(double protectedLevel, double actionLevel);

// How a log with a protector is judged by the standards. The method is that of the comparison ("Octave", "HML", "SNR"
// or "NRR"); when the comparison has none, it is the first method that the options would try and the standards can
// compute.
struct StandardJudgement {
    std::vector<StandardFigure> Figures;
    std::optional<StandardFigure> Chosen; // the figure of that method
    // The level in dB that the wearer gets by that figure, plus the 4 dB when that is the correction; without a figure,
    // the result of the comparison.
    std::optional<double> Level;
    kestrane::Verdict Verdict = kestrane::Verdict::None;
};

// toldMethod and toldResult are the method and the result of the comparison; an empty text and -1 when there is none.
StandardJudgement judgeByStandards(const clsLog& log, const clsHP& protector, const clsOptions& options,
                                   CorrectionKind iCorrectionFactor, const std::string& toldMethod, float toldResult);

} // namespace kestrane

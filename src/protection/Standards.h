// What a wearer is assumed to get by the standards themselves, beside the program's own comparison, and how good that
// is. Sources: ISO 4869-2:2018 (octave band, HML and SNR methods), 29 CFR 1910.95 Appendix B, the OSHA Technical Manual
// and the NIOSH deratings (NRR), EN 458 (verdict). Levels are dB and unrounded unless a name says otherwise.
#pragma once

#include "model/clsLog.h"
#include "model/clsOptions.h"
#include "protection/clsHP.h"

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace kestrane {

// Predicted noise level reduction by H, M and L, from the difference between LC and LA.
double predictedReduction(double high, double medium, double low, double cMinusA);

enum class NrrRule { AppendixB, HalfOf, Muff, FormablePlug, OtherPlug };

// The protected level by NRR, from an A-weighted or a C-weighted level. A rating that is too small raises the level.
double levelByNrr(NrrRule rule, double level, bool isC, double nrr);

struct StandardFigure {
    std::string Method; // the standard's method; ends in " from bands" when LA and LC are those of the bands
    double Level;
    int Rounded() const; // to whole dB, halves away from zero

    double Plus4() const { return Level + 4; } // the HSE allowance for real-world wear
};

// Every figure that the log and the protector allow, in the order octave bands, HML, SNR, NRR. The octave method begins
// at 125 Hz for a protector without a figure at 63 Hz and needs one at each band above. Its protection is the one that
// 84 % of wearers reach, 98 % with the correction of two deviations.
std::vector<StandardFigure> standardFigures(const clsLog& log, const clsHP& protector, const clsOptions& options,
                                            int iCorrectionFactor);

// Best first, in the order that protectors are ranked by.
enum class Verdict { Good, Acceptable, OverProtected, Insufficient, None };

std::string_view verdictName(Verdict verdict); // "good", "acceptable", "over-protected", "insufficient", "none"

// EN 458: 5 to 10 dB below the action level is good, up to it and up to 15 dB below acceptable, at a boundary the
// better.
Verdict verdictOf(double protectedLevel, double actionLevel);

// A log with a protector by the standards. Method is that of the comparison ("Octave", "HML", "SNR" or "NRR"); where
// the comparison has none, the first that the options would try and the standards can compute.
struct StandardJudgement {
    std::vector<StandardFigure> Figures;
    std::optional<StandardFigure> Chosen; // the figure of the method
    std::optional<double> Level; // what the wearer gets by it, with the 4 dB where the correction is that; else
                                 // the result of the comparison
    kestrane::Verdict Verdict = kestrane::Verdict::None;
};

// toldResult: the result of the comparison, -1 for none.
StandardJudgement judgeByStandards(const clsLog& log, const clsHP& protector, const clsOptions& options,
                                   int iCorrectionFactor, const std::string& toldMethod, float toldResult);

} // namespace kestrane

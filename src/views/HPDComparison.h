// A log compared with a hearing protector: the method, the protected level and its grade, and the texts and bars that
// the "Compare HPD" tab shows. Decided here; the tab and the command line show it.
#pragma once

#include "model/clsLog.h"
#include "model/clsOptions.h"
#include "protection/Attenuation.h"
#include "protection/Standards.h"

#include <string>
#include <utility>
#include <vector>

namespace kestrane {

enum class ProtectionGrade { Green, Orange, Red };

// How good a protected level is, dB: 70 to 75 green, from 65 and up to 80 orange, else red.
ProtectionGrade gradeOf(float level);

// A pair of bars of the octave method; of the others Without is the level alone.
struct ComparisonBar {
    std::string Label;
    float Without = 0; // dB
    float With = 0;    // dB; not below 0
};

struct HPDComparison {
    std::string Method;    // "Octave", "HML", "SNR", "NRR" or empty
    std::string LevelName; // "APL", "PAR" or "ENL"
    float Result = -1;     // dB; -1: it cannot be computed
    ProtectionGrade Grade = ProtectionGrade::Red;
    bool ExceedsLimit = false; // above 87 dB
    std::string ChartTitle;
    std::string ResultLine;
    std::vector<std::string> Footnote;                      // of the octave method
    std::vector<std::pair<std::string, std::string>> Panel; // label and value, of the other methods
    std::vector<ComparisonBar> Bars;
    std::vector<StandardFigure> Standard; // by the standards, beside Result
    kestrane::Verdict Verdict = kestrane::Verdict::None;

    bool isByOctaves() const { return Method == kByOctaves; }
};

// The name of the protected level in a mode (eHPDMode...).
std::string levelName(const Session& session, std::int16_t mode);

// A log that is not Z weighted is converted for the octave method, which the user is told; it stays as it is itself.
HPDComparison compareWithProtector(const clsLog& log, const clsHP& protector, const clsOptions& options,
                                   int iCorrectionFactor);

} // namespace kestrane

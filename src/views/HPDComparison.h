// A log compared with a hearing protector: the method, the protected level and its grade, and the texts and bars of the
// "Compare HPD" tab. They are decided here; the tab and the command line show them.
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

// How good a protected level in dB is: 70 to 75 is green, 65 to 70 and 75 to 80 orange, all others red. The ends belong
// to the better grade.
ProtectionGrade gradeOf(float level);

// A pair of bars of the octave method. For the other methods only Without is used: it is the level.
struct ComparisonBar {
    std::string Label;
    float Without = 0; // dB
    float With = 0;    // dB; not below 0
};

struct HPDComparison {
    std::string Method;    // "Octave", "HML", "SNR", "NRR" or empty
    std::string LevelName; // "APL", "PAR" or "ENL"
    float Result = -1;     // dB; -1 when it cannot be computed
    ProtectionGrade Grade = ProtectionGrade::Red;
    bool ExceedsLimit = false; // above 87 dB
    std::string ChartTitle;
    std::string ResultLine;
    std::vector<std::string> Footnote;                      // only for the octave method
    std::vector<std::pair<std::string, std::string>> Panel; // label and value, for the other methods
    std::vector<ComparisonBar> Bars;
    std::vector<StandardFigure> Standard; // the figures by the standards, in addition to Result
    kestrane::Verdict Verdict = kestrane::Verdict::None;

    bool isByOctaves() const { return Method == kByOctaves; }
};

// The labels and values of the panel on one line.
std::string figuresLine(const HPDComparison& comparison);

// The grade in a word with its sign, for those who cannot tell its colour.
std::string gradeText(const Session& session, const HPDComparison& comparison);

// The name of the protected level in a mode (eHPDMode...).
std::string levelName(const Session& session, std::int16_t mode);

// For the octave method a copy of a log that is not Z weighted is converted, and the user gets a message. The log
// itself is not changed.
HPDComparison compareWithProtector(const clsLog& log, const clsHP& protector, const clsOptions& options,
                                   CorrectionKind iCorrectionFactor);

} // namespace kestrane

// One log under every exposure criterion, side by side. Levels are in dB, doses in percent, times in hours; a figure
// that cannot be computed is nothing. Sources: Directive 2003/10/EC; 29 CFR 1910.95; NIOSH 98-126; the TLVs of ACGIH.
#pragma once

#include "model/clsLog.h"

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace kestrane {

struct CriterionLimit {
    std::string Name;
    double Value;
    bool IsDose;                  // a projected dose in percent; else LEX,8h in dB
    std::optional<bool> Exceeded; // at or above the limit; nothing when the figure is missing
};

struct CriterionFigures {
    std::string Name; // "eu", "osha-hc", "osha-pel", "niosh", "acgih" or "own"
    std::string Title;
    std::optional<double> Criterion, Threshold;
    double Exchange = 3;
    std::optional<double> LEX8h; // for the exposure time; only at an exchange rate of 3 dB
    std::optional<double> Dose, TWA, LAVG;
    std::optional<double> ProjectedDose, ProjectedTWA; // for the exposure time
    bool IsFromRows = false;                           // false: from LAeq
    std::string Note;                                  // limitations of the figures; empty when there are none
    std::string Missing; // why the dose, or LEX,8h without a criterion level, is missing; empty when it is not
    std::vector<CriterionLimit> Limits;
};

// A criterion that the user has defined. The exchange rate must be above 0.
struct OwnCriterion {
    double Criterion, Threshold, Exchange;
};

struct Criteria {
    std::int64_t Rows = 0;    // the number of rows that are not left out
    double MeasuredHours = 0; // of those rows; of a log without rows, its measured time; 0 when that is not known
    double ExposureHours = 0;
    std::optional<double> LAeq;   // A-weighted, of the same rows or log
    std::optional<double> LCpeak; // C-weighted
    std::vector<CriterionFigures> All;
};

// The figures by every criterion, and by the user's own if there is one. A row at the threshold counts towards a dose.
// With a threshold, or with an exchange rate other than 3 dB, a dose can be computed only from rows, and it is
// approximate unless they are at most 60 s long and measured with the time weighting Slow. Without a threshold and at 3
// dB, LAeq is enough.
Criteria criteriaOf(const clsLog& log, const std::optional<OwnCriterion>& own);

} // namespace kestrane

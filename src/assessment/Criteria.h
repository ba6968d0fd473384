// One log under every exposure criterion, side by side. Levels are dB, doses percent, times hours; a figure that there
// is none of is nothing. Sources: Directive 2003/10/EC; 29 CFR 1910.95; NIOSH 98-126; the TLVs of ACGIH.
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
    bool IsDose;                  // percent, of the projected dose; else dB, of LEX,8h
    std::optional<bool> Exceeded; // at or above; nothing when its figure is missing
};

struct CriterionFigures {
    std::string Name; // "eu", "osha-hc", "osha-pel", "niosh", "acgih" or "own"
    std::string Title;
    std::optional<double> Criterion, Threshold;
    double Exchange = 3;
    std::optional<double> LEX8h; // of the exposure time; at a rate of 3 dB
    std::optional<double> Dose, TWA, LAVG;
    std::optional<double> ProjectedDose, ProjectedTWA; // of the exposure time
    bool IsFromRows = false;                           // else from LAeq
    std::string Note;                                  // how good the figures are; empty: as good as the measurement
    std::string Missing;                               // why the dose is missing; empty: it is there
    std::vector<CriterionLimit> Limits;
};

// A criterion of the user's own. The exchange rate is above 0.
struct OwnCriterion {
    double Criterion, Threshold, Exchange;
};

struct Criteria {
    std::int64_t Rows = 0;    // those that count
    double MeasuredHours = 0; // of those rows; of a log without rows as long as it says; 0 when that cannot be told
    double ExposureHours = 0;
    std::optional<double> LAeq;   // A-weighted, of the same
    std::optional<double> LCpeak; // C-weighted
    std::vector<CriterionFigures> All;
};

// A row at the threshold counts towards a dose. With a threshold, or a rate other than 3 dB, a dose can be made of rows
// only, and is approximate unless they are of at most 60 s under the time weighting Slow; else LAeq will do.
Criteria criteriaOf(const clsLog& log, const std::optional<OwnCriterion>& own);

} // namespace kestrane

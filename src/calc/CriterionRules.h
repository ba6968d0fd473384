// The criteria by which a log is judged, and their limits. Sources: Directive 2003/10/EC; 29 CFR 1910.95; NIOSH 98-126;
// the TLVs of ACGIH.
#pragma once

#include "resources/TextNames.h"

#include <optional>
#include <string_view>
#include <vector>

namespace kestrane {

struct LimitRule {
    Text::Id Name;
    double Value;
    bool IsDose; // a projected dose in percent; else LEX,8h in dB
};

struct CriterionRule {
    std::string_view Name; // "eu", "osha-hc", "osha-pel", "niosh", "acgih" or "own"
    Text::Id Title;
    std::optional<double> Criterion, Threshold; // dB
    double Exchange;                            // dB
    std::optional<double> PerDecade;            // the printed factor of TWA; nothing for the exact one
    std::vector<LimitRule> Limits;
};

std::vector<CriterionRule> criterionRules(); // all but the user's own
CriterionRule ownRule(double criterion, std::optional<double> threshold, double exchange);

// The level in dB that reaches a limit when it is held for 8 hours.
double levelOfLimit(const CriterionRule& rule, const LimitRule& limit);

} // namespace kestrane

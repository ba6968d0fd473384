#include "calc/CriterionRules.h"

#include "model/Acoustics.h"

namespace kestrane {

namespace {

constexpr double kOshaFactor = 16.61;
constexpr double kNioshFactor = 10.0;

} // namespace

std::vector<CriterionRule> criterionRules() {
    return {
        {"eu",
         Text::CriteriaEU,
         {},
         {},
         3,
         {},
         {{Text::LimitLowerAction, 80, false}, {Text::LimitUpperAction, 85, false}, {Text::LimitValue, 87, false}}},
        {"osha-hc",
         Text::CriteriaOshaHearingConservation,
         90,
         80,
         5,
         kOshaFactor,
         {{Text::LimitActionLevel, 50, true}}},
        {"osha-pel", Text::CriteriaOshaPel, 90, 90, 5, kOshaFactor, {{Text::LimitPEL, 100, true}}},
        {"niosh", Text::CriteriaNiosh, 85, {}, 3, kNioshFactor, {{Text::LimitREL, 100, true}}},
        {"acgih", Text::CriteriaAcgih, 85, 80, 3, kNioshFactor, {{Text::LimitTLV, 100, true}}},
    };
}

CriterionRule ownRule(double criterion, std::optional<double> threshold, double exchange) {
    return {"own", Text::CriteriaOwn, criterion, threshold, exchange, {}, {{Text::LimitOwn, 100, true}}};
}

double levelOfLimit(const CriterionRule& rule, const LimitRule& limit) {
    return limit.IsDose ? levelOfDose(limit.Value, *rule.Criterion, decibelsPerDecade(rule.Exchange)) : limit.Value;
}

} // namespace kestrane

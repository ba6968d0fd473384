#include "model/Acoustics.h"

#include "platform/Numbers.h"

#include <cmath>

namespace kestrane {

namespace {

constexpr float kReferencePressureSquared = 4E-10F; // Pa², the square of 20 micropascals
constexpr double kPercentPerHour = 100 / kReferenceHours;

} // namespace

double energyOf(double level) {
    return std::pow(10.0, level / 10);
}

double levelOf(double energy) {
    return 10 * std::log10(energy);
}

double normalisedTo8Hours(double level, double hours) {
    return level + levelOf(hours / kReferenceHours);
}

double levelOfNormalised(double normalised, double hours) {
    return normalised - levelOf(hours / kReferenceHours);
}

double soundExposureLevel(double level, double seconds) {
    return level + levelOf(seconds);
}

double soundExposure(double level, float hours) {
    return static_cast<double>(kReferencePressureSquared) * hours * energyOf(level);
}

double decibelsPerDecade(double exchange) {
    return exchange / std::log10(2.0);
}

double doseOf(float level, DoseRule rule, double hours) {
    const auto perDecade = static_cast<float>(decibelsPerDecade(rule.Exchange));
    const float exponent =
        checkedSingle((static_cast<double>(level) - rule.Criterion) / static_cast<double>(perDecade));
    return kPercentPerHour * hours * std::pow(10.0, static_cast<double>(exponent));
}

double twaOfDose(double dose, DoseRule rule) {
    return rule.Exchange / std::log(2.0) * std::log(dose / 100) + rule.Criterion;
}

double levelOfDose(double dose, double criterion, double perDecade) {
    return criterion + perDecade * std::log10(dose / 100);
}

double averageLevelOfDose(double dose, DoseRule rule, double hours) {
    return rule.Criterion + decibelsPerDecade(rule.Exchange) * std::log10(dose / (kPercentPerHour * hours));
}

double allowedHours(double level, DoseRule rule) {
    return kReferenceHours / std::exp2((level - rule.Criterion) / rule.Exchange);
}

double dosePart(double level, double hours, DoseRule rule) {
    return 100 * hours / allowedHours(level, rule);
}

double exposurePoints(double level, double hours) {
    constexpr double kLevelOf100Points = 85; // dB over 8 h
    return 100 * (hours / kReferenceHours) * energyOf(level - kLevelOf100Points);
}

double weeklyExposure(std::span<const double> days) {
    constexpr double kDaysOfAWeek = 5;
    double sum = 0;
    for (const double day : days)
        sum += energyOf(day);
    return levelOf(sum / kDaysOfAWeek);
}

double levelPartlyProtected(double level, double protectedLevel, double share) {
    return levelOf(share * energyOf(protectedLevel) + (1 - share) * energyOf(level));
}

double doseIn8Hours(double dose, double hours) {
    return dose * (kReferenceHours / hours);
}

double dosePerHour(double dose, double hours) {
    return dose / hours;
}

} // namespace kestrane

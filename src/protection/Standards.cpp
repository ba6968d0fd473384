#include "protection/Standards.h"

#include "calc/BandLevels.h"
#include "calc/FreqWeight.h"
#include "model/Acoustics.h"
#include "platform/Numbers.h"
#include "protection/Attenuation.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <iterator>

namespace kestrane {

namespace {

// A level this close to a boundary counts as being on it, because singles cannot tell the two apart.
constexpr double kSame = 1e-4; // dB

constexpr std::string_view kFromBands = " from bands";
// Deviations below the mean, indexed by correction: for 84 % or 98 % of wearers.
constexpr double kAlphas[] = {1, 2, 1, 1};

// The share of NRR that a derating leaves, and what is taken off for an A-weighted level before or after it.
struct NrrDerating {
    double share;
    double before, behind; // dB
};

constexpr double kAllowanceForA = 7; // dB
constexpr NrrDerating kDeratings[] = {
    {1, kAllowanceForA, 0},   {0.5, kAllowanceForA, 0}, {0.75, 0, kAllowanceForA},
    {0.5, 0, kAllowanceForA}, {0.3, 0, kAllowanceForA},
};

// The levels that the HML, SNR and NRR methods start from.
struct WeightedLevels {
    std::optional<double> a, c;
    std::string_view origin;
};

std::optional<double> present(float level) {
    return level == 0 ? std::nullopt : std::optional<double>(level);
}

WeightedLevels weightedLevels(const clsLog& log) {
    const WeightedLevels bands{leqFromBands(log, "A"), leqFromBands(log, "C"), kFromBands};
    if (bands.a) return bands;
    return {present(LeqFreqWA(log)), present(LeqFreqWC(log)), {}};
}

using Figures = std::vector<StandardFigure>;

void addOctave(Figures& figures, const clsLog& log, const clsHP& hp, bool isUS, double alpha) {
    const bool isUSData = isUS && !hp.HasOctaves();
    const auto mean = [&](int band) { return isUSData ? hp.MeanUS(band) : hp.Mean(band); };
    const auto levels = linearOctaves(log);
    double sum = 0;
    for (int band = mean(1) == 0 ? 2 : 1; band <= kProtectorBands; ++band) {
        if (mean(band) == 0) return;
        // Index and band match, because the levels begin at 31.5 Hz, one band lower.
        const auto& level = levels[static_cast<std::size_t>(band)];
        if (!level) continue;
        const double assumed = mean(band) - alpha * (isUSData ? hp.SDUS(band) : hp.SD(band));
        sum += energyOf(*level - weightingOffset("A", protectorBand(band)) - assumed);
    }
    if (sum > 0) figures.push_back({"Octave", levelOf(sum)});
}

std::string named(std::string_view method, std::string_view origin) {
    return std::string(method) + std::string(origin);
}

void addHML(Figures& figures, const clsHP& hp, const WeightedLevels& levels) {
    if (!hp.HasHML() || !levels.a || !levels.c) return;
    const double reduction = predictedReduction(roundHalfAway(hp.High), roundHalfAway(hp.Medium), roundHalfAway(hp.Low),
                                                *levels.c - *levels.a);
    figures.push_back({named("HML", levels.origin), *levels.a - reduction});
}

void addSNR(Figures& figures, const clsHP& hp, const WeightedLevels& levels) {
    if (!hp.HasSNR() || !levels.c) return;
    figures.push_back({named("SNR", levels.origin), *levels.c - roundHalfAway(hp.SNR)});
}

struct NrrEntry {
    std::string_view name;
    NrrRule rule;
    bool ofMuffs, ofPlugs;
};

constexpr std::string_view kAppendixB = "NRR OSHA App. B";
constexpr std::string_view kHalf = "NRR OSHA 50 %";
constexpr std::string_view kNIOSH = "NRR NIOSH";

constexpr NrrEntry kNrrEntries[] = {{kAppendixB, NrrRule::AppendixB, true, true},
                                    {kHalf, NrrRule::HalfOf, true, true},
                                    {kNIOSH, NrrRule::Muff, true, false},
                                    {"NRR NIOSH (formable)", NrrRule::FormablePlug, false, true},
                                    {"NRR NIOSH (other)", NrrRule::OtherPlug, false, true}};

void addNRR(Figures& figures, const clsLog& log, const clsHP& hp, const WeightedLevels& levels) {
    if (!hp.HasNRR()) return;
    const std::string weight = FreqW_NRR(log);
    const bool isC = weight == "C";
    const auto measured = present(isC ? LeqFreqWC(log) : LeqFreqWA(log));
    const auto level = measured ? measured : isC ? std::nullopt : levels.a;
    if (!level) return;
    const bool isMuff = hp.Tipe == 1;
    for (const NrrEntry& entry : kNrrEntries) {
        if (!(isMuff ? entry.ofMuffs : entry.ofPlugs)) continue;
        figures.push_back({named(entry.name, measured ? std::string_view() : levels.origin),
                           levelByNrr(entry.rule, *level, isC, hp.NRR)});
    }
}

// The figure by the standard that corresponds to a method of the comparison; for NRR, the one that fits the mode. Null
// when there is none.
const StandardFigure* figureOf(const Figures& figures, std::string_view method, const clsOptions& options) {
    if (method == "NRR") method = options.HPDCalc == eHPDModeUSNIOSH ? kNIOSH : kHalf;
    const auto found = std::find_if(figures.begin(), figures.end(),
                                    [&](const StandardFigure& figure) { return figure.Method.starts_with(method); });
    return method.empty() || found == figures.end() ? nullptr : &*found;
}

} // namespace

double predictedReduction(double high, double medium, double low, double cMinusA) {
    const double slope = cMinusA <= 2 ? (high - medium) / 4 : (medium - low) / 8;
    return medium - slope * (cMinusA - 2);
}

double levelByNrr(NrrRule rule, double level, bool isC, double nrr) {
    const NrrDerating& derating = kDeratings[static_cast<std::size_t>(rule)];
    return level - ((nrr - (isC ? 0 : derating.before)) * derating.share - (isC ? 0 : derating.behind));
}

int StandardFigure::Rounded() const {
    return static_cast<int>(roundHalfAway(Level));
}

std::vector<StandardFigure> standardFigures(const clsLog& log, const clsHP& protector, const clsOptions& options,
                                            CorrectionKind iCorrectionFactor) {
    Figures figures;
    const WeightedLevels levels = weightedLevels(log);
    addOctave(figures, log, protector, options.IsUSHPDMode(), kAlphas[static_cast<std::size_t>(iCorrectionFactor)]);
    addHML(figures, protector, levels);
    addSNR(figures, protector, levels);
    addNRR(figures, log, protector, levels);
    std::erase_if(figures, [](const StandardFigure& figure) { return !std::isfinite(figure.Level); });
    return figures;
}

std::string_view verdictName(Verdict verdict) {
    constexpr std::string_view kNames[] = {"good", "acceptable", "over-protected", "insufficient", "none"};
    return kNames[static_cast<std::size_t>(verdict)];
}

Verdict verdictOf(double protectedLevel, double actionLevel) {
    if (!std::isfinite(protectedLevel)) return Verdict::None;
    const double below = actionLevel - protectedLevel;
    if (below < -kSame) return Verdict::Insufficient;
    if (below > 15 + kSame) return Verdict::OverProtected;
    return below >= 5 - kSame && below <= 10 + kSame ? Verdict::Good : Verdict::Acceptable;
}

StandardJudgement judgeByStandards(const clsLog& log, const clsHP& protector, const clsOptions& options,
                                   CorrectionKind iCorrectionFactor, const std::string& toldMethod, float toldResult) {
    StandardJudgement judgement;
    judgement.Figures = standardFigures(log, protector, options, iCorrectionFactor);
    const std::vector<std::string_view> methods =
        toldMethod.empty() ? methodsOf(options) : std::vector<std::string_view>{toldMethod};
    for (const std::string_view method : methods) {
        const StandardFigure* figure = figureOf(judgement.Figures, method, options);
        if (figure == nullptr || judgement.Chosen) continue;
        judgement.Chosen = *figure;
        judgement.Level = iCorrectionFactor == kCorrectionFourDecibels ? figure->Plus4() : figure->Level;
    }
    if (!judgement.Level && toldResult != kCannotCompute && std::isfinite(toldResult)) judgement.Level = toldResult;
    if (judgement.Level) judgement.Verdict = verdictOf(*judgement.Level, options.ActionLevel);
    return judgement;
}

} // namespace kestrane

#include "protection/Attenuation.h"

#include "calc/FreqWeight.h"
#include "calc/Recalculation.h"
#include "model/Acoustics.h"
#include "model/LogTime.h"
#include "model/Session.h"
#include "platform/Numbers.h"
#include "platform/RuntimeError.h"

#include <algorithm>
#include <iterator>

namespace kestrane {

namespace {

constexpr double kFourDecibels = 4;
constexpr Text::Id kCorrectionTexts[] = {Text::CorrectionNone, Text::Correction2StdDevs, Text::Correction4dB,
                                         Text::Correction1StdDev}; // indexed by correction

double fourDecibels(CorrectionKind iCorrectionFactor) {
    return iCorrectionFactor == kCorrectionFourDecibels ? kFourDecibels : 0;
}

bool isDeviations(CorrectionKind iCorrectionFactor) {
    return iCorrectionFactor == kCorrectionTwoDeviations || iCorrectionFactor == kCorrectionOneDeviation;
}

bool isWeightedC(const clsLog& log) {
    return log.FreqWeightA() == "C" || (log.IsChannelBOn && log.FreqWeightB() == "C");
}

struct Protection {
    const clsHP& protector;
    const clsLog& log;
    const clsOptions& options;
    CorrectionKind correction;
};

// The European means and deviations serve in the US modes, too; that is meant. Bands without a mean are left out.
float byOctaves(const Protection& p) {
    const std::array<double, 10> levels = octaveLevels(p.log);
    double sum = 0;
    for (int band = 1; band <= kProtectorBands; ++band) {
        if (p.protector.Mean(band) == 0) continue;
        sum += energyOf(levels[static_cast<std::size_t>(band)] - assumedAttenuation(p.protector, band, p.correction));
    }
    if (sum == 0) return kCannotCompute;
    return checkedSingle(levelOf(sum) + fourDecibels(p.correction));
}

float byHML(const Protection& p) {
    const float d = HMLCMinusA(p.log);
    const clsHP& hp = p.protector;
    const double slope =
        d <= 2 ? (static_cast<double>(hp.High) - hp.Medium) / 4 : (static_cast<double>(hp.Medium) - hp.Low) / 8;
    const float pnr = checkedSingle(hp.Medium - slope * (static_cast<double>(d) - 2));
    return checkedSingle(static_cast<double>(LeqFreqWA(p.log)) - pnr + fourDecibels(p.correction));
}

float bySNR(const Protection& p) {
    if (!isWeightedC(p.log)) return kCannotCompute;
    return checkedSingle(static_cast<double>(LeqFreqWC(p.log)) - p.protector.SNR + fourDecibels(p.correction));
}

float byNRR(const Protection& p) {
    const std::string weight = FreqW_NRR(p.log);
    if (weight.empty()) return kCannotCompute;
    const bool isHalved = p.options.HPDCalc == eHPDModeUSOSHA || p.protector.Tipe != 1;
    const double derating = isHalved ? 0.5 : 0.25;
    // By 29 CFR 1910.95 Appendix B an A-weighted level takes 7 dB off the rating. It is meant that they are taken off
    // before derating.
    const double toC = weight == "C" ? 0 : 7;
    const float hours = getTime(p.log, 'h', Run::Whole, ExcludedRows::LeftOut);
    const float dose = checkedSingle(doseIn8Hours(DoseMT_NRR(p.log), hours));
    const double twa = twaOfDose(dose, p.log.Rule());
    return checkedSingle(twa - (static_cast<double>(p.protector.NRR) - toC) * derating);
}

struct Method {
    std::string_view name;
    bool (*canUse)(const clsLog& log, const clsHP& protector);
    float (*calculate)(const Protection& protection);
};

constexpr Method kMethods[] = {
    {kByOctaves, [](const clsLog& log, const clsHP& hp) { return log.IsOctaveLog() && hp.HasOctaves(); }, byOctaves},
    {kByOctaves, [](const clsLog& log, const clsHP& hp) { return log.IsOctaveLog() && hp.HasOctavesUS(); }, byOctaves},
    {"HML", [](const clsLog& log, const clsHP& hp) { return IsHMLCalculateable(log) && hp.HasHML(); }, byHML},
    {"SNR", [](const clsLog& log, const clsHP& hp) { return IsSNRCalculateable(log) && hp.HasSNR(); }, bySNR},
    {"NRR", [](const clsLog& log, const clsHP& hp) { return IsNRRCalculateable(log) && hp.HasNRR(); }, byNRR},
};

enum MethodIndex { kOctave, kOctaveUS, kHML, kSNR, kNRR, kNoMethod };

// The methods that are tried for each choice of the user, in order.
struct MethodRule {
    bool isUS;
    std::string_view choice;
    std::array<MethodIndex, 3> methods;
};

constexpr MethodRule kRules[] = {
    {false, "Auto", {kOctave, kHML, kSNR}},       {false, "HML", {kHML, kNoMethod, kNoMethod}},
    {false, "SNR", {kSNR, kNoMethod, kNoMethod}}, {true, "Auto", {kOctaveUS, kNRR, kNoMethod}},
    {true, "NRR", {kNRR, kNoMethod, kNoMethod}},
};

std::vector<const Method*> methodsTried(const clsOptions& options) {
    std::vector<const Method*> tried;
    for (const MethodRule& rule : kRules) {
        if (rule.isUS != options.IsUSHPDMode() || rule.choice != options.HPDCalcMethod) continue;
        for (const MethodIndex index : rule.methods)
            if (index != kNoMethod) tried.push_back(&kMethods[index]);
    }
    return tried;
}

const Method* methodFor(const clsLog& log, const clsOptions& options, const clsHP& protector) {
    for (const Method* method : methodsTried(options))
        if (method->canUse(log, protector)) return method;
    return nullptr;
}

} // namespace

CorrectionKind correctionOf(const Session& session, const std::string& text, std::int16_t mode) {
    for (const CorrectionKind correction : kCorrections)
        if (text == session.LoadText(kCorrectionTexts[correction])) return correction;
    return mode == eHPDModeEUHSE ? kCorrectionFourDecibels : kCorrectionNone;
}

bool IsSNRCalculateable(const clsLog& log) {
    return isWeightedC(log);
}

bool IsNRRCalculateable(const clsLog& log) {
    return !FreqW_NRR(log).empty();
}

std::string HPDCalcMethodToUse(const clsLog& log, const clsOptions& options, const clsHP& protector) {
    const Method* method = methodFor(log, options, protector);
    return method == nullptr ? std::string() : std::string(method->name);
}

std::vector<std::string_view> methodsOf(const clsOptions& options) {
    std::vector<std::string_view> names;
    for (const Method* method : methodsTried(options))
        names.push_back(method->name);
    return names;
}

std::unique_ptr<clsLog> convertedToZ(const clsLog& log) {
    auto converted = std::make_unique<clsLog>(log.session());
    converted->Copy(log, 0, 0);
    log.session().ShowMessage(log.session().LoadText(Text::LogIsNotZWeighted), kIconInformation);
    AdjustFreqWeight(*converted, "Z", false);
    return converted;
}

std::optional<std::int16_t> modeOfName(std::string_view name) {
    constexpr std::string_view kModes[] = {"hse", "osha", "niosh"}; // indexed by mode
    const auto* const found = std::find(std::begin(kModes), std::end(kModes), name);
    if (found == std::end(kModes)) return std::nullopt;
    return static_cast<std::int16_t>(found - std::begin(kModes));
}

std::array<double, 10> octaveLevels(const clsLog& log) {
    std::array<double, 10> levels{};
    for (int j = 1; log.IsOctaveLog() && j <= 10; ++j) {
        double& level = levels[static_cast<std::size_t>(j) - 1];
        if (log.Mode() == modeFullOctave) {
            level = log.LeqCumA(j + 1).CalcValue();
        } else {
            double energy = 0;
            for (int third = 3 * j + 1; third <= 3 * j + 3; ++third)
                energy += energyOf(log.LeqCumA(third).CalcValue());
            level = levelOf(energy);
        }
    }
    return levels;
}

double assumedAttenuation(const clsHP& protector, int band, CorrectionKind iCorrectionFactor) {
    const double deviations = iCorrectionFactor == kCorrectionTwoDeviations  ? 2
                              : iCorrectionFactor == kCorrectionOneDeviation ? 1
                                                                             : 0;
    return protector.Mean(band) - deviations * protector.SD(band);
}

float APL_PAR_ENL(const clsHP& protector, const clsLog& log, const clsOptions& options,
                  CorrectionKind iCorrectionFactor) {
    const Method* method = methodFor(log, options, protector);
    if (method == nullptr || (isDeviations(iCorrectionFactor) && method->name != kByOctaves)) return kCannotCompute;
    try {
        return method->calculate({protector, log, options, iCorrectionFactor});
    } catch (const RuntimeError&) { // there is no time or no dose
        return kCannotCompute;
    }
}

} // namespace kestrane

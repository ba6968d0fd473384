#include "protection/Ranking.h"

#include "calc/FreqWeight.h"
#include "model/Session.h"
#include "protection/Attenuation.h"

#include <algorithm>
#include <cmath>
#include <tuple>

namespace kestrane {

std::vector<RankedProtector> rankProtectors(const clsLog& log, const std::vector<clsHP>& protectors,
                                            const clsOptions& options, CorrectionKind iCorrectionFactor) {
    struct Place {
        Verdict verdict;
        double distance;
        RankedProtector ranked;
    };

    constexpr double kMiddleOfGood = 7.5; // dB below the action level
    std::unique_ptr<clsLog> converted;    // created for the first protector that needs it
    std::vector<Place> places;
    for (const clsHP& hp : protectors) {
        const std::string method = HPDCalcMethodToUse(log, options, hp);
        const bool isConverted = method == kByOctaves && log.FreqWeightA() != "Z";
        if (isConverted && !converted) converted = convertedToZ(log);
        const float result = APL_PAR_ENL(hp, isConverted ? *converted : log, options, iCorrectionFactor);
        const StandardJudgement judged = judgeByStandards(log, hp, options, iCorrectionFactor, method, result);
        const double distance = judged.Level ? std::abs(*judged.Level - (options.ActionLevel - kMiddleOfGood)) : 0;
        places.push_back({judged.Verdict,
                          distance,
                          {&hp, method.empty() && judged.Chosen ? judged.Chosen->Method : method, result,
                           judged.Chosen ? judged.Level : std::nullopt, judged.Verdict, judged.Level, judged.Figures}});
    }
    std::stable_sort(places.begin(), places.end(), [](const Place& a, const Place& b) {
        return std::tie(a.verdict, a.distance) < std::tie(b.verdict, b.distance);
    });
    std::vector<RankedProtector> ranked;
    ranked.reserve(places.size());
    for (Place& place : places)
        ranked.push_back(std::move(place.ranked));
    return ranked;
}

} // namespace kestrane

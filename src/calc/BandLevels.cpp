#include "calc/BandLevels.h"

#include "calc/FreqWeight.h"
#include "model/Acoustics.h"
#include "model/Session.h"

#include <algorithm>

namespace kestrane {

namespace {

constexpr std::array<std::string_view, kOctaves> kOctaveLabels = {"31.5", "63", "125", "250", "500",
                                                                  "1k",   "2k", "4k",  "8k",  "16k"};

std::optional<double> present(float level) {
    return level == 0 ? std::nullopt : std::optional<double>(level);
}

// The energy of the bands from to to, both included, under a weighting; 0 when all of them are absent.
double energyOfBands(const clsLog& log, std::string_view weight, int from, int to) {
    double energy = 0;
    for (int band = from; band <= to; ++band) {
        const float level = log.LeqCumA(band).CalcValue();
        if (level != 0) energy += energyOf(level + toWeighting(log, weight, band));
    }
    return energy;
}

std::optional<double> levelOfSum(double energy) {
    return energy > 0 ? std::optional(levelOf(energy)) : std::nullopt;
}

} // namespace

std::array<std::optional<double>, kOctaves> linearOctaves(const clsLog& log) {
    std::array<std::optional<double>, kOctaves> levels;
    if (!log.IsOctaveLog()) return levels;
    const int around = log.Mode() == modeThirdOctave ? 1 : 0;
    for (int octave = 0; octave < kOctaves; ++octave) {
        const int band = log.e(octaveLabel(octave));
        levels[static_cast<std::size_t>(octave)] = levelOfSum(energyOfBands(log, "Z", band - around, band + around));
    }
    return levels;
}

std::string_view octaveLabel(int octave) {
    return kOctaveLabels.at(static_cast<std::size_t>(octave));
}

double toWeighting(const clsLog& log, std::string_view weight, int band) {
    const std::string_view label = log.eStr(band);
    const std::string_view own = log.FreqWeightA().empty() ? std::string_view("Z") : log.FreqWeightA();
    return static_cast<double>(weightingOffset(own, label)) - weightingOffset(weight, label);
}

std::optional<double> leqFromBands(const clsLog& log, std::string_view weight) {
    return levelOfSum(energyOfBands(log, weight, 1, lastBand(log.Mode())));
}

Text::Id nameOfLAeqFromBands(const clsLog& log) {
    return log.FreqWeightA().empty() ? Text::BasisUnknownBands : Text::BasisBands;
}

std::vector<float> levelsOfRowsFromBands(const clsLog& log, Quantity quantity, std::string_view weight) {
    const IntervalColumns& rows = log.LogIntervals.Columns();
    std::vector<double> energies;
    for (int band = 1; band <= lastBand(log.Mode()); ++band) {
        const std::span<const Level> levels = rows.levels(quantity, band);
        if (levels.empty()) continue;
        energies.resize(rows.count());
        const double offset = toWeighting(log, weight, band);
        for (std::size_t row = 0; row < levels.size(); ++row)
            if (levels[row].CalcValue != 0) energies[row] += energyOf(levels[row].CalcValue + offset);
    }
    std::vector<float> leqs(energies.size());
    std::ranges::transform(energies, leqs.begin(),
                           [](double energy) { return energy > 0 ? static_cast<float>(levelOf(energy)) : 0; });
    return leqs;
}

LevelsFrom aWeightedLevels(const clsLog& log) {
    if (log.FreqWeightA() == "A") return LevelsFrom::ChannelA;
    if (log.IsChannelBOn && log.FreqWeightB() == "A") return LevelsFrom::ChannelB;
    return log.IsOctaveLog() ? LevelsFrom::Bands : LevelsFrom::Nowhere;
}

std::optional<double> aWeightedLeq(const clsLog& log) {
    switch (aWeightedLevels(log)) {
    case LevelsFrom::ChannelA:
        return present(log.LeqCumA(0).CalcValue());
    case LevelsFrom::ChannelB:
        return present(log.LeqCumB.CalcValue());
    case LevelsFrom::Bands:
        return leqFromBands(log, "A");
    case LevelsFrom::Nowhere:
        break;
    }
    return std::nullopt;
}

bool isExposureNotAWeighted(const clsLog& log, LogChannel channel, Parameter parameter) {
    constexpr Parameter kExposures[] = {eLepdET, eLepdMT, eDoseET, eDoseMT, eDoseHour, eLe_Sel, ePa2Hr, eLAvg, eTWA};
    if (channel != kChannelA || std::ranges::find(kExposures, parameter) == std::end(kExposures)) return false;
    return log.FreqWeightA() != "A" && (log.IsOctaveLog() || !log.FreqWeightA().empty());
}

std::string withWeightingMark(const clsLog& log, LogChannel channel, Parameter parameter, std::string text) {
    if (isExposureNotAWeighted(log, channel, parameter))
        text += " (" + log.session().LoadText(Text::NotAWeighted) + ")";
    return text;
}

} // namespace kestrane

#include "assessment/Iso9612.h"

#include "model/Acoustics.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <iterator>
#include <numeric>

namespace kestrane {

namespace {

constexpr double kColumnWidth = 0.5; // dB between two columns of u1; the first is 0

struct SamplingRow {
    std::size_t samples;
    std::array<double, 13> c1u1; // at u1 = 0, 0.5 ... 6
};

constexpr SamplingRow kTableC4[] = {
    {3, {0, .6, 1.6, 3.1, 5.2, 8.0, 11.5, 15.7, 20.6, 26.1, 32.2, 39.0, 46.5}},
    {5, {0, .3, .7, 1.2, 1.7, 2.4, 3.3, 4.4, 5.6, 6.9, 8.5, 10.2, 12.1}},
    {6, {0, .3, .6, .9, 1.4, 1.9, 2.6, 3.3, 4.2, 5.2, 6.3, 7.6, 8.9}},
    {10, {0, .2, .4, .6, .9, 1.2, 1.5, 1.9, 2.4, 2.9, 3.5, 4.1, 4.8}},
    {20, {0, .1, .3, .4, .5, .7, .9, 1.1, 1.4, 1.7, 2.0, 2.3, 2.6}},
    {30, {0, .1, .2, .3, .4, .6, .7, .9, 1.1, 1.3, 1.5, 1.7, 2.0}},
};

// The sum of the squared deviations from the arithmetic mean. There must be at least one sample.
double squaredDeviations(std::span<const double> samples) {
    const double mean = std::accumulate(samples.begin(), samples.end(), 0.0) / static_cast<double>(samples.size());
    return std::accumulate(samples.begin(), samples.end(), 0.0,
                           [&](double sum, double x) { return sum + (x - mean) * (x - mean); });
}

} // namespace

std::optional<double> energyMean(std::span<const double> levels) {
    if (levels.empty()) return std::nullopt;
    double energy = 0;
    for (const double level : levels)
        energy += energyOf(level);
    return levelOf(energy / static_cast<double>(levels.size()));
}

std::optional<double> uncertaintyOfMean(std::span<const double> samples) {
    const auto deviation = standardDeviation(samples);
    if (!deviation) return std::nullopt;
    return *deviation / std::sqrt(static_cast<double>(samples.size()));
}

std::optional<double> standardDeviation(std::span<const double> samples) {
    if (samples.size() < 2) return std::nullopt;
    return std::sqrt(squaredDeviations(samples) / static_cast<double>(samples.size() - 1));
}

double uncertaintyOfDuration(double shortest, double longest) {
    return 0.5 * (longest - shortest);
}

double levelSensitivity(double level, double hours, double lex8h) {
    return hours / kReferenceHours * energyOf(level - lex8h);
}

double durationSensitivity(double c1a, double hours) {
    return 4.34 * c1a / hours; // 10 / ln 10 as the standard prints it
}

std::optional<double> samplingUncertainty(std::size_t samples, double u1) {
    const auto above = std::upper_bound(std::begin(kTableC4), std::end(kTableC4), samples,
                                        [](std::size_t n, const SamplingRow& row) { return n < row.samples; });
    if (above == std::begin(kTableC4) || u1 > kHighestU1) return std::nullopt;
    const auto& row = std::prev(above)->c1u1;
    const auto column = std::min(static_cast<std::size_t>(u1 / kColumnWidth), row.size() - 2);
    const double beyond = u1 / kColumnWidth - static_cast<double>(column);
    return row[column] + beyond * (row[column + 1] - row[column]);
}

double minimumMeasuredHours(int workers) {
    if (workers <= 5) return 5;
    if (workers <= 15) return 5 + 0.5 * (workers - 5);
    if (workers <= kLargestGroup) return 10 + 0.25 * (workers - 15);
    return 17;
}

} // namespace kestrane

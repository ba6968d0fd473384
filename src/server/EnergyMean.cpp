// Compiled so that the processor works on several rows at a time (see CMakeLists.txt), where the program can choose
// between two forms of a function when it is loaded. All numbers must be finite.
#include "server/EnergyMean.h"

#include "model/Acoustics.h"

#include <algorithm>
#include <cmath>
#include <limits>

#if defined(__x86_64__) && defined(__GNUC__) && !defined(__clang__) && !defined(__SANITIZE_ADDRESS__) &&               \
    !defined(__SANITIZE_THREAD__) && defined(__ELF__)
#define KESTRANE_WIDEST __attribute__((target_clones("avx2,fma", "default")))
#else
#define KESTRANE_WIDEST
#endif

namespace kestrane {

namespace {

constexpr std::size_t kBlock = 512;

KESTRANE_WIDEST void exponentials(const double* levels, double* energies, std::size_t count) {
    for (std::size_t i = 0; i < count; ++i)
        energies[i] = std::exp(levels[i] * kNepersPerDecibel);
}

template <class Better>
float bestLevel(const Level* levels, const std::uint8_t* excluded, std::size_t count, float worst, Better better) {
    float best = worst;
    const auto take = [&](float level, bool counts) {
        const float candidate = counts ? level : worst;
        best = better(candidate, best) ? candidate : best;
    };
    if (excluded == nullptr) {
        for (std::size_t i = 0; i < count; ++i)
            take(levels[i].CalcValue, levels[i].CalcValue != 0);
    } else {
        for (std::size_t i = 0; i < count; ++i)
            take(levels[i].CalcValue, (levels[i].CalcValue != 0) & (excluded[i] == 0));
    }
    return best == worst ? 0 : best;
}

KESTRANE_WIDEST float smallest(const Level* levels, const std::uint8_t* excluded, std::size_t count) {
    constexpr float kWorst = std::numeric_limits<float>::max();
    return bestLevel(levels, excluded, count, kWorst, [](float a, float b) { return a < b; });
}

KESTRANE_WIDEST float largest(const Level* levels, const std::uint8_t* excluded, std::size_t count) {
    constexpr float kWorst = std::numeric_limits<float>::lowest();
    return bestLevel(levels, excluded, count, kWorst, [](float a, float b) { return a > b; });
}

} // namespace

EnergySum sumEnergy(std::span<const Level> levels, std::span<const std::uint8_t> excluded,
                    std::span<const std::int32_t> weights) {
    EnergySum sum;
    double values[kBlock];
    double energies[kBlock];
    double shares[kBlock];
    for (std::size_t from = 0; from < levels.size(); from += kBlock) {
        const std::size_t count = std::min(kBlock, levels.size() - from);
        for (std::size_t i = 0; i < count; ++i) {
            const float level = levels[from + i].CalcValue;
            const bool counts = level != 0 && (excluded.empty() || excluded[from + i] == 0);
            values[i] = level;
            shares[i] = !counts ? 0.0 : weights.empty() ? 1.0 : static_cast<double>(weights[from + i]);
        }
        exponentials(values, energies, count);
        for (std::size_t i = 0; i < count; ++i) {
            sum.energy += shares[i] != 0 ? shares[i] * energies[i] : 0.0;
            sum.weight += shares[i];
        }
    }
    return sum;
}

float smallestLevel(std::span<const Level> levels, std::span<const std::uint8_t> excluded) {
    return smallest(levels.data(), excluded.empty() ? nullptr : excluded.data(), levels.size());
}

float largestLevel(std::span<const Level> levels, std::span<const std::uint8_t> excluded) {
    return largest(levels.data(), excluded.empty() ? nullptr : excluded.data(), levels.size());
}

} // namespace kestrane

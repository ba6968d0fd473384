#include "cli/Nearest.h"

#include <algorithm>
#include <vector>

namespace kestrane {

namespace {

std::size_t changesBetween(std::string_view a, std::string_view b) {
    std::vector<std::vector<std::size_t>> changes(a.size() + 1, std::vector<std::size_t>(b.size() + 1));
    for (std::size_t i = 0; i <= a.size(); ++i) {
        for (std::size_t j = 0; j <= b.size(); ++j) {
            std::size_t& here = changes[i][j];
            if (i == 0 || j == 0) {
                here = i + j;
                continue;
            }
            const std::size_t other = changes[i - 1][j - 1] + (a[i - 1] == b[j - 1] ? 0 : 1);
            here = std::min({changes[i - 1][j] + 1, changes[i][j - 1] + 1, other});
            const bool areExchanged = i > 1 && j > 1 && a[i - 1] == b[j - 2] && a[i - 2] == b[j - 1];
            if (areExchanged) here = std::min(here, changes[i - 2][j - 2] + 1);
        }
    }
    return changes[a.size()][b.size()];
}

} // namespace

std::string nearest(std::string_view word, std::span<const std::string> candidates) {
    constexpr std::size_t kLongest = 100; // a longer word is no name
    if (word.size() > kLongest) return {};
    std::string best;
    std::size_t fewest = std::max<std::size_t>(word.size() / 2, 1) + 1;
    for (const std::string& candidate : candidates) {
        const std::size_t changes = changesBetween(word, candidate);
        if (changes >= fewest) continue;
        fewest = changes;
        best = candidate;
    }
    return best;
}

std::string meant(std::string_view word, std::span<const std::string> candidates) {
    const std::string name = nearest(word, candidates);
    return name.empty() ? std::string() : "; did you mean '" + name + "'?";
}

} // namespace kestrane

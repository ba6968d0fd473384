#include "views/LevelMap.h"

#include "calc/BandLevels.h"

#include <algorithm>
#include <limits>

namespace kestrane {

namespace {

constexpr std::size_t kBlock = 32; // rows
constexpr float kNone = -std::numeric_limits<float>::infinity();

float highestOf(std::span<const Level> levels) {
    float highest = kNone;
    for (const Level& level : levels)
        highest = level.CalcValue != 0 ? std::max(highest, level.CalcValue) : highest;
    return highest;
}

float lowestOf(std::span<const Level> levels) {
    float lowest = -kNone;
    for (const Level& level : levels)
        lowest = level.CalcValue != 0 ? std::min(lowest, level.CalcValue) : lowest;
    return lowest;
}

} // namespace

LevelMap::LevelMap(const clsLog& log, std::string_view weight) : rows_(log.LogIntervals.Columns()) {
    float lowest = -kNone;
    float highest = kNone;
    for (int band = 1; band <= log.e("Last"); ++band) {
        Band& added = bands_.emplace_back(Band{std::string(log.eStr(band)),
                                               static_cast<float>(toWeighting(log, weight, band)),
                                               rows_.levels(Quantity::LeqA, band),
                                               {}});
        const std::span<const Level> levels = added.levels;
        added.blocks.reserve(levels.size() / kBlock);
        for (std::size_t begin = 0; begin + kBlock <= levels.size(); begin += kBlock)
            added.blocks.push_back(highestOf(levels.subspan(begin, kBlock)));
        lowest = std::min(lowest, lowestOf(levels) + added.offset);
        highest = std::max(highest, highestOf(levels) + added.offset);
    }
    if (lowest <= highest) extent_ = {lowest, highest};
}

float LevelMap::LevelAt(std::size_t row, std::size_t band) const {
    const Band& of = bands_[band];
    const float level = row < of.levels.size() ? of.levels[row].CalcValue : 0;
    return level == 0 ? kNullValue : level + of.offset;
}

void LevelMap::Highest(std::size_t begin, std::size_t end, std::span<float> levels) const {
    for (std::size_t band = 0; band < bands_.size(); ++band) {
        const Band& of = bands_[band];
        const std::size_t last = std::min(end, of.levels.size());
        const std::size_t first = std::min(begin, last);
        const std::size_t firstBlock = (first + kBlock - 1) / kBlock;
        const std::size_t lastBlock = last / kBlock;
        float highest = kNone;
        if (firstBlock >= lastBlock) {
            highest = highestOf(of.levels.subspan(first, last - first));
        } else {
            highest = std::max(highestOf(of.levels.subspan(first, firstBlock * kBlock - first)),
                               highestOf(of.levels.subspan(lastBlock * kBlock, last - lastBlock * kBlock)));
            for (std::size_t block = firstBlock; block < lastBlock; ++block)
                highest = std::max(highest, of.blocks[block]);
        }
        levels[band] = highest == kNone ? kNullValue : highest + of.offset;
    }
}

} // namespace kestrane

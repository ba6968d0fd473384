// The levels of the bands of a log over its rows, reduced for drawing: what a pixel column of many rows shows is found
// in a time that hardly depends on their number. It shares the columns of the log's rows, so it stays valid when the
// log changes or goes. Rows and bands are counted from 0, the lowest band first.
#pragma once

#include "model/clsLog.h"
#include "views/ChartData.h"

#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace kestrane {

class LevelMap {
public:
    // The Leq of the bands of channel A, converted to the weighting "A", "C" or "Z". A broadband log has no bands.
    LevelMap(const clsLog& log, std::string_view weight);
    LevelMap(const LevelMap&) = delete;
    LevelMap& operator=(const LevelMap&) = delete;

    std::size_t BandCount() const { return bands_.size(); }

    const std::string& BandLabel(std::size_t band) const { return bands_[band].label; } // such as "1k"

    // dB; kNullValue when the row has none.
    float LevelAt(std::size_t row, std::size_t band) const;

    // The highest level of each band in the rows from begin to end, end not included; kNullValue when there is none.
    // levels has a place for each band.
    void Highest(std::size_t begin, std::size_t end, std::span<float> levels) const;

    // From the lowest to the highest level, dB; from 0 to 0 when there is none.
    ChartRange Extent() const { return extent_; }

private:
    struct Band {
        std::string label;
        float offset; // what converts it to the weighting, dB
        std::span<const Level> levels;
        std::vector<float> blocks; // the highest level of each whole block of rows, before it is converted
    };

    const IntervalColumns rows_; // keeps what the bands refer to
    std::vector<Band> bands_;
    ChartRange extent_;
};

} // namespace kestrane

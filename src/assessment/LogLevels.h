// What a log contributes to an exposure: the A-weighted levels and lengths of the rows that count, and its C-weighted
// peak. Rows that are excluded and rows without a level (0) do not count. Levels are in dB, lengths in seconds unless a
// name says otherwise.
#pragma once

#include "calc/BandLevels.h"
#include "model/clsFile.h"

#include <optional>
#include <string_view>
#include <vector>

namespace kestrane {

struct RowLevel {
    double Level;
    double Seconds; // 0 when the log does not say
};

struct LogLevels {
    LevelsFrom Origin = LevelsFrom::Nowhere;
    std::vector<RowLevel> Rows; // those that count, in order
    double Hours = 0;           // of these rows together
    double LongestRow = 0;
    std::optional<double> Leq;       // their energy mean, weighted by length; nothing without rows
    std::optional<double> CPeak;     // the highest C-weighted peak of the two channels; nothing when there is none
    std::optional<double> OtherPeak; // the highest peak with any other weighting; nothing when there is none
};

// The levels of a range of rows, or of all rows without a range. For all rows the peaks of the log's header are taken
// into account, too, unless rows are excluded. The range must lie in 1..Count. Without an origin the levels are those
// that the log has A-weighted.
LogLevels levelsOfRows(const clsLog& log, const std::optional<RowRange>& range = std::nullopt,
                       const std::optional<LevelsFrom>& origin = std::nullopt);

// The log that has this tree node key when the file is the only one open ("L1I1F1"), or the file's first log for an
// empty key. Null when there is none.
const clsLog* logOfKey(const clsFile& file, std::string_view key);

// That key of a log; empty when the log is not in the file.
std::string keyOfLog(const clsFile& file, const clsLog& log);

} // namespace kestrane

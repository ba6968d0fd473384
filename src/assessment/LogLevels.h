// What a log gives to an exposure: the A-weighted levels and lengths of the rows that count, and its C-weighted peak.
// Rows that are excluded and rows without a level (0) do not count. Levels are dB, lengths seconds unless a name says
// otherwise.
#pragma once

#include "calc/BandLevels.h"
#include "model/clsFile.h"

#include <optional>
#include <string_view>
#include <vector>

namespace kestrane {

struct RowLevel {
    double Level;
    double Seconds; // 0 when the log does not tell
};

struct LogLevels {
    LevelsFrom Origin = LevelsFrom::Nowhere;
    std::vector<RowLevel> Rows; // those that count, in order
    double Hours = 0;           // of them together
    double LongestRow = 0;
    std::optional<double> Leq;       // their energy mean by length; nothing without rows
    std::optional<double> CPeak;     // the highest C-weighted peak of either channel
    std::optional<double> OtherPeak; // the highest of any other weighting
};

// Of the rows of a range, or of all: then the peaks of the log's header count, too, unless rows are excluded. The range
// lies in 1..Count.
LogLevels levelsOfRows(const clsLog& log, const std::optional<RowRange>& range = std::nullopt);

// The log of a file that has this tree node key where the file is the only one open ("L1I1F1"), or the file's first log
// for an empty key. Null when there is none.
const clsLog* logOfKey(const clsFile& file, std::string_view key);

// That key.
std::string keyOfLog(const clsFile& file, const clsLog& log);

} // namespace kestrane

// Questions about the rows of a log, answered by pure functions: a stretch and what is left without it, the loudest and
// the quietest stretch of a length, events, percentiles, the distribution of levels. Rows that are excluded and rows
// without a level take no part. Levels are dB of channel A as they are weighted, no threshold is applied.
#pragma once

#include "model/clsLog.h"

#include <cstdint>
#include <optional>
#include <span>
#include <vector>

namespace kestrane {

struct AnalysedRow {
    std::int64_t Number; // from 1, of all rows of the log
    std::int64_t Begin;  // seconds (model/RowClock.h)
    double Seconds;      // 0 when not known
    double Level;
    float Lmax = 0, Lmin = 0, Peak = 0; // 0: none
};

// The rows that count, in order.
std::vector<AnalysedRow> analysedRows(const clsLog& log);

struct StretchFigures {
    double Seconds = 0;
    std::optional<double> LAeq; // energy mean by time; of rows without a length, each the same
    std::optional<double> LE;   // with a time only
    std::optional<double> Dose; // percent, by the criterion and rate; with a time and a rate only
    std::optional<float> Lmax, Lmin, Peak;
};

StretchFigures stretchFigures(std::span<const AnalysedRow> rows, double criterion, double exchange);

// Rows next to each other, as places in the rows that count: [First, Behind).
struct Stretch {
    std::size_t First, Behind;
};

// The end of a stretch without a gap that begins at a place: more than 1 s between the end of a row and the next, and a
// row that does not count, are gaps.
std::size_t endOfRun(std::span<const AnalysedRow> rows, std::size_t first);

struct WorstStretches {
    std::optional<Stretch> Loudest, Quietest; // the first of several; nothing when no stretch is long enough
};

// From each row on the shortest stretch of whole rows without a gap that lasts at least so long.
WorstStretches worstStretches(std::span<const AnalysedRow> rows, double seconds);

// Stretches without a gap of rows at or above a level that last at least so long.
std::vector<Stretch> eventsOf(std::span<const AnalysedRow> rows, double level, double seconds);

// The level exceeded for percent (0..100) of the time: the levels sorted with their lengths, linear between the middles
// of the rows, at the ends the highest and the lowest. Nothing without rows.
std::optional<double> levelExceeded(std::span<const AnalysedRow> rows, double percent);

struct LevelClass {
    double Level;   // its lower edge, a multiple of the width
    double Seconds; // in it
    double Above;   // seconds at or above Level
};

// From the lowest class to the highest, empty ones between included. width: dB, above 0.
std::vector<LevelClass> distributionOf(std::span<const AnalysedRow> rows, double width);

// Energy times time, relative to 0 dB for a second: what shares are of.
double exposureOf(std::span<const AnalysedRow> rows);

} // namespace kestrane

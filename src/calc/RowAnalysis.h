// Questions about the rows of a log, answered by pure functions: the figures of a stretch, the loudest and the quietest
// stretch of a given length, events, percentiles, the distribution of levels. Rows that are excluded and rows without a
// level are left out. Levels are in dB, of the weighting and channel that the caller chooses; no threshold is applied.
#pragma once

#include "calc/BandLevels.h"
#include "model/clsLog.h"

#include <cstdint>
#include <optional>
#include <span>
#include <vector>

namespace kestrane {

struct AnalysedRow {
    std::int64_t Number;                // counted from 1 among all rows of the log
    std::int64_t Begin;                 // seconds as in model/RowClock.h
    double Seconds;                     // 0 when it is not known
    double Level;                       // Leq, dB
    float Lmax = 0, Lmin = 0, Peak = 0; // dB; 0 when absent
};

// The rows that are not left out, in order, with the levels of a channel, or A-weighted ones from their bands. A row
// without such a level is left out.
std::vector<AnalysedRow> analysedRows(const clsLog& log, LevelsFrom origin = LevelsFrom::ChannelA);

struct StretchFigures {
    double Seconds = 0;
    std::optional<double> LAeq; // energy mean weighted by row length; when no row has a length, all rows count the same
    std::optional<double> LE;   // nothing without a length
    // Percent, by the criterion and exchange rate; nothing without a length or an exchange rate.
    std::optional<double> Dose;
    std::optional<float> Lmax, Lmin, Peak;
};

// The figures of a stretch. Without rows, Seconds is 0 and all other figures are nothing.
StretchFigures stretchFigures(std::span<const AnalysedRow> rows, double criterion, double exchange);

// The analysed rows whose numbers are within a range.
std::span<const AnalysedRow> rowsWithin(std::span<const AnalysedRow> rows, const RowRange& range);

// The figures of the rows within a range, and of all the others together.
struct RangeFigures {
    StretchFigures Range, Rest;
};

RangeFigures rangeFigures(std::span<const AnalysedRow> rows, const RowRange& range, double criterion, double exchange);

// What has come together from the first row up to the end of a row.
struct RunningFigures {
    double LAeq;
    std::optional<double> Lex8h; // normalised to 8 h; nothing while no time has passed
    std::optional<double> Dose;  // percent; nothing without an exchange rate, or while no time has passed
};

std::vector<RunningFigures> runningFigures(std::span<const AnalysedRow> rows, double criterion, double exchange);

// Consecutive rows, as indexes into the analysed rows: First is included, Behind is not.
struct Stretch {
    std::size_t First, Behind;
};

// The index behind the last row of the stretch without a gap that begins at first. A gap is more than 1 s between the
// end of a row and the next, or a row that is left out.
std::size_t endOfRun(std::span<const AnalysedRow> rows, std::size_t first);

struct WorstStretches {
    std::optional<Stretch> Loudest, Quietest; // the first one of several; nothing when no stretch is long enough
};

// Compares, for each row, the shortest stretch of whole rows without a gap that begins there and lasts at least
// seconds.
WorstStretches worstStretches(std::span<const AnalysedRow> rows, double seconds);

// What counts as an event: a level, dB, that is reached or exceeded for some time.
struct EventRule {
    double Level;
    double Seconds; // at least
};

// The stretches of rows, without a gap, that are events.
std::vector<Stretch> eventsOf(std::span<const AnalysedRow> rows, EventRule rule);

// The level that is exceeded for percent (0..100) of the time. The levels are sorted with their lengths and
// interpolated linearly between the middles of the rows; beyond the first and last middle the result is the highest or
// the lowest level. Nothing without rows.
std::optional<double> levelExceeded(std::span<const AnalysedRow> rows, double percent);

struct LevelClass {
    double Level;   // the lower edge, dB; a multiple of the width
    double Seconds; // in this class
    double Above;   // seconds at or above Level
};

constexpr std::size_t kMostClasses = 100'000;

// The classes from the lowest to the highest that occurs, with the empty ones between. width is in dB and must be above
// 0. Rows whose level no sound can have, beyond -1000 to 1000 dB, are left out. An empty list without rows. Nothing
// when there would be more than kMostClasses, which a width of at least 0.1 dB rules out.
std::optional<std::vector<LevelClass>> distributionOf(std::span<const AnalysedRow> rows, double width);

// The sum of energy times seconds, relative to 0 dB for one second; used to express shares of the exposure.
double exposureOf(std::span<const AnalysedRow> rows);

} // namespace kestrane

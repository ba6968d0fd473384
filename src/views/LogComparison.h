// Several logs side by side: on one time axis or one axis of bands, with their means and the differences between them.
#pragma once

#include "calc/RowAnalysis.h"
#include "model/clsLog.h"
#include "views/CellTable.h"
#include "views/ChartData.h"

#include <span>
#include <string>
#include <vector>

namespace kestrane {

constexpr std::size_t kMostCompared = 8;

struct ComparedLog {
    const clsLog* Log;
    std::string Name;
    std::vector<AnalysedRow> Rows; // analysedRows of the log
};

// On the axis of time a row of each log is at its time of day, counted on from the day on which the log begins, or at
// the time from the beginning of its first row. On the axis of bands are the figures of the whole logs.
enum class CompareBy { TimeOfDay, Start, Band };

// The level of each log, as a series. The slots of the time axis are as long as the shortest row; a slot has the energy
// mean of the rows within it, each by the time for which it lies there. Rows of unknown length are left out. Of logs
// with bands those are compared that have the bands of the first one; a footnote names the others. Without rows or
// bands the chart is empty. When the frequency weightings of the logs differ, each series says its own.
ChartData comparisonChart(const Session& session, std::span<const ComparedLog> logs, CompareBy by);

// A row for each log: name, how long it lasted, level, difference to the level of the first. The last row has the
// energy mean of all, each by its length. Levels of two weightings have no difference and no mean.
CellTable comparedTable(const Session& session, std::span<const ComparedLog> logs);

} // namespace kestrane

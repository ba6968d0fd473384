// What all charts of a log have in common: fonts, style and line width from its display options, the units of
// parameters and the titles of their axes, and the mark of a missing value.
#pragma once

#include "model/clsLog.h"
#include "views/ChartData.h"

#include <string>

namespace kestrane {

// A chart without rows, with the log's name as its title and the looks of the options.
ChartData emptyChart(const clsLog& log, const clsLogOptions& options);

// Makes the rows of a chart those of the log: their times, the marks at the axis and the rows that are left out.
void addTimeRows(ChartData& chart, const clsLog& log);

// A figure as a chart value: 0 becomes a missing value.
inline float chartValue(float calcValue) {
    return calcValue == 0 ? kNullValue : calcValue;
}

void addFootnote(ChartData& chart, const std::string& line); // adds a line of its own; does nothing for an empty text

// "Pa2Hrs", "%", or "Pa2Hrs / %" for an axis that has both.
std::string exposureTitle(const Session& session, bool hasPercent, bool hasPa2Hours);
} // namespace kestrane

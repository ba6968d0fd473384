// What all charts of a log have in common: fonts, style and line width from its display options, the units of
// parameters and the titles of their axes, and the mark of a missing value.
#pragma once

#include "model/clsLog.h"
#include "views/ChartData.h"

#include <string>

namespace kestrane {

// A chart without rows: the log's name as title, and the looks by the options.
ChartData emptyChart(const clsLog& log, const clsLogOptions& options);

// The figures of a chart: 0 is a missing one.
inline float chartValue(float calcValue) {
    return calcValue == 0 ? kNullValue : calcValue;
}

void addFootnote(ChartData& chart, const std::string& line); // on a line of its own, unless it is empty

// "Pa2Hrs", "%", or "Pa2Hrs / %" for an axis that carries both.
std::string exposureTitle(const Session& session, bool hasPercent, bool hasPa2Hours);
} // namespace kestrane

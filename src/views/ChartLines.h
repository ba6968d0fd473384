// What a user can add to the chart of all rows: lines at levels that mean something, and the exposure that has come
// together up to each row; and, on every chart, marks by which series differ without their colours. Which of them is a
// setting of the user, for all logs.
#pragma once

#include "model/clsLog.h"
#include "views/ChartData.h"

#include <string>

namespace kestrane {

// Usual: the action and limit values of Directive 2003/10/EC. Criteria: the levels that reach the limits of all
// criteria, and the criterion level of the log, each named with the criteria that it belongs to.
enum class LimitLines { None, Usual, Criterion, Own, Criteria };

struct ChartLines {
    LimitLines Limits = LimitLines::None;
    std::string OwnLevels; // dB, with blanks between them
    bool IsRunningShown = false;
    bool IsFromBandsShown = false; // LAeq of a log with bands that is not A-weighted
    bool AreSeriesMarked = false;  // on every chart: by shapes and patterns, for print without colours

    bool operator==(const ChartLines&) const = default;
};

ChartLines readChartLines(const Session& session);               // an entry that is not understood has its default
void storeChartLines(Session& session, const ChartLines& lines); // raises what the settings store raises

// Adds the lines to the chart of all rows of a log. The usual lines and that of the criterion level are drawn for
// A-weighted levels only, those for peaks only where a C-weighted peak is plotted.
void addChartLines(ChartData& chart, const clsLog& log, const ChartLines& lines);

} // namespace kestrane

// The figures of a range of rows as they are shown beside the time chart, read out and copied.
#pragma once

#include "calc/RowAnalysis.h"
#include "model/clsLog.h"
#include "platform/Clipboard.h"

#include <span>
#include <string>
#include <vector>

namespace kestrane {

struct RangeFigure {
    std::string Name;    // of the label that shows it, such as "lblRangeLeq"
    std::string Caption; // "LAeq"
    std::string Value;   // "85.3 dB"; empty when there is no such figure
};

// A time in seconds, 0 or more, as "hh:mm:ss" with any number of hours.
std::string durationText(double seconds);

// A level with one decimal and "dB". Nothing gives an empty text.
std::string shownLevel(const Session& session, const std::optional<double>& level);

std::string shortNumber(const Session& session, double number);     // without a decimal when there is none to show
std::string percentileName(const Session& session, double percent); // "L10", "L0.1"

// The figures of rows From to To of a log, which must exist, in the order in which they are shown: when the range
// begins and ends, how long it is, and how much of that counts when that is less; its levels, its dose by the criterion
// level and the exchange rate of the log, the level that is exceeded for percent (0..100) of the time, and what is left
// of the log without the range. analysed are the analysed rows of the log.
std::vector<RangeFigure> rangeTable(const clsLog& log, std::span<const AnalysedRow> analysed, const RowRange& range,
                                    double percent);

// The figures that there are, in one line, as a screen reader reads them out.
std::string spokenRange(const std::vector<RangeFigure>& figures);

// The figures with the name of the log, a line for each, as text and as a table.
ClipboardForms copiedRange(const clsLog& log, const std::vector<RangeFigure>& figures);

} // namespace kestrane

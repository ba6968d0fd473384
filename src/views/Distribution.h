// How the levels of a log, or of a range of its rows, are distributed over time: a histogram with the share of time at
// or above each level, the same as a table, and the levels exceeded for given percentages of the time.
#pragma once

#include "calc/RowAnalysis.h"
#include "model/clsLog.h"
#include "platform/Clipboard.h"
#include "views/CellTable.h"
#include "views/ChartData.h"

#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace kestrane {

constexpr double kFinestClass = 0.1; // dB
constexpr double kWidestClass = 20;

struct TypedNumbers {
    std::vector<double> Numbers;
    std::string Others; // the words that are none, with blanks between them
};

// The numbers from 0 to most of a text with blanks or semicolons between its words.
TypedNumbers typedNumbers(std::string_view text, double most, const Locale& locale);

// The percentages as "L10 85.3 dB, L50 70.1 dB". Without rows the levels are left out.
std::string percentileText(const Session& session, std::span<const AnalysedRow> rows, std::span<const double> percents);

// The percentage of the time for each class and at or above it, as bars; the latter on an axis of its own. width is the
// width of the classes in dB, kFinestClass to kWidestClass. Rows of unknown length give no percentage.
ChartData distributionChart(const clsLog& log, std::span<const AnalysedRow> rows, double width);

// A row for each class: its lower edge; the time in it and at or above it, as hours, minutes and seconds and in
// percent.
CellTable distributionTable(const clsLog& log, std::span<const AnalysedRow> rows, double width);

// Name of the log, percentiles and table, for the clipboard.
ClipboardForms copiedDistribution(const clsLog& log, const std::string& percentiles, const CellTable& table);

} // namespace kestrane

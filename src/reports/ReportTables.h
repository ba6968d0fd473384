// What a report says, as texts: the tables of its rows and columns are in ReportTables.cpp, one a part of the report.
// Where the texts stand is Report's.
#pragma once

#include "model/LogParameters.h"
#include "model/clsInsData.h"

#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace kestrane {

// A line of the details block. One without a caption is blank.
struct DetailLine {
    std::string Caption;
    std::string Value;
    bool HasSpaceAbove = false; // a blank line in front of it, on upright paper
    bool IsToSign = false;      // a dotted line, written on by hand
};

std::vector<DetailLine> detailLines(const clsInsData& data, const clsLog& log);

// Captions, then rows of as many cells; the first column names the row.
struct ReportTable {
    std::string Heading;
    std::string Remark{}; // below the heading; may be empty
    std::vector<std::string> Captions;
    std::vector<std::vector<std::string>> Rows;
    std::string_view NameWidth; // as wide is the first column at least
};

ReportTable cumulativeTable(const clsLog& log);
ReportTable frequencyTable(const clsLog& log); // of an octave log

// "Cumulative Data: Monday 3 June 2019, 09:00"; what is not known is left out.
std::string datedHeading(const std::string& words, const std::string& longDate, const std::string& time);

// A column of levels, of the bands or of the intervals.
struct LevelColumn {
    Parameter parameter;
    bool isOptional = false; // there only while the user has the parameter plotted
};

inline constexpr std::string_view kLevelWidth = "WW000.0 dB"; // as wide is a column of figures at least

std::span<const LevelColumn> intervalColumns();

} // namespace kestrane

// What a report says, as texts. The tables of its rows and columns are in ReportTables.cpp, one for each part of the
// report. Report decides where the texts are.
#pragma once

#include "model/LogParameters.h"
#include "model/clsInsData.h"

#include <initializer_list>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace kestrane {

// A line of the details block. A line without a caption is blank.
struct DetailLine {
    std::string Caption;
    std::string Value;
    bool HasSpaceAbove = false; // on portrait paper a blank line precedes it
    bool IsToSign = false;      // a dotted line, to be filled in by hand
};

std::vector<DetailLine> detailLines(const clsInsData& data, const clsLog& log);

// Captions, then rows with as many cells; the first column names the row.
struct ReportTable {
    std::string Heading;
    std::string Remark{}; // below the heading; may be empty
    std::vector<std::string> Captions;
    std::vector<std::vector<std::string>> Rows;
    std::string_view NameWidth; // the first column is at least as wide as this text
};

ReportTable cumulativeTable(const clsLog& log);
ReportTable frequencyTable(const clsLog& log);      // for a log with bands
ReportTable criteriaReportTable(const clsLog& log); // without rows when there is no level to judge by

// A heading such as "Cumulative Data: Monday 3 June 2019, 09:00", of the long date and the time; what is not known is
// left out.
std::string datedHeading(const Session& session, const std::string& words, std::initializer_list<std::string> times);

// A column of levels, in the table of the bands or in that of the intervals.
struct LevelColumn {
    Parameter parameter;
    bool isOptional = false; // only there when the user has the parameter plotted
};

inline constexpr std::string_view kLevelWidth = "WW000.0 dB"; // a column of figures is at least as wide as this text

std::span<const LevelColumn> intervalColumns();

} // namespace kestrane

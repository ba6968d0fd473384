// A log under every exposure criterion as a table of texts: a row for each criterion, its figures and limits in
// columns. The tab of the log view, its copies and pages, and the report show it.
#pragma once

#include "model/clsLog.h"

#include <string>
#include <vector>

namespace kestrane {

// What is decided by comes first, then what it is made of.
enum class CriteriaColumn {
    Title,
    LEX8h,
    ProjectedDose,
    ProjectedTWA,
    Limits,
    Remark,
    Dose,
    TWA,
    LAVG,
    Criterion,
    Threshold,
    Exchange
};

// Captions and cells stand by CriteriaColumn; a figure that cannot be computed is "–".
struct CriteriaTable {
    std::vector<std::string> Captions;
    std::vector<std::vector<std::string>> Rows;
};

// Behind the criteria of the standards comes the log's own: its criterion level, exchange rate and threshold.
CriteriaTable criteriaTable(const clsLog& log);

// The lines of the table with tabs between the cells, CR LF behind each; the captions first.
std::string criteriaText(const CriteriaTable& table);

} // namespace kestrane

// The history of a document as a table of texts: a row for each change, the oldest first. Its window, its copies and
// the report show it.
#pragma once

#include "model/clsFile.h"

#include <string>
#include <vector>

namespace kestrane {

struct HistoryTable {
    std::vector<std::string> Captions; // time, what, log, before, after, reason
    std::vector<std::vector<std::string>> Rows;
};

HistoryTable historyTable(const clsFile& file);

// The lines of the table with tabs between the cells, CR LF behind each; the captions first.
std::string historyText(const HistoryTable& table);

} // namespace kestrane

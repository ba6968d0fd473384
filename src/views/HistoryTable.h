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

// What a line says beyond time, what, log and reason, each value with what it has become: "Criterion Level: 85 dB → 80
// dB; ...". Empty when it says no more. Values longer than so many bytes are cut.
std::string changeText(const HistoryLine& line, std::size_t longestValue = std::string::npos);

// A text with the reason for it, which may be empty.
std::string withReason(const Session& session, const std::string& text, const std::string& reason);

// The lines of the table with tabs between the cells, CR LF behind each; the captions first.
std::string historyText(const HistoryTable& table);

} // namespace kestrane

// Which lines of a document's history are of which log, for the report of a log and for tables of all lines.
#pragma once

#include "model/clsFile.h"

#include <string>
#include <vector>

namespace kestrane {

struct LogChange {
    HistoryLine Line;
    bool IsCertain = true; // false when the line may as well be of another log, of the same name
};

// What was done to a log of the document and to the document itself, the oldest first; saves are no changes. A line
// with an identity is of the log that has it. A line without one, of an older version, goes by the name that the log
// had then. A log that is a zoomed range stands for the log that it was cut from.
std::vector<LogChange> changesOf(const clsFile& file, const clsInsData& data, const clsLog& log);

// What a table of the document's lines shows as the log of each: its name, told apart where several logs have it.
std::vector<std::string> logsOfLines(const clsFile& file, const std::vector<HistoryLine>& lines);

} // namespace kestrane

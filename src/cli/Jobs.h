// What verbs do with each of many files: one output of one input.
#pragma once

#include "cli/Program.h"

#include <functional>
#include <string>

namespace kestrane {

// Writes the output of an opened file, named as the call names it. False when it was not written; the reason has been
// shown. May raise.
using FileJob =
    std::function<bool(Program& program, clsFile& file, const std::string& name, const std::string& output)>;

FileJob saveJob();
FileJob reportJob();                             // the default report of the first log
FileJob exportJob(const std::string& format);    // the rows of all logs; "csv", "xlsx" or "ndjson"
const std::vector<std::string>& exportFormats(); // those words

} // namespace kestrane

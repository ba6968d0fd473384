// The jobs that verbs do for each of many files: one input, one output.
#pragma once

#include "cli/Modules.h"
#include "cli/Program.h"

#include <functional>
#include <string>

namespace kestrane {

// Writes the output of an opened file; name is that of the file as the call gives it. Returns false when the output was
// not written; the reason has been shown. May raise.
using FileJob =
    std::function<bool(Program& program, clsFile& file, const std::string& name, const std::string& output)>;

FileJob saveJob();

// The default report of the first log; empty when there is nothing to draw with, which has been shown.
FileJob reportJob(Program& program);

FileJob exportJob(const std::string& format);    // the rows of all logs; "csv", "xlsx" or "ndjson"
const std::vector<std::string>& exportFormats(); // the words that exportJob accepts

// Lays pages out for A4 and writes them as a PDF file. Returns false when there is nothing to draw with, or when they
// were not written or are not complete; the reason has been shown.
bool writePages(Program& program, const Drawing::LayOut& layOut, const std::string& output);

} // namespace kestrane

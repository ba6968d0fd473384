// Where the figures of a report come from: the program, the data file, the instrument and its settings, and what of the
// log the figures are made of. With it a reader can tell years later whether a file at hand is the one that was signed.
#pragma once

#include "model/clsFile.h"
#include "reports/ReportTables.h"

#include <vector>

namespace kestrane {

// The block at the end of a report. What the instrument does not tell is left out. Reads the data file for its SHA-256.
std::vector<DetailLine> provenanceLines(const clsFile& file, const clsInsData& data, const clsLog& log);

} // namespace kestrane

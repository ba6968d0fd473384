// A whole log under another frequency weighting, so that no level has a name that it does not deserve.
#pragma once

#include "model/clsLog.h"

#include <string_view>

namespace kestrane {

// Converts the bands of channel A and of all rows to another weighting, as AdjustFreqWeight does, makes the overall
// Leq, Lmin and Lmax of the log and of each row from the converted bands, and derives the figures of the log from them.
// Of a log with rows, the overall Lmin and Lmax are the least and the greatest of a row.
// What no bands are known of keeps its weighting: Peak, the overall Ln, a level without bands. A broadband log gets the
// message and the name; nothing happens for a name that is no weighting or is the log's own.
void convertLog(clsLog& log, std::string_view newWeight);

} // namespace kestrane

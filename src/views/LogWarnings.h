// What the reader of a log's figures has to know, whatever is on view: for the bar above the view and for reports.
#pragma once

#include "model/clsLog.h"

#include <string>

namespace kestrane {

// Sentences, one a line: that rows of the log could not be read, that the calibration drifted too far, which figures do
// not belong to the log's dose, and that no interval counts. Empty when nothing is wrong.
std::string logWarnings(const clsLog& log);

} // namespace kestrane

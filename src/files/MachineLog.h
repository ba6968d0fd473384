// The machine log: the text in which a Corvane instrument writes one measurement, as a file and over the serial line.
// It is a stream of fields, each ended by a comma: a header, a record for each row, the word "stoplog", and the closing
// figures.
#pragma once

#include "model/clsFile.h"

#include <string>
#include <string_view>

namespace kestrane {

// Reads the text of one log into a new collection of the document, with the dates of its rows; the caller recalculates
// it. The log is named after the document, without ".log". Returns false when the text is no machine log or cannot be
// read to its end: then message says why, and the document is as it was. Raises nothing. The time taken grows in
// proportion to the length of the text, and the memory taken is at most about four times that of the text.
bool ReadMachineLog(clsFile& file, std::string_view text, std::string& message);

} // namespace kestrane

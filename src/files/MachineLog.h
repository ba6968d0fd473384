// The machine log: the text in which a Corvane instrument writes one measurement, as a file and over the line. A stream
// of fields, each ended by a comma: a header, a record for each row, the word "stoplog", and the closing figures.
#pragma once

#include "model/clsFile.h"

#include <string>
#include <string_view>

namespace kestrane {

// Reads the text of one log into a new collection of the document, with the dates of its rows; recalculation is the
// caller's. The log is named after the document, without ".log". False when the text is no machine log or cannot be
// read to its end: message says why, and the document is as it was. Raises nothing. Takes time by the
// length of the text, and no more than about four times its memory.
bool ReadMachineLog(clsFile& file, std::string_view text, std::string& message);

} // namespace kestrane

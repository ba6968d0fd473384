// The project file, the format in front of the XML data file: a text of nested tags. "INSDATA" blocks hold an
// instrument's "LOG" blocks, and those their rows, peaks, exposure rows and display options.
#pragma once

#include "model/clsFile.h"

#include <string_view>

namespace kestrane {

// Adds the collections of the text to the document, but for those without logs. Tags may stand in any order; of one
// that stands twice the first counts, and unknown ones are passed over. False when the text has no block of an
// instrument. Raises 13 for a tag without its closing or a content that is no such value, and what values raise. Takes
// time by the length of the text, and memory for the rows of no more than about four times theirs.
bool ReadProject(clsFile& file, std::string_view text);

} // namespace kestrane

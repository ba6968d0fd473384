// The project file, the format that preceded the XML data file: a text of nested tags. "INSDATA" blocks contain the
// "LOG" blocks of an instrument, and those contain the rows, peaks, exposure rows and display options.
#pragma once

#include "model/clsFile.h"

#include <string_view>

namespace kestrane {

// Adds the collections of the text to the document, except those without logs. Tags may be in any order; when a tag
// occurs twice the first one counts, and unknown tags are skipped. Returns false when the text has no instrument block.
// Raises 13 for a tag without its closing tag and for a content that is no value of its kind, and what converting
// values raises. The time taken grows in proportion to the length of the text, and the rows take at most about four
// times the memory of their text.
bool ReadProject(clsFile& file, std::string_view text);

} // namespace kestrane

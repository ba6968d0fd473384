// The report-like text files that earlier programs exported: delimited text in which the number of a token, counted
// from 1, says which figure it is.
#pragma once

#include "model/clsFile.h"

#include <string_view>

namespace kestrane {

// Both functions add one log in a collection of its own to the document, or raise: 13 for a token that does not belong
// in its place, 62 for a text that ends too soon, kErrorApplication for a text of no known kind, and what converting
// values raises. The time taken grows in proportion to the length of the text, and the memory taken is at most about
// four times that of the text.

// Reads noise-at-work and environmental logs with their rows, and octave logs by their labelled band levels. A file of
// the oldest meters is read only when it contains nothing but the model, because the places of its figures are not
// known.
void ReadSoundCsv(clsFile& file, std::string_view text);

// Reads an octave log that consists of the headings of its bands, "31.5" to "16k", followed by as many levels. Tokens
// in front of the headings are skipped.
void ReadSoundFile(clsFile& file, std::string_view text);

} // namespace kestrane

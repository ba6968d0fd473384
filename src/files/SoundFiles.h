// The report-like text files that earlier programs exported: delimited text in which a figure is known by the number of
// its token, counted from 1.
#pragma once

#include "model/clsFile.h"

#include <string_view>

namespace kestrane {

// Each adds one log in a collection of its own to the document, or raises: 13 for a token that is not what belongs in
// its place, 62 for a text that ends too soon, kErrorApplication for one of no kind, and what values raise. They take
// time by the length of the text, and memory of no more than about four times its.

// Noise at work and environmental logs with their rows; octave logs by their labelled band levels. Of the oldest meters
// only a file that tells nothing beyond the model is read: where their figures stand is not known.
void ReadSoundCsv(clsFile& file, std::string_view text);

// An octave log as the headings of its bands, "31.5" to "16k", and behind them as many levels. What stands in front of
// the headings is passed over.
void ReadSoundFile(clsFile& file, std::string_view text);

} // namespace kestrane

// What a change did to a log, in words for the history of its document.
#pragma once

#include "model/DocumentHistory.h"
#include "model/clsLog.h"

namespace kestrane {

// Writes into line what differs between two states of a log: the settings of its calculation, its selection with the
// reason, its note, exposure rows and figures, each as "caption: value" in English, separated by "; ". A very long
// value is cut.
void describeChange(const clsLog& before, const clsLog& after, HistoryLine& line);

} // namespace kestrane

// What a change did to a log, in words for the history of its document.
#pragma once

#include "model/DocumentHistory.h"
#include "model/clsLog.h"

#include <vector>

namespace kestrane {

// Writes into line what differs between two states of a log: the settings of its calculation, its selection with the
// reason, its note, exposure rows and figures, each as "caption: value" in English, separated by "; ". A very long
// value is cut.
void describeChange(const clsLog& before, const clsLog& after, HistoryLine& line);

// The cumulative figures of a log, kept to be compared with what a recalculation makes of them.
class KeptFigures {
public:
    explicit KeptFigures(const clsLog& log);

    // Writes the figures that read otherwise now into line, in the same form. One that was not there has not changed.
    // Returns whether there are any.
    bool describe(const clsLog& now, HistoryLine& line) const;

private:
    std::vector<clsValue> figures_;
};

} // namespace kestrane

// The zoom of an explorer window: the range that its panel has chosen, and the copy of that part of the opened log
// which is shown meanwhile. The copy belongs to the window and ends with the zoom; it never changes the rows of the
// opened log.
#pragma once

#include "model/clsLog.h"

#include <cstdint>
#include <memory>
#include <string>

namespace kestrane {

class Zoom {
public:
    // The choice of the panel: the whole log, or (ByTime) the rows of Range in the opened log.
    bool ByTime = false;
    RowRange Range{1, 1};

    // Returns to the whole log. Without rows the range is 1 to 0.
    void open(const clsLog& opened);

    // Shows what is chosen: for a part of the rows a copy of them, asking whether its figures are to be recalculated;
    // for all rows the opened log, recalculated when the settings say so for opening. Returns when the figures are
    // there. Returns false, after a message, and changes nothing when the range is empty or does not exist, or while
    // the log is loading or recalculating.
    bool apply(clsLog& opened);

    // The text that says that the copy leaves other rows out than the opened log; empty when it does not.
    std::string otherSelectionLine(const clsLog& opened) const;

    // Recalculates the copy from its own rows; its change event says when the figures are there.
    void RecalculateRange() const;

    void end() { copy_.reset(); }

    clsLog* copy() const { return copy_.get(); } // null when the opened log is shown

    // The row of the opened log at which the log in view begins.
    std::int64_t firstRow() const { return copy_ ? applied_.From : 1; }

    // Takes over what the user has changed in the opened log itself: name, note, display options and exposure time.
    void follow(const clsLog& opened);

private:
    std::unique_ptr<clsLog> copy_;
    RowRange applied_{1, 1};
};

// The text that says that a zoomed range has the cumulative figures of the whole log, for as long as it has them; else
// empty.
std::string wholeFiguresLine(const clsLog& log);

// Whether forcing a recalculation of a zoom is preceded by a question: when it lasts five minutes or more, however few
// its rows.
bool isLongZoom(const clsLog& log);

} // namespace kestrane

// The zoom of an explorer window: the range that its panel has chosen, and the copy of the opened log that is in view
// while a part is. The copy is the window's own and ends with the zoom; the rows of the opened log are never changed by
// it.
#pragma once

#include "model/clsLog.h"

#include <cstdint>
#include <memory>
#include <string>

namespace kestrane {

class Zoom {
public:
    // What the panel has chosen: the whole log, or the rows of Range, which are those of the opened log.
    bool ByTime = false;
    RowRange Range{1, 1};

    // Back to the whole of a log. Without rows the range is 1 to 0.
    void open(const clsLog& opened);

    // Brings what is chosen on view: with a part of the rows a copy of them, asking whether its figures are to be
    // recalculated; with all of them the opened log, recalculated where the settings say so for opening. Returns when
    // the figures stand. False, with a message, and all as it was, when the range runs backwards or is not there, or
    // while the log is loading or recalculating.
    bool apply(clsLog& opened);

    void RecalculateRange() const; // the copy, by its own rows alone; its change event tells when the figures stand

    void end() { copy_.reset(); }

    clsLog* copy() const { return copy_.get(); } // null: the opened log is in view

    std::int64_t firstRow() const { return copy_ ? applied_.From : 1; } // of the log in view, in the opened log

    // Takes over what the user has changed of the opened log itself: name, note, display options and exposure time.
    void follow(const clsLog& opened);

private:
    std::unique_ptr<clsLog> copy_;
    RowRange applied_{1, 1};
};

// What is to be said of a zoomed range as long as its cumulative figures are not its own, but those of the whole log;
// else empty.
std::string wholeFiguresLine(const clsLog& log);

// A zoom of five minutes or more is asked about before it is recalculated by force, however few its rows.
bool isLongZoom(const clsLog& log);

} // namespace kestrane

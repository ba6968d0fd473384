// The user's conversion of an octave log to another frequency weighting.
#pragma once

#include "model/clsLog.h"
#include "platform/Message.h"

namespace kestrane {

// Asks for A, C or Z, and whether the log is really to be converted: with its intervals, since otherwise the next
// recalculation would bring the old levels back under the new name. The log in view, which may be a zoomed range of the
// displayed one, is converted as well, and then has the figures of its own range. Windows that show the log are
// informed; the conversion can be undone. Returns false when nothing has changed.
bool ConvertFrequencyWeighting(clsLog& displayed, clsLog& inView, const AskChoice& ask);

} // namespace kestrane

// The user's conversion of an octave log to another frequency weighting.
#pragma once

#include "model/clsLog.h"
#include "platform/Message.h"

namespace kestrane {

// Asks for A, C or Z, and of a log with intervals whether they are converted, too. The log in view, which may be a
// zoomed range of the one on display, is converted with it. Windows that show the log are told; it can be undone. False
// when nothing has changed.
bool ConvertFrequencyWeighting(clsLog& displayed, clsLog& inView, const AskChoice& ask);

} // namespace kestrane

// The calibration of a log in words, for the panel, the bar above the view, assessments and reports. Texts are empty
// when there is nothing to say.
#pragma once

#include "model/clsLog.h"

#include <string>

namespace kestrane {

// "94.0 dB before, 94.6 dB after, drift +0.6 dB"
std::string calibrationLevels(const Session& session, const Calibration& calibration);
std::string calibrationLevels(const clsLog& log);

// "+0.3 dB added to all levels"
std::string calibrationOffset(const Session& session, const Calibration& calibration);
std::string calibrationOffset(const clsLog& log);

// Of a drift of more than 0.5 dB.
std::string calibrationWarning(const Session& session, const Calibration& calibration);
std::string calibrationWarning(const clsLog& log);

// The drift of levels as they are typed: the warning, or "drift +0.2 dB".
std::string driftText(const Session& session, const Calibration& calibration);

// Hundredths of a dB as a number with one or two decimals; an offset has its sign.
std::string calibrationNumber(int hundredths, bool isSigned, const Locale& locale);

} // namespace kestrane

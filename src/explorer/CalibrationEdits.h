// What a user types of the calibration of a measurement, and what it does to the log.
#pragma once

#include "model/Calibration.h"
#include "model/clsLog.h"

#include <optional>
#include <string>

namespace kestrane {

struct CalibrationEntries {
    std::string Before, After, Offset; // dB; empty for what is not known, and for no offset
};

CalibrationEntries calibrationEntries(const clsLog& log);

// Nothing when a level is no number from 50 to 150, or the offset none from -20 to 20. Numbers are rounded to
// hundredths of a dB.
std::optional<Calibration> typedCalibration(const CalibrationEntries& entries, const Locale& locale);

// Keeps the calibration with the displayed log, as a step that can be undone. When its offset is another one, the
// difference is added to all levels, also of the log in view, which may be a zoomed range. Windows that show the log
// are informed. Returns false when nothing has changed.
bool setCalibration(clsLog& displayed, clsLog& inView, const Calibration& calibration);

} // namespace kestrane

#include "explorer/CalibrationEdits.h"

#include "calc/CalibrationText.h"
#include "calc/LevelOffset.h"
#include "calc/Recalculation.h"
#include "explorer/Edits.h"
#include "platform/Numbers.h"
#include "platform/Trimmed.h"

#include <cmath>

namespace kestrane {

namespace {

constexpr double kLowestLevel = 50; // dB, of a calibrator
constexpr double kHighestLevel = 150;
constexpr double kLargestOffset = 20;

// Puts a typed number into hundredths. Returns false when it is none or out of range; an empty text leaves them at 0.
bool take(const std::string& text, double least, double most, const Locale& locale, std::int16_t& hundredths) {
    if (trimmed(text).empty()) return true;
    const std::optional<double> number = typedNumber(text, locale);
    if (!number || *number < least || *number > most) return false;
    hundredths = static_cast<std::int16_t>(std::lround(*number * kHundredths));
    return true;
}

void change(clsLog& log, const Calibration& calibration) {
    const int added = calibration.Offset - log.UserCalibration.Offset;
    log.UserCalibration = calibration;
    if (added != 0) addToLevels(log, added / kHundredths);
    if (log.IntervalsRecalculating) RecalcValues(log, log.RecalcMode); // the pass is over the levels from before
    log.RaiseLogValuesChanged();
}

} // namespace

CalibrationEntries calibrationEntries(const clsLog& log) {
    const auto entry = [&](int hundredths) {
        return hundredths == 0 ? std::string() : calibrationNumber(hundredths, false, log.session().locale);
    };
    const Calibration& calibration = log.UserCalibration;
    return {entry(calibration.Before), entry(calibration.After), entry(calibration.Offset)};
}

std::optional<Calibration> typedCalibration(const CalibrationEntries& entries, const Locale& locale) {
    Calibration typed;
    const bool isUnderstood = take(entries.Before, kLowestLevel, kHighestLevel, locale, typed.Before) &&
                              take(entries.After, kLowestLevel, kHighestLevel, locale, typed.After) &&
                              take(entries.Offset, -kLargestOffset, kLargestOffset, locale, typed.Offset);
    return isUnderstood ? std::optional(typed) : std::nullopt;
}

bool setCalibration(clsLog& displayed, clsLog& inView, const Calibration& calibration) {
    return editLog(displayed, Text::StepCalibration, [&] {
        if (displayed.UserCalibration == calibration) return false;
        change(displayed, calibration);
        if (&displayed != &inView) change(inView, calibration);
        return true;
    });
}

} // namespace kestrane

#include "calc/CalibrationText.h"

#include "model/Session.h"
#include "platform/Format.h"

namespace kestrane {

namespace {

constexpr const char* kNotNoted = "\u2013";

std::string withNumber(const Session& session, Text::Id text, int hundredths) {
    return ReplaceText(session.LoadText(text), "^", calibrationNumber(hundredths, true, session.locale));
}

} // namespace

std::string calibrationNumber(int hundredths, bool isSigned, const Locale& locale) {
    return (isSigned && hundredths > 0 ? "+" : "") + formatNumber(hundredths / kHundredths, "##0.0#", locale);
}

std::string driftText(const Session& session, const Calibration& calibration) {
    if (!calibration.HasDrift()) return {};
    return withNumber(session, calibration.DriftsTooFar() ? Text::CalibrationDriftWarning : Text::CalibrationDrift,
                      calibration.Drift());
}

std::string calibrationLevels(const Session& session, const Calibration& calibration) {
    if (calibration.Before == 0 && calibration.After == 0) return {};
    const auto shown = [&](int level) {
        return level == 0 ? kNotNoted : calibrationNumber(level, false, session.locale);
    };
    std::string text = ReplaceText(session.LoadText(Text::CalibrationLevels), "^", shown(calibration.Before));
    text = ReplaceText(std::move(text), "*", shown(calibration.After));
    if (calibration.HasDrift()) text += ", " + withNumber(session, Text::CalibrationDrift, calibration.Drift());
    return text;
}

std::string calibrationLevels(const clsLog& log) {
    return calibrationLevels(log.session(), log.UserCalibration);
}

std::string calibrationOffset(const Session& session, const Calibration& calibration) {
    const int offset = calibration.Offset;
    return offset == 0 ? std::string() : withNumber(session, Text::CalibrationOffsetApplied, offset);
}

std::string calibrationOffset(const clsLog& log) {
    return calibrationOffset(log.session(), log.UserCalibration);
}

std::string calibrationWarning(const Session& session, const Calibration& calibration) {
    return calibration.DriftsTooFar() ? driftText(session, calibration) : std::string();
}

std::string calibrationWarning(const clsLog& log) {
    return calibrationWarning(log.session(), log.UserCalibration);
}

} // namespace kestrane

#include "calc/ExposureTime.h"

#include "calc/Recalculation.h"
#include "model/Session.h"
#include "model/TimeText.h"
#include "model/clsTime.h"
#include "platform/Numbers.h"
#include "platform/Trimmed.h"

namespace kestrane {

namespace {

constexpr double kDay = 24; // hours

double wholeSeconds(float hours) {
    return roundHalfAway(static_cast<double>(hours) * 3600);
}

bool isFullPassUnderWay(const clsLog& log) {
    return log.IntervalsRecalculating && log.OverwriteStoredValues;
}

} // namespace

std::string exposureTimeText(float hours) {
    clsTime time;
    time.setTimeFromSeconds(roundToLong(wholeSeconds(hours)));
    return time.hh_mm_ss();
}

std::string exposureTimeLabel(const clsLog& log) {
    std::string own = exposureTimeText(log.objLogOptions.ExposureTime);
    const std::string reference = exposureTimeText(static_cast<float>(kReferenceHours));
    if (log.has(Trait::GoesByExposureTime) || own == reference) return own;
    return reference + ReplaceText(log.session().LoadText(Text::FiguresMadeWithTime), "^", own);
}

std::optional<float> durationHours(std::string_view entry, const Locale& locale) {
    entry = trimmed(entry);
    const std::string time = NormaliseTimeText(entry, true);
    if (!time.empty()) return static_cast<float>(TimeTextToHours(time));
    const std::optional<double> hours = typedNumber(entry, locale);
    return hours && *hours >= 0 && *hours <= kDay ? std::optional(static_cast<float>(*hours)) : std::nullopt;
}

float exposureTimeHours(std::string_view entry, const Locale& locale) {
    return durationHours(entry, locale).value_or(0);
}

std::string understoodExposureTime(const Session& session, std::string_view entry) {
    const float hours = exposureTimeHours(entry, session.locale);
    if (!isExposureTime(hours)) return session.LoadText(Text::ExposureTimeOutOfRange);
    const auto seconds = static_cast<std::int64_t>(wholeSeconds(hours));
    return "= " + DurationText(session, seconds / 3600, seconds / 60 % 60, seconds % 60);
}

std::string shownExposureTime(std::string_view entry, const Locale& locale) {
    const float hours = exposureTimeHours(entry, locale);
    return isExposureTime(hours) ? exposureTimeText(hours) : std::string(trimmed(entry));
}

bool isExposureTime(float hours) {
    return hours > 0 && static_cast<double>(hours) <= kDay;
}

Text::Id exposureTimeFault(float hours, float measuredHours) {
    if (!isExposureTime(hours)) return Text::ExposureTimeOutOfRange;
    return wholeSeconds(hours) < wholeSeconds(measuredHours) ? Text::ExposureTimeTooShort : Text::None;
}

void SetLogExposureTime(clsLog& log, float hours) {
    log.objLogOptions.ExposureTime = hours;
    if (!log.DoseLogIntervals.empty())
        log.DoseLogIntervals.front().Duration.setTime(exposureTimeText(hours), log.session().locale);
    if (!isFullPassUnderWay(log)) RecalcValues(log, kCalcExposureTime);
}

bool changeExposureTime(clsLog& log, float hours) {
    Session& session = log.session();
    const bool goesByTime = log.has(Trait::GoesByExposureTime);
    if (!goesByTime &&
        session.ShowMessage(session.LoadText(Text::AskProceed), kButtonsYesNo | kIconQuestion) != Button::Yes)
        return false;
    SetLogExposureTime(log, hours);
    if (goesByTime && !isFullPassUnderWay(log)) CompleteRecalcProcess(log);
    return true;
}

} // namespace kestrane

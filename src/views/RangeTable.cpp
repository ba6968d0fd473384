#include "views/RangeTable.h"

#include "calc/BandLevels.h"
#include "model/LogParameters.h"
#include "model/RowClock.h"
#include "model/Session.h"
#include "platform/Format.h"
#include "views/CopyData.h"
#include "views/RowTimes.h"

#include <cmath>

namespace kestrane {

namespace {

std::string doseText(const Session& session, const std::optional<double>& dose) {
    return dose ? formatNumber(*dose / 100, "##0.0 %", session.locale) : std::string();
}

// When a row ended. A row of unknown length ends when it begins.
std::string endText(const clsLog& log, std::size_t row) {
    const IntervalColumns& rows = log.LogIntervals.Columns();
    constexpr std::int64_t kDay = 24 * 3600;
    const std::int64_t end = rowBegin(rows, row) + rowSeconds(rows, row, log.Interval);
    const RowTimes times(log);
    const std::string date = times.shortDate(row);
    std::string time = durationText(static_cast<double>(end % kDay));
    if (date.empty()) return time;
    const std::int64_t day = end / kDay;
    return formatDate(static_cast<CalendarTime>(day), "dd/mm/yy") + " " + time;
}

std::string lengthText(const clsLog& log, const RowRange& range, double counting) {
    const IntervalColumns& rows = log.LogIntervals.Columns();
    double all = 0;
    for (std::int64_t row = range.From - 1; row < range.To; ++row)
        all += rowSeconds(rows, static_cast<std::size_t>(row), log.Interval);
    if (all == 0) return {};
    if (counting == all) return durationText(all);
    const std::string text = ReplaceText(log.session().LoadText(Text::RangeLengthPart), "*", durationText(all));
    return ReplaceText(text, "^", durationText(counting));
}

} // namespace

std::string durationText(double seconds) {
    clsTime time;
    time.setTimeFromSeconds(static_cast<std::int32_t>(std::lround(seconds)));
    return time.hh_mm_ss();
}

std::string shownLevel(const Session& session, const std::optional<double>& level) {
    return level ? formatNumber(*level, "##0.0 dB", session.locale) : std::string();
}

std::string shortNumber(const Session& session, double number) {
    return formatNumber(number, number == std::round(number) ? "##0" : "##0.0", session.locale);
}

std::string percentileName(const Session& session, double percent) {
    return "L" + shortNumber(session, percent);
}

std::vector<RangeFigure> rangeTable(const clsLog& log, std::span<const AnalysedRow> analysed, const RowRange& range,
                                    double percent) {
    const Session& session = log.session();
    const auto [figures, rest] = rangeFigures(analysed, range, log.Criterion, log.Exchange);
    const auto caption = [&](Parameter parameter) {
        return withWeightingMark(log, kChannelA, parameter,
                                 VariableCaption(session, parameter, kChannelA, kNoBand, &log));
    };
    const auto level = [&](const auto& value) {
        return shownLevel(session, value ? std::optional<double>(*value) : std::nullopt);
    };
    const std::string dose = withWeightingMark(
        log, kChannelA, eDoseMT,
        ReplaceText(ReplaceText(session.LoadText(Text::RangeDose), "^", std::to_string(log.Criterion)), "*",
                    std::to_string(log.Exchange)));
    const auto without = [&](const std::string& figure) {
        return ReplaceText(session.LoadText(Text::RangeRest), "^", figure);
    };
    return {
        {"lblRangeStart", session.LoadText(Text::RangeStart),
         RowTimes(log).dateAndTime(static_cast<std::size_t>(range.From - 1))},
        {"lblRangeEnd", session.LoadText(Text::RangeEnd), endText(log, static_cast<std::size_t>(range.To - 1))},
        {"lblRangeLength", session.LoadText(Text::RangeLength), lengthText(log, range, figures.Seconds)},
        {"lblRangeLeq", caption(eLeq), level(figures.LAeq)},
        {"lblRangeLE", caption(eLe_Sel), level(figures.LE)},
        {"lblRangeLmax", caption(eLmax), level(figures.Lmax)},
        {"lblRangeLmin", caption(eLmin), level(figures.Lmin)},
        {"lblRangePeak", caption(ePeak), level(figures.Peak)},
        {"lblRangeDose", dose, doseText(session, figures.Dose)},
        {"lblRangeLn", percentileName(session, percent),
         shownLevel(session, levelExceeded(rowsWithin(analysed, range), percent))},
        {"lblRestLeq", without(caption(eLeq)), level(rest.LAeq)},
        {"lblRestDose", without(dose), doseText(session, rest.Dose)},
    };
}

std::string spokenRange(const std::vector<RangeFigure>& figures) {
    std::string text;
    for (const RangeFigure& figure : figures)
        if (!figure.Value.empty()) text += (text.empty() ? "" : ", ") + figure.Caption + " " + figure.Value;
    return text;
}

ClipboardForms copiedRange(const clsLog& log, const std::vector<RangeFigure>& figures) {
    std::string text;
    for (const RangeFigure& figure : figures)
        text += figure.Caption + "\t" + figure.Value + "\r\n";
    return withLine(copiedLines(std::move(text), false), log.Name);
}

} // namespace kestrane

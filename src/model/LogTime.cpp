#include "model/LogTime.h"

#include "model/Session.h"
#include "platform/Calendar.h"
#include "platform/Numbers.h"
#include "platform/RuntimeError.h"

#include <cctype>
#include <cmath>
#include <span>
#include <unordered_map>
#include <vector>

namespace kestrane {

namespace {

constexpr std::int32_t kDay = 86400; // seconds

std::int32_t wholeRun(const clsLog& log) {
    const CalendarTime start = log.StartDate.getDate(log.StartTime);
    const CalendarTime end = log.EndDate.getDate(log.EndTime);
    return roundToLong((end - start) * kDay);
}

// Seconds from one row to a later one, both counted from 0. A time of day that is earlier than the row's is taken to be
// on the next day.
std::int32_t spacing(const IntervalColumns& rows, std::size_t row, std::size_t next) {
    const std::int32_t step = rows.StartTime.at(next) - rows.StartTime.at(row);
    if (step < 0) return step + kDay;
    return roundToLong(step + (rows.StartDate.at(next) - rows.StartDate.at(row)) * kDay);
}

// The spacing that occurs most often; of several, the one that comes first. There must be at least two rows.
std::int32_t commonSpacing(const IntervalColumns& rows, bool& isErratic) {
    std::unordered_map<std::int32_t, std::size_t> counts;
    std::vector<std::int32_t> inOrder;
    for (std::size_t row = 0; row + 1 < rows.count(); ++row) {
        const std::int32_t seconds = spacing(rows, row, row + 1);
        if (++counts[seconds] == 1) inOrder.push_back(seconds);
    }
    isErratic = inOrder.size() > 1;
    std::int32_t winner = inOrder.front();
    for (const std::int32_t seconds : inOrder) {
        if (counts[seconds] > counts[winner]) winner = seconds;
    }
    return winner;
}

// Rebuilds the seconds of time stamps that carry whole minutes only, by counting intervals from the start of the log.
void rebuildSeconds(clsLog& log) {
    IntervalColumns& rows = log.LogIntervals.Columns();
    const std::span<std::int32_t> times = rows.StartTime.write(rows.count(), rows.capacity());
    const auto minuteOf = [&times](std::size_t row) { return times[row] / 60 % 60; };
    std::int32_t t = log.StartTime.Secs;
    std::int32_t lastMinute = minuteOf(0);
    for (std::size_t row = 1; row < times.size(); ++row) {
        const std::int32_t minute = minuteOf(row);
        t += log.Interval;
        if (t >= 60) t -= 60;
        if (t < 60 && minute != lastMinute) t = log.StartTime.Secs;
        lastMinute = minute;
        times[row] += t - times[row] % 60;
    }
}

} // namespace

float getTime(const clsLog& log, char unit, Run run, ExcludedRows excluded) {
    const clsLogIntervals& rows = log.LogIntervals;
    std::int32_t seconds = 0;
    if (run == Run::Measured && log.MeasurementTimeFromInstrument != 0) {
        seconds = log.MeasurementTimeFromInstrument;
    } else if (run == Run::Whole || rows.Count() == 0) {
        return getTimeFromSeconds(unit, wholeRun(log));
    } else {
        seconds = checkedLong(rows.Count() * log.Interval);
    }
    if (excluded == ExcludedRows::LeftOut && rows.Count() > 0 && !rows.CutIntervals.empty()) {
        const double included = static_cast<double>(rows.IncludedCount());
        seconds = roundToLong(included / static_cast<double>(rows.Count()) * seconds);
    }
    return getTimeFromSeconds(unit, seconds);
}

float getTimeFromSeconds(char unit, std::int32_t lngSecs) {
    const int lower = std::tolower(static_cast<unsigned char>(unit));
    if (lower == 's') return static_cast<float>(lngSecs);
    std::int32_t minutes = lngSecs > 0 ? lngSecs / 60 : 0;
    const std::int32_t remainder = lngSecs - minutes * 60;
    if (lower == 'm') return static_cast<float>(remainder / 60.0 + minutes);
    if (lower != 'h') return 0;
    const std::int32_t hours = minutes / 60;
    minutes -= hours * 60;
    const auto partOfHour = static_cast<float>(remainder / 60.0 + minutes);
    return static_cast<float>(partOfHour / 60.0 + hours);
}

std::string LogLengthText(const clsLog& log) {
    std::int32_t seconds = 0;
    try {
        seconds = roundToLong(getTime(log, 's', Run::Measured, ExcludedRows::Count));
    } catch (const RuntimeError&) {
        return {};
    }
    const std::int32_t rest = (seconds % kDay + kDay) % kDay;
    const std::int64_t days = (std::int64_t{seconds} - rest) / kDay;
    const CivilDate day = toCivil(fromCivil({1900, 1, 1}) + static_cast<double>(days));
    return DurationText(log.session(), (day.Day - 1) * 24 + rest / 3600, rest / 60 % 60, rest % 60);
}

bool lastsFiveMinutes(const clsLog& log, ExcludedRows excluded) {
    try {
        return getTime(log, 'm', Run::Measured, excluded) >= 5.0F;
    } catch (const RuntimeError&) {
        return false;
    }
}

bool IsLnCumulativeValid(const clsLog& log, LogChannel channel, int ln) {
    if (channel != kChannelA || log.LnNumberA(ln) == 0) return false;
    return log.IsZoomed ? log.IsParent5Mins : lastsFiveMinutes(log, ExcludedRows::LeftOut);
}

void SetInterval(clsLog& log) {
    const IntervalColumns& rows = log.LogIntervals.Columns();
    if (rows.count() >= 2) log.Interval = commonSpacing(rows, log.IsErraticIntervals);
    if (log.Interval != 0 && !(log.IsErraticIntervals && log.Interval < 60)) return;
    const bool isRebuilt = log.Interval == 0;
    std::int32_t average = 0;
    try {
        if (rows.count() == 0) return;
        average = roundToLong(getTime(log, 's', Run::Whole, ExcludedRows::Count) / static_cast<double>(rows.count()));
    } catch (const RuntimeError&) {
        return;
    }
    for (const std::int32_t length : {30, 20, 10}) {
        if (average >= length) {
            log.Interval = length;
            break;
        }
    }
    if (isRebuilt) rebuildSeconds(log);
}

void SetSampleDates(clsLog& log) {
    IntervalColumns& rows = log.LogIntervals.Columns();
    const std::size_t count = rows.count();
    const auto dateAfter = [&log](std::int64_t days) {
        clsDate date;
        date.Copy(log.StartDate, checkedLong(days));
        return date == clsDate() ? CalendarTime{0} : date.getDate();
    };
    std::int64_t days = 0;
    CalendarTime date = dateAfter(days);
    for (std::size_t row = 0; row < count; ++row) {
        if (row > 0) {
            std::int64_t step = std::int64_t{rows.StartTime.at(row)} - rows.StartTime.at(row - 1);
            if (step == 0) step = log.Interval;
            if (step < 1) {
                days += (kDay - step) / kDay; // the number of days that makes the step at least 1 second
                date = dateAfter(days);
            }
        }
        rows.set(rows.StartDate, row, date);
    }
}

} // namespace kestrane

#include "views/RowTimes.h"

#include "model/Session.h"
#include "platform/Calendar.h"

namespace kestrane {

namespace {

bool isSet(CalendarTime date) {
    return date != 0 && toCivil(date) != CivilDate{1900, 1, 1};
}

} // namespace

RowTimes::RowTimes(const clsLog& log) :
    dates_(log.LogIntervals.Columns().StartDate),
    times_(log.LogIntervals.Columns().StartTime),
    isWholeMinutes_(log.Interval % 60 == 0),
    words_(&log.session().dateWords) {}

clsTime RowTimes::timeOf(std::size_t row) const {
    clsTime time;
    time.setTimeFromSeconds(times_.at(row));
    return time;
}

std::string RowTimes::time(std::size_t row) const {
    return timeOf(row).hh_mm_ss();
}

std::string RowTimes::label(std::size_t row) const {
    return isWholeMinutes_ ? hourAndMinute(row) : time(row);
}

std::string RowTimes::hourAndMinute(std::size_t row) const {
    return timeOf(row).hh_mm();
}

std::string RowTimes::longDate(std::size_t row) const {
    const CalendarTime date = dates_.at(row);
    return isSet(date) ? formatDate(date, "long date", *words_) : std::string();
}

std::string RowTimes::shortDate(std::size_t row) const {
    const CalendarTime date = dates_.at(row);
    return isSet(date) ? formatDate(date, "dd/mm/yy") : std::string();
}

std::string RowTimes::dateAndTime(std::size_t row) const {
    const std::string date = shortDate(row);
    return date.empty() ? time(row) : date + " " + time(row);
}

std::string RowTimes::listText(std::size_t row) const {
    const CalendarTime date = dates_.at(row);
    return isSet(date) ? time(row) + " (" + formatDate(date, "dd/mm") + ")" : time(row);
}

} // namespace kestrane

// When the rows of a log began, as text. Rows are counted from 0. It shares the log's columns, so it stays valid when
// the log changes or goes.
#pragma once

#include "model/clsLog.h"
#include "platform/Format.h"

#include <string>

namespace kestrane {

class RowTimes {
public:
    RowTimes() = default; // the times of no log
    explicit RowTimes(const clsLog& log);

    std::string time(std::size_t row) const;  // "hh:mm:ss"
    std::string label(std::size_t row) const; // "hh:mm" when the log's interval is whole minutes, else as time()
    std::string hourAndMinute(std::size_t row) const; // "hh:mm"
    std::string longDate(std::size_t row) const;      // "Monday 3 June 2019"; empty without a date
    std::string shortDate(std::size_t row) const;     // "dd/mm/yy"; empty without a date
    std::string dateAndTime(std::size_t row) const;   // "dd/mm/yy hh:mm:ss"; only the time when there is no date
    std::string listText(std::size_t row) const;      // "hh:mm:ss (dd/mm)"

private:
    clsTime timeOf(std::size_t row) const;

    Column<double> dates_;
    Column<std::int32_t> times_;
    bool isWholeMinutes_ = false;
    const DateWords* words_ = &kEnglishDates; // of the session
};

} // namespace kestrane

// What every protocol does with a log that it has read: setting the times of its rows, and recalculating it.
#pragma once

#include "download/Transport.h"
#include "model/clsInsData.h"

#include <cstdint>
#include <memory>

namespace kestrane {

// An empty log with the name and the firmware version of the instrument.
std::unique_ptr<clsLog> newLog(const clsInsData& data, LogMode mode);

// Gives the log count rows, all 0, that begin at its start and follow each other by Interval seconds. Raises 6 when
// they run past the end of the calendar.
void setRows(clsLog& log, std::int64_t count);

// Recalculates everything and waits for the end; the pump runs meanwhile. Ends the download when it is cancelled.
void finishLog(Transport& line, clsLog& log);

} // namespace kestrane

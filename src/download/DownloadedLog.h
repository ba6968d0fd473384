// What every protocol does with a log that has been read: the times of its rows, and its figures.
#pragma once

#include "download/Transport.h"
#include "model/clsInsData.h"

#include <cstdint>
#include <memory>

namespace kestrane {

// A log of the instrument.
std::unique_ptr<clsLog> newLog(const clsInsData& data, int mode);

// Gives the log count rows, all 0, that begin at its start and are Interval seconds apart. Raises 6 when they run past
// the calendar.
void setRows(clsLog& log, std::int64_t count);

// Full recalculation, to its end; the pump runs meanwhile. Ends the download when it is cancelled.
void finishLog(Transport& line, clsLog& log);

} // namespace kestrane

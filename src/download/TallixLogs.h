// The old Tallix family: text frames at 2400 baud. A sound level meter sends levels; a dosimeter sends doses, which are
// turned into levels here.
#pragma once

#include "download/Transport.h"
#include "model/clsInsData.h"

#include <string>

namespace kestrane {

// Reads the logs that the user chooses into the collection; logs without rows are skipped. May end the download.
void DownloadOldTallixLogs(Transport& line, clsInsData& data);

} // namespace kestrane

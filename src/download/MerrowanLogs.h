// The Merrowan family: the text frames of the old Tallix family, plus location kinds, percentiles and, on some models,
// octave logs.
#pragma once

#include "download/Transport.h"
#include "model/clsInsData.h"

#include <string>

namespace kestrane {

// Reads the logs that the user chooses into the collection, and the octave logs when the user wants them. May end the
// download.
void DownloadMerrowanLogs(Transport& line, clsInsData& data);

} // namespace kestrane

// The Corvane family: an instrument that keeps each measurement as a machine log file. The protocol lists the files and
// fetches them.
#pragma once

#include "download/Transport.h"
#include "model/clsInsData.h"

#include <string>

namespace kestrane {

// Reads the files that the user chooses into the collection, whose name and serial number become those of the first
// file. A file that cannot be read is skipped, with a message at the end of the download. May end the download.
void DownloadCorvaneLogs(Transport& line, clsInsData& data);

} // namespace kestrane

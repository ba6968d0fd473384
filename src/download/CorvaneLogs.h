// The Corvane family: an instrument that keeps each measurement as a machine log file. A list of files, and a fetch.
#pragma once

#include "download/Transport.h"
#include "model/clsInsData.h"

#include <string>

namespace kestrane {

// Reads the files that the user chooses into the collection, whose name and serial number become those of the first
// file. A file that cannot be read is passed over; the message returned has a line for each. May end the download.
std::string DownloadCorvaneLogs(Transport& line, clsInsData& data);

} // namespace kestrane

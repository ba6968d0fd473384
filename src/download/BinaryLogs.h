// The Brevik and Halcyr families: logs as binary blocks of little-endian numbers, with levels as doubles in dB. There
// are four layouts as tables, and one reader. The layouts follow the instruments' wire format.
#pragma once

#include "download/Transport.h"
#include "model/clsInsData.h"

#include <cstdint>
#include <string>
#include <string_view>

namespace kestrane {

// Read the logs that the user chooses into the collection. They may end the download (DownloadEnded).
void DownloadBrevikLogs(Transport& line, clsInsData& data);
void DownloadHalcyrLogs(Transport& line, clsInsData& data);

struct BinaryLayout;
extern const BinaryLayout kBrevikLayout, kHalcyrLayout;
extern const BinaryLayout kBrevikEarlyLayout; // firmware up to 1.05
extern const BinaryLayout kHalcyrEarlyLayout; // firmware up to 1.0

// Decodes the rows and closing figures of a log that already has its settings from the directory: Interval,
// IsChannelBOn and LnNumberA(3). An empty block has neither. Ends the download when the block does not end with a whole
// record.
void decodeBlock(clsLog& log, std::string_view block, const BinaryLayout& layout);

} // namespace kestrane

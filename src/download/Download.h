// A download from end to end: finding the instrument, its protocol, the outcome, recalculation. The collection it fills
// belongs to the caller; what a document does with it is decided elsewhere (app). One download runs at a time, on the
// owner thread; waits run the event pump.
#pragma once

#include "download/Transport.h"
#include "model/clsInsData.h"

namespace kestrane {

// Identifies the instrument, has the user choose logs and reads them into the collection, recalculated and with their
// plottable tables. Shows the message of a failure, or of single logs that could not be read. False: nothing was
// downloaded, and the collection holds no logs.
bool DownloadData(const DownloadServices& services, clsInsData& data);

// Identification alone: name, type, firmware version and serial number of the instrument (Identify.h names its
// family). False, with the message of a download, when there is none that this program knows.
bool IdentifyOnly(const DownloadServices& services, clsInsData& data);

// Sets the clock of an instrument of the old Tallix family to session.clock. False when nothing was sent; a message has
// been shown.
bool SynchronizeClock(const DownloadServices& services, clsInsData& data);

} // namespace kestrane

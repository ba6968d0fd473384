// A whole download: finding the instrument, running its protocol, showing the outcome, recalculating. The collection
// that it fills belongs to the caller; what a document does with it is decided elsewhere (app). Only one download runs
// at a time, on the owner thread; while it waits, the event pump runs.
#pragma once

#include "download/Transport.h"
#include "model/clsInsData.h"

namespace kestrane {

// Identifies the instrument, lets the user choose logs and reads them into the collection, recalculated and with their
// plottable tables. Shows a message when it fails or when single logs could not be read. When it fails while logs are
// being read, the user can try again: the same instrument is sought, and reading goes on with the log that failed.
// Returns false when nothing was downloaded; the collection then holds no logs.
bool DownloadData(const DownloadServices& services, clsInsData& data);

// Only identifies the instrument: name, type, firmware version and serial number (familyOf gives the family). Returns
// false, after showing a message, when there is no instrument that this program knows.
bool IdentifyOnly(const DownloadServices& services, clsInsData& data);

// Sets the clock of an instrument of the old Tallix family to session.clock. Returns false, after showing a message,
// when nothing was sent.
bool SynchronizeClock(const DownloadServices& services, clsInsData& data);

} // namespace kestrane

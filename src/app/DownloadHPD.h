// The protector database of the program: reading it at start, and replacing it by the one that its maker offers.
#pragma once

#include "model/Session.h"
#include "platform/Http.h"
#include "protection/ProtectorDatabase.h"

namespace kestrane {

// Reads the file of the session's collection into it. False when it cannot be read, or a record of it cannot; the
// reason has been shown. So has text behind an empty line.
bool LoadHPD(Session& session);

// Writes the records to a file. False, with a message, for the collection's own file when that was not read to its end.
// Raises the system's error.
bool SaveReadable(Session& session, const ProtectorCollection& collection, const std::string& path);

// What a download shows while it goes on.
class HPDProgress {
public:
    virtual ~HPDProgress() = default;

    virtual void Show(std::int64_t /*received*/, std::int64_t /*total*/) {} // bytes; -1 for a total not known

    virtual bool IsCancelled() { return false; }

    virtual void Close() {}
};

// Asks, fetches the database from the address of the settings, keeps the old file as ".bak" (a damaged one as
// ".damaged", too), puts the new one in its place and takes over its records. bSilent: no progress and no word of
// success. False when it was not replaced: then the old database is in use and on disk as before, and the reason has
// been shown, unless the user cancelled.
bool DownloadHPD(Session& session, HPDProgress& progress, bool bSilent);

} // namespace kestrane

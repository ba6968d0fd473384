// The protector database of the program: reading it at start, and replacing it by the one that its maker offers.
#pragma once

#include "model/Session.h"
#include "platform/Http.h"
#include "protection/ProtectorDatabase.h"

namespace kestrane {

// Reads the file of the session's collection into it. Returns false, after a message, when the file or one of its
// records cannot be read. Text behind an empty line is also reported, but counts as success.
bool LoadHPD(Session& session);

// Writes the records to a file. Returns false, after a message, when it is the collection's own file and that was not
// read to its end. Raises the system's error.
bool SaveReadable(Session& session, const ProtectorCollection& collection, const std::string& path);

// Shows the progress of a download.
class HPDProgress {
public:
    virtual ~HPDProgress() = default;

    virtual void Show(std::int64_t /*received*/, std::int64_t /*total*/) {} // bytes; total is -1 when it is not known

    virtual bool IsCancelled() { return false; }

    virtual void Close() {}
};

// Asks the user, fetches the database from the address of the settings, keeps the old file as ".bak" (a damaged one
// also as ".damaged"), replaces the file and takes over its records. With bSilent neither progress nor success is
// shown. Returns false when the database was not replaced: the old one is then still in use and on disk, and the reason
// has been shown unless the user cancelled.
bool DownloadHPD(Session& session, HPDProgress& progress, bool bSilent);

} // namespace kestrane

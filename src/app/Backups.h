// Older files that are kept when a document is saved over them. A file that this version of the program has written is
// replaced without a backup: it is known by its hash, of which the state folder keeps the last ones.
#pragma once

#include "model/Session.h"

#include <functional>
#include <string>

namespace kestrane {

// Calls save, which replaces the file at path and returns the hash of the new one. Before that, a file which is there
// and is not known to be written by this version is kept as path + ".bak", unless there is such a backup already: it is
// made once and never overwritten. Returns the path of the backup that was made, else nothing. Raises what save raises,
// and then leaves no backup, and the system's error when the backup cannot be made. Without a state folder it only
// saves.
std::string SaveWithBackup(const Session& session, const std::string& path, const std::function<std::string()>& save);

} // namespace kestrane

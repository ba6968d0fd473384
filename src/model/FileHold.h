// By these locks the running programs of a user tell each other which files they have open. They need the session's
// StateFolder; without one, nothing is locked.
#pragma once

#include "platform/FileLock.h"

#include <memory>
#include <string>

namespace kestrane {

struct Session;

// Tells other running programs of this user that the file at path is open here, for as long as held lives. Returns
// false when one of them has it open. Where no lock can be had it returns true.
bool HoldFile(const Session& session, const std::string& path, std::shared_ptr<FileLock>& held);

// The same before the file at from, which held holds, gets the name to: held is of the new name then. Returns false,
// with held as it was, when another running program has a file of that name open.
bool HoldRenamed(const Session& session, const std::string& from, const std::string& to,
                 std::shared_ptr<FileLock>& held);

bool IsHeldElsewhere(const Session& session, const std::string& path); // by another running program

} // namespace kestrane

// Other programs and the files that are open here: another running copy of this program that has the same file open,
// and any program that changes a file behind the back of its document. Nothing is watched, since that does not work on
// network folders; the files are looked at when it matters. Needs the session's StateFolder; without one, nothing is
// looked at.
#pragma once

#include "app/Documents.h"
#include "model/Session.h"

#include <string>

namespace kestrane {

// Tells other running programs of this user that the file of the document is open here. Returns false when one of them
// has it open. Where no lock can be had it returns true.
bool HoldFile(Session& session, clsFile& file);

bool IsHeldElsewhere(const Session& session, const std::string& path); // by another running program

enum class OnConflict {
    GoOn,   // the document may be saved over the file
    Theirs, // the file is to be taken in place of the document
    SaveAs, // the document is to be saved under another name
    Later,  // the user did not decide
};

// Asks what is to happen when the file at path is no longer the one that was read or saved.
OnConflict AskAboutConflict(Session& session, const std::string& path);

// Looks at the files of all documents that no log is busy in, and asks about those that another program has changed.
void LookForOtherPrograms(Session& session, const AskSaveName& askName);

// Loads the file of a document anew in place of the document, whose changes are given up. Returns false, after a
// message, when it cannot be loaded; then the document stays.
bool TakeTheirs(Session& session, clsFile& file);

} // namespace kestrane

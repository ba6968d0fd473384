// Other programs and the files that are open here: another running copy of this program that has the same file open,
// and any program that changes a file behind the back of its document. Nothing is watched, since that does not work on
// network folders; the files are looked at when it matters.
#pragma once

#include "app/Documents.h"
#include "model/FileHold.h"
#include "model/Session.h"

#include <memory>
#include <string>

namespace kestrane {

// Holds the file of a document; a download that was never saved has none.
bool HoldFile(const Session& session, clsFile& file);

// Holds a file before it is opened: when another running program has it open, the user is asked whether to open it for
// reading only. Returns false when it is not to be opened.
bool MayOpen(Session& session, const std::string& path, std::shared_ptr<FileLock>& held, bool& isReadOnly);

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

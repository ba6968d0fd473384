// Opening, saving and closing documents: the decisions of the file menu. A window provides the file dialogs as
// functions; everything else is decided here.
#pragma once

#include "files/Loaders.h"
#include "model/Session.h"
#include "platform/RuntimeError.h"

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace kestrane {

// Loads file.FileName; the figures are recalculated as the settings say, and the rows are left to background loading. A
// document that has an identity is in memory already. When no loader accepts the file, the reason of the first one is
// shown and false is returned. Without read, the file is read from its disk; a user who does not want to wait for a
// slow one can give that up.
bool FileOpen(clsFile& file, const ReadBytes& read = {});

// Waits while the pump runs until the hash of a long file is there, which FileOpen does not wait for: before that,
// OnDisk is not known, and whether the history fits is not checked.
void WaitForHash(const clsFile& file);

// Whether the name ends like that of a data file.
bool isNamedAsDataFile(const std::string& name);

constexpr std::size_t kRecentFiles = 4; // names that are remembered

enum class OpenSource { Dialog, Recent, Named };

// Opens a file by name, or finds it already open. A name from the dialog or the recent list goes to the front of that
// list. With blnLastFile, or when a file was added, the trees are rebuilt. The rows start loading. Returns false when
// the file did not open.
bool OpenFile(Session& session, const std::string& name, OpenSource source, bool blnLastFile,
              const ReadBytes& read = {});

// Adds a document that FileOpen has loaded to the open files, shows it in the trees and starts loading its rows.
clsFile& TakeUp(Session& session, std::unique_ptr<clsFile> file);

// Opens files in order, and then calls ShowOpened.
void OpenFiles(Session& session, const std::vector<std::string>& names, OpenSource source);

// Looks at those files of these names that are open: when they have only one log, it is shown; when they have several,
// the first is selected.
void ShowOpened(Session& session, const std::vector<std::string>& names);

clsFile* openFileOfName(const Session& session, const std::string& name); // by isSameFile; null when it is not open

// The key of the recent file with this number, from 1, in the state.
std::string recentFileKey(int number);

// Puts a name at the front of the recent files, keeps the first four and writes them to the state.
void rememberRecentFile(Session& session, const std::string& name);

// Asks for a name to save under, with a proposal. Returns nothing when the user cancels.
using AskSaveName = std::function<std::optional<std::string>(const std::string& proposal)>;

// Saves a document, asking for a name when it has none that can be written or with bSaveAs. Returns false when it was
// not saved.
bool SaveFile(Session& session, clsFile& file, bool bSaveAs, const AskSaveName& askName);

// A title or name as the last part of a file's name.
std::string fileNameOf(std::string title);

// The message about a file that could not be written.
std::string saveErrorText(const Session& session, const RuntimeError& error, const std::string& name);

// Offers to save what has changed in the given file, or in all files when it is null: first all questions are asked,
// then everything is saved once no log is busy. After a failed save another name is asked for. Returns false when the
// user cancels.
bool CloseFiles(Session& session, clsFile* objThisFile, const AskSaveName& askName);

// Calls CloseFiles; when that returns true, removes the file, or all files, from OpenFiles and rebuilds the trees.
bool CloseFile(Session& session, clsFile* objThisFile, const AskSaveName& askName);

} // namespace kestrane

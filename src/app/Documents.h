// Opening, saving and closing of documents: the decisions of the file menu. A window brings the file dialogs, as
// functions; everything else is decided here.
#pragma once

#include "files/Loaders.h"
#include "model/Session.h"
#include "platform/RuntimeError.h"

#include <functional>
#include <optional>
#include <string>
#include <vector>

namespace kestrane {

// Loads file.FileName: figures recalculated by the settings, rows left to the background. A document that has an
// identity is in memory already. When no loader takes it, the first one's reason is shown and the result is false.
bool FileOpen(clsFile& file, const ReadBytes& read = readFile);

// The name ends as those of data files do.
bool isNamedAsDataFile(const std::string& name);

constexpr std::size_t kRecentFiles = 4; // names that are remembered

enum class OpenSource { Dialog, Recent, Named };

// Opens a file by name, or finds it open already. From the dialog or the recent list it goes to the front of that list.
// With blnLastFile, or when a file was added, the trees are rebuilt. The rows start loading. False when it did not
// open.
bool OpenFile(Session& session, const std::string& name, OpenSource source, bool blnLastFile,
              const ReadBytes& read = readFile);

// Opens files in order, and then ShowOpened.
void OpenFiles(Session& session, const std::vector<std::string>& names, OpenSource source);

// Of the files of these names that are open: the only log that they hold is shown, of several the first is selected.
void ShowOpened(Session& session, const std::vector<std::string>& names);

clsFile* openFileOfName(const Session& session, const std::string& name); // by isSameFile; null: not open

// Puts a name at the front of the recent files, of which four stay.
void rememberRecentFile(Session& session, const std::string& name);

// Asks for a name to save under, given the present one; nothing when the user cancels.
using AskSaveName = std::function<std::optional<std::string>(const std::string& proposal)>;

// Saves a document, asking for a name where it has none that can be written. False when it was not saved.
bool SaveFile(Session& session, clsFile& file, bool bSaveAs, const AskSaveName& askName);

// What to say when a file could not be written.
std::string saveErrorText(const Session& session, const RuntimeError& error, const std::string& name);

// Offers to save what has changed, of the given file or of all (null): first all questions, then all saving, which
// waits until no log is busy. Behind a save that fails another name is asked for. False when the user cancels.
bool CloseFiles(Session& session, clsFile* objThisFile, const AskSaveName& askName);

// CloseFiles, and on true takes the file, or all files, out of OpenFiles and rebuilds the trees.
bool CloseFile(Session& session, clsFile* objThisFile, const AskSaveName& askName);

} // namespace kestrane

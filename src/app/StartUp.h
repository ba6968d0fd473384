// Starting and ending the program, without its windows: settings, recent files, the command line and the files named
// there.
#pragma once

#include "model/Session.h"
#include "protection/ProtectorDatabase.h"
#include "resources/TextNames.h"

#include <functional>
#include <string>
#include <vector>

namespace kestrane {

// The arguments of the process as one text to be parsed. Each is in quotes, because the shell has already split them.
std::string commandLineText(const std::vector<std::string>& arguments);

// The file names in a command line. They may be quoted; where an unquoted name with blanks ends is decided by which
// files exist. The word behind an accepted unquoted name is skipped; that is meant. Parsing ends when the rest of the
// text no longer gets shorter.
std::vector<std::string> commandLineFiles(std::string text, const std::function<bool(const std::string&)>& exists);

// The full paths of the files that the arguments of the process name.
std::vector<std::string> namedFiles(const std::vector<std::string>& arguments);

// The folder of the files that are installed with the program (help, manuals), with "/" at the end.
std::string dataFolder();

// The protectors of the user, not read yet. They come from the user's own file, or from the installed one as long as
// there is no such file.
ProtectorCollection protectorsOfUser();

// The full path of a file name.
std::string fullPath(const std::string& name);

// The folder for data files until the user chooses one: that of the program or, when nothing can be written there, the
// user's documents (empty when they are not known). With "/" at the end.
std::string defaultDataFolder(const std::string& program, const std::string& documents);

// The installed sample files, ordered by name.
std::vector<std::string> sampleFiles();

// The text that says in a sentence what a sample file is and what to try with it. Text::None for any other file.
Text::Id sampleSentence(const std::string& path);

// The language of the program: that of the settings or, when they name none, that of the system.
const Language& programLanguage(const SettingsStore& settings);

// Moves recent files and placement out of the settings, where earlier versions kept them, into the state.
void moveState(Session& session);

// Reads settings and recent files. A file that cannot be read is told. A setting that cannot be converted is reported
// with its key, and its default stays.
void readSettings(Session& session);

// Starts the program up to the first window: settings, recent files, the protector database, then every file that the
// arguments name. Returns the names of these files, for the explorer that is opened afterwards.
std::vector<std::string> Main(Session& session, const std::vector<std::string>& arguments);

} // namespace kestrane

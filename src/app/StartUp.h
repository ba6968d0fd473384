// The way in and out of the program, without its windows: settings, recent files, the command line and the files named
// there.
#pragma once

#include "model/Session.h"

#include <functional>
#include <string>
#include <vector>

namespace kestrane {

// The arguments of the process as the one text that is parsed: each in quotes, since the shell has split them already.
std::string commandLineText(const std::vector<std::string>& arguments);

// The file names of a command line: quoted, or unquoted and possibly holding blanks, settled by what exists. The word
// behind an accepted unquoted name is skipped (required reading); parsing ends when the rest no longer gets shorter.
std::vector<std::string> commandLineFiles(std::string text, const std::function<bool(const std::string&)>& exists);

// The folder that the running program lies in, with "/" at the end.
std::string programFolder();

// The folder of what is installed with the program (help, manuals), with "/" at the end.
std::string dataFolder();

// The protector database in use: the user's own copy, made from the installed one when there is none yet.
std::string protectorDatabase();

// A name as the program keeps it: with its full path.
std::string fullPath(const std::string& name);

// The folder for data files that holds until the user chooses one: the program's, or the user's documents (empty: not
// known) where nothing can be written there. With "/" at the end.
std::string defaultDataFolder(const std::string& program, const std::string& documents);

// The data files to try that are installed with the program, by name.
std::vector<std::string> sampleFiles();

// Reads settings (a text that cannot be converted is reported by its key, and the default stays) and recent files.
void readSettings(Session& session);
void saveRecentFiles(Session& session);

// Start-up up to the first window: settings, recent files, the protector database, then every file that the arguments
// name. Returns those names, for the explorer that is still to come.
std::vector<std::string> Main(Session& session, const std::vector<std::string>& arguments);

} // namespace kestrane

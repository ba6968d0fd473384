// The arguments that name a data file and a log in it, and the log that they select.
#pragma once

#include "cli/Program.h"

#include <CLI/CLI.hpp>

#include <optional>
#include <string>
#include <vector>

namespace kestrane {

struct LogArguments {
    std::string file;
    std::string log; // a tree node key; empty for the document's first log
};

void addFile(CLI::App& verb, std::string& file);
void addFiles(CLI::App& verb, std::vector<std::string>& files);
void addLog(CLI::App& verb, LogArguments& arguments); // adds FILE and --log
void addLogKey(CLI::App& verb, std::string& key);

// A log of an opened file, with its key.
struct ChosenLog {
    clsFile* file = nullptr;
    clsInsData* data = nullptr;
    clsLog* log = nullptr;
    std::string key;
};

// Finds a log of a file that is open. Nothing when the file has no such log; the reason has been shown.
std::optional<ChosenLog> chooseLog(Program& program, clsFile& file, const std::string& key);

// Returns false, after showing a message, when rows of the log could not be read: what is computed from the other rows
// would be taken for the whole log.
bool hasAllRows(Program& program, const clsLog& log);

// Opens the file and finds the log. Nothing when the file does not open or has no such log; the reason has been shown.
std::optional<ChosenLog> openLog(Program& program, const LogArguments& arguments);

// The same for what is made of the rows: nothing either when the log does not have all of them (hasAllRows).
std::optional<ChosenLog> openWholeLog(Program& program, const LogArguments& arguments);

} // namespace kestrane

// The arguments that name a data file and a log in it, and the log that they choose.
#pragma once

#include "cli/Program.h"

#include <CLI/CLI.hpp>

#include <optional>
#include <string>
#include <vector>

namespace kestrane {

struct LogArguments {
    std::string file;
    std::string log; // a tree node key; empty: the document's first log
};

void addFile(CLI::App& verb, std::string& file);
void addFiles(CLI::App& verb, std::vector<std::string>& files);
void addLog(CLI::App& verb, LogArguments& arguments); // with its file
void addLogKey(CLI::App& verb, std::string& key);

// A log of an opened file, with its key.
struct ChosenLog {
    clsFile* file = nullptr;
    clsInsData* data = nullptr;
    clsLog* log = nullptr;
    std::string key;
};

// Of a file that is open. Nothing when it has no such log; the reason has been shown.
std::optional<ChosenLog> chooseLog(Program& program, clsFile& file, const std::string& key);

// False when rows of the log could not be read, which has been shown: what is made of the others would pass for all.
bool hasAllRows(Program& program, const clsLog& log);

// Opens the file. Nothing when it does not open or has no such log; the reason has been shown.
std::optional<ChosenLog> openLog(Program& program, const LogArguments& arguments);

} // namespace kestrane

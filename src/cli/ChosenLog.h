// The arguments that name a data file and a log in it, and the log that they choose.
#pragma once

#include "cli/Program.h"

#include <CLI/CLI.hpp>

#include <optional>
#include <string>

namespace kestrane {

struct LogArguments {
    std::string file;
    std::string log; // a tree node key; empty: the document's first log
};

void addFile(CLI::App& verb, std::string& file);
void addLog(CLI::App& verb, LogArguments& arguments); // with its file

// A log of an opened file, with its key.
struct ChosenLog {
    clsFile* file = nullptr;
    clsInsData* data = nullptr;
    clsLog* log = nullptr;
    std::string key;
};

// Opens the file. Nothing when it does not open or has no such log; the reason has been shown.
std::optional<ChosenLog> openLog(Program& program, const LogArguments& arguments);

} // namespace kestrane

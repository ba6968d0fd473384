// The arguments that say which protector a log is compared with, and how. Several verbs share them.
#pragma once

#include "cli/Program.h"
#include "protection/ProtectorDatabase.h"
#include "views/HPDComparison.h"

#include <CLI/CLI.hpp>

#include <optional>
#include <string>
#include <vector>

namespace kestrane {

struct CompareArguments {
    std::string database; // empty for the installed one
    std::string protector;
    std::string mode = "hse";
    std::string method = "Auto";
    int correction = 0;
};

void addDatabase(CLI::App& verb, CompareArguments& arguments);
void addComparing(CLI::App& verb, CompareArguments& arguments);
CLI::Option* addProtector(CLI::App& verb, CompareArguments& arguments);

// The settings with the mode and method of the arguments.
clsOptions comparisonOptions(const Program& program, const CompareArguments& arguments);

// Returns the database of a call, still to be read; an empty name stands for that of the user.
ProtectorCollection protectorsIn(const std::string& database);

// Opens the database and loads its records. Nothing when it cannot be read; the reason has been shown.
std::optional<ProtectorCollection> openDatabase(Session& session, const std::string& database);

// Compares a log with the protector. Nothing when there is no such protector; the reason has been shown.
std::optional<HPDComparison> compareLog(Program& program, const clsLog& log, const CompareArguments& arguments);

} // namespace kestrane

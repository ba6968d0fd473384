// The verbs of the command line, by subject. A verb declares its options and returns the function that runs with the
// values parsed into them. Parsing a call and ending the program is left to main.
#pragma once

#include "cli/Program.h"

#include <CLI/CLI.hpp>

#include <functional>
#include <span>

namespace kestrane {

using RunVerb = std::function<int(Program&)>; // returns the exit status

struct Verb {
    const char* name;
    const char* description;
    RunVerb (*prepare)(CLI::App& verb);
    bool needsLoop = false; // the loop of the toolkit, which serves the serial line
};

std::span<const Verb> analysisVerbs();   // questions about the rows
std::span<const Verb> assessmentVerbs(); // exposure by the standards
std::span<const Verb> documentVerbs();   // documents: show, change, save
std::span<const Verb> downloadVerbs();   // instruments on the serial line
std::span<const Verb> exportVerbs();     // tables for other programs
std::span<const Verb> protectionVerbs(); // exposure calculator and hearing protectors
std::span<const Verb> reportVerbs();     // reports
std::span<const Verb> schemaVerbs();     // the schemas of what the other verbs print
std::span<const Verb> syntaxVerbs();     // the command line itself, for the build
std::span<const Verb> viewVerbs();       // what the windows show: tree, panel, table, charts, texts
std::span<const Verb> watchVerbs();      // watching a folder for new files

} // namespace kestrane

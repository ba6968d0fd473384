// The verbs of the command line, by subject. A verb declares its options and gives what runs with the values parsed
// into them; how a call is parsed and how it ends is main's.
#pragma once

#include "cli/Program.h"

#include <CLI/CLI.hpp>

#include <functional>
#include <span>

namespace kestrane {

using RunVerb = std::function<int(Program&)>; // gives the exit status

struct Verb {
    const char* name;
    const char* description;
    RunVerb (*prepare)(CLI::App& verb);
    bool needsLoop = false; // of Qt, which serves the serial line
};

std::span<const Verb> analysisVerbs();   // questions about the rows
std::span<const Verb> assessmentVerbs(); // exposure by the standards
std::span<const Verb> documentVerbs();   // documents: show, change, save
std::span<const Verb> downloadVerbs();   // instruments on the serial line
std::span<const Verb> exportVerbs();     // tables for other programs
std::span<const Verb> protectionVerbs(); // exposure calculator and hearing protectors
std::span<const Verb> reportVerbs();     // paper
std::span<const Verb> schemaVerbs();     // what the output of the others looks like
std::span<const Verb> syntaxVerbs();     // the command line itself, for the build
std::span<const Verb> viewVerbs();       // what the windows show: tree, panel, table, charts, texts
std::span<const Verb> watchVerbs();      // a folder that files come to

} // namespace kestrane

// The parser of the command line with all of its verbs.
#pragma once

#include "cli/Verbs.h"

#include <CLI/CLI.hpp>

namespace kestrane {

// What a call asks for.
struct Call {
    GlobalOptions globals;
    RunVerb run;
    bool needsLoop = false;
};

// Declares everything; the call is filled by parsing, and must outlive the parser.
void declare(CLI::App& app, Call& call);

// What to say of words that the parser does not take: what is wrong, and what was perhaps meant.
std::string hintOf(const CLI::App& app, const CLI::ParseError& error);

// --errors json, wherever it stands: it holds for what is wrong with the words, too.
bool asksForJsonErrors(int argc, char** argv);

} // namespace kestrane

// The parser of the command line with all of its verbs.
#pragma once

#include "cli/Verbs.h"

#include <CLI/CLI.hpp>

#include <string>
#include <vector>

namespace kestrane {

// What a call asks for.
struct Call {
    GlobalOptions globals;
    RunVerb run;
    bool needsLoop = false;
};

// Declares all verbs and options. Parsing fills the call, which must outlive the parser.
void declare(CLI::App& app, Call& call);

// The message for words that the parser does not accept: what is wrong, and what was perhaps meant.
std::string hintOf(const CLI::App& app, const CLI::ParseError& error);

// Whether --errors json occurs anywhere in the call. It also applies to the message about wrong words, so it is looked
// for before parsing.
bool asksForJsonErrors(const std::vector<std::string>& words);

// The words with "--name=" as two, the second of them empty: the parser would take the next word for the value.
std::vector<std::string> withEmptyValues(const std::vector<std::string>& words);

} // namespace kestrane

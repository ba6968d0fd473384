// Where verbs write: the arguments -o OUT and -O FOLDER, and the names that several files get in a folder.
#pragma once

#include <CLI/CLI.hpp>

#include <string>
#include <vector>

namespace kestrane {

struct OutputArguments {
    std::string file;   // -o; "-" is standard output; empty: not given
    std::string folder; // -O; empty: not given
};

// One of both is needed. what: "the PDF file to write".
void addOutputs(CLI::App& verb, OutputArguments& outputs, const std::string& what);

// A verb's -o alone.
CLI::Option* addOutput(CLI::App& verb, std::string& output, const std::string& what);

// The name of -o as a path: "-" is standard output.
std::string outputPath(const std::string& name);
bool isStandardOutput(const std::string& name);

// The output of each file: that of -o, or in the folder the name of the file with another extension (".pdf"). Raises
// WrongWords when several files would go into one output.
std::vector<std::string> outputsOf(const std::vector<std::string>& files, const OutputArguments& outputs,
                                   const std::string& extension);

// Raises WrongWords when an output, which is no data file, is one of the files that are read.
void keepFilesFrom(const std::vector<std::string>& outputs, const std::vector<std::string>& files);

} // namespace kestrane
